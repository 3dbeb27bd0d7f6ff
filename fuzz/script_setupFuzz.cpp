#include "Check.h"

#include "midi/script/ScriptSetup.h"

/** Each file is named once and by a name, and there are not too many. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto setup = parseScriptSetup (std::make_unique<juce::MemoryInputStream> (data, size, false));
    if (!setup)
        return 0;
    FUZZ_CHECK (setup->files.size() <= ScriptSetup::mostScripts);
    auto unique = setup->files;
    unique.removeDuplicates (false);
    FUZZ_CHECK (unique == setup->files && !unique.contains (""));
    return 0;
}
