#include "Check.h"

#include "instruments/smartknob/SmartKnobPreset.h"

#include <cmath>

/** Writes what was read of a preset, which is read again as the same; its curves give numbers everywhere. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto read = readSmartKnobPreset ({ reinterpret_cast<const char*> (data), size });
    if (const auto* fault = std::get_if<std::string> (&read))
    {
        FUZZ_CHECK (fault->starts_with ("It") && fault->ends_with ("."));
        return 0;
    }
    const auto& preset = std::get<SmartKnobPreset> (read);
    FUZZ_CHECK (preset.rows.size() <= static_cast<size_t> (SmartKnobRows::count));
    for (const auto& row : preset.rows)
        for (auto time = -0.5; time <= 4.5; time += 0.125)
            FUZZ_CHECK (std::isfinite (row.envelope.evaluate (time)));

    const auto again = readSmartKnobPreset (writeSmartKnobPreset (preset));
    FUZZ_CHECK (std::holds_alternative<SmartKnobPreset> (again));
    FUZZ_CHECK (std::get<SmartKnobPreset> (again).name == preset.name);
    FUZZ_CHECK (std::get<SmartKnobPreset> (again).rows.size() == preset.rows.size());
    for (size_t i = 0; i < preset.rows.size(); ++i)
        FUZZ_CHECK (std::get<SmartKnobPreset> (again).rows[i].envelope.isSameCurve (preset.rows[i].envelope));
    return 0;
}
