#include "Check.h"

#include "midi/script/ScriptLanguage.h"

namespace
{
struct Compiler
{
    ScriptJournal journal;
    ScriptTurn turn;
    const ScriptWorld world { .journal = journal };
    ScriptFunctions functions { world, turn };
    ScriptLanguage language { functions };
};
}

/** Building comes to an end, says why when it fails, and says no more than it may. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    static Compiler compiler;
    static const juce::File nowhere ("/platterdex-nowhere/script.c");
    const auto built =
        compiler.language.build (nowhere, std::string (reinterpret_cast<const char*> (data), size), {});
    FUZZ_CHECK (built.messages.size() <= ScriptLanguage::mostMessages + 1);
    FUZZ_CHECK (built.program || !built.messages.empty());
    return 0;
}
