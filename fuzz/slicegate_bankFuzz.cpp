#include "Check.h"

#include "instruments/contents/SlicegateBank.h"

/** Writes what was read of a bank, which is read again as the same. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto read = readSlicegateBank ({ reinterpret_cast<const char*> (data), size });
    if (const auto* fault = std::get_if<std::string> (&read))
    {
        FUZZ_CHECK (fault->starts_with ("It") && fault->ends_with ("."));
        return 0;
    }
    const auto& bank = std::get<SlicegateBank> (read);
    const auto again = readSlicegateBank (writeSlicegateBank (bank));
    FUZZ_CHECK (std::holds_alternative<SlicegateBank> (again));
    for (size_t i = 0; i < bank.pads.size(); ++i)
    {
        const auto &one = bank.pads[i], &other = std::get<SlicegateBank> (again).pads[i];
        FUZZ_CHECK (one.name == other.name);
        FUZZ_CHECK (one.time.envelope.isSameCurve (other.time.envelope));
        FUZZ_CHECK (one.volume.envelope.isSameCurve (other.volume.envelope));
        FUZZ_CHECK (one.time.enabled == other.time.enabled && one.volume.visible == other.volume.visible);
    }
    return 0;
}
