#pragma once

#include "support/AudioThread.h"

#include <array>
#include <cstdint>

namespace fx_dsp
{
/** One turn of the low-frequency oscillator, read by a phase of 32 bits: the top 12 index the table, the lower 20 are the
    fraction between two neighbours. */
class LfoTable
{
public:
    static constexpr int indexBits = 12, fractionBits = 20, size = 1 << indexBits;

    /** The phase units of a whole turn, size * 2^fractionBits. */
    static constexpr double turn = static_cast<double> (size) * (1 << fractionBits);

    /** The one table. The first call fills it, so it is made before the audio thread asks. */
    static const LfoTable& sine();

    /** The value at a phase, -1 to 1. */
    PX_AUDIO_THREAD float at (uint32_t phase) const noexcept
    {
        const auto index = phase >> fractionBits;
        const auto fraction =
            static_cast<float> (static_cast<int32_t> (phase & fractionMask)) * (1.0f / (1 << fractionBits));
        return values[index] + (values[index + 1] - values[index]) * fraction;
    }

private:
    LfoTable();

    static constexpr uint32_t fractionMask = (1u << fractionBits) - 1;
    std::array<float, size + 1> values; // the first again at the end, for the last fraction
};
}
