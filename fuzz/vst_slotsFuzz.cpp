#include "Check.h"

#include "plugins/slot/SlotsFile.h"

/** Checks that kept slots are within their ranges, and are read again as they are written. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto slots = SlotsFile::read ({ reinterpret_cast<const char*> (data), size }).slots;
    for (const auto& slot : slots)
        FUZZ_CHECK (slot.dryWet >= 0.0 && slot.dryWet <= 1.0 && slot.paramIndices[0] >= -1
                    && slot.paramIndices[1] >= -1);
    const auto again = SlotsFile::read (SlotsFile::write (slots));
    FUZZ_CHECK (!again.isDamaged);
    for (size_t i = 0; i < slots.size(); ++i)
        // As texts: JUCE compares the missing bytes of empty blocks.
        FUZZ_CHECK (again.slots[i].state.bytes.toBase64Encoding() == slots[i].state.bytes.toBase64Encoding()
                    && again.slots[i].state.program == slots[i].state.program
                    && again.slots[i].isInsert == slots[i].isInsert
                    && again.slots[i].paramIndices == slots[i].paramIndices);
    return 0;
}
