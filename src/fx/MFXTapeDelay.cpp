#include "fx/MFXTapeDelay.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace fx_dsp
{
namespace
{
constexpr int indexMask = 0x3ffff;
static_assert (indexMask == MFXTapeDelay::memorySize - 1);

/** The samples of a turn in which the former head is heard alone, and those of the cross-fade behind it. */
constexpr int alone = 12, crossfade = 499;

/** Subnormal numbers become 0. */
float withoutSubnormal (float value) noexcept
{
    return (std::bit_cast<uint32_t> (value) & 0x7f800000u) == 0 ? 0.0f : value;
}
}

void MFXTapeDelay::setSampleRate (double next) noexcept
{
    rate = next;
    setMilliseconds (milliseconds);
    reset();
}

void MFXTapeDelay::setMilliseconds (double time) noexcept
{
    milliseconds = time;
    const auto samples = std::round (time * 0.001 * rate);
    wantedDelay = samples >= 1.0 && samples < memorySize ? static_cast<int> (samples) : 0;
    if (filled == 0)
        formerDelay = presentDelay = wantedDelay;
}

void MFXTapeDelay::reset() noexcept
{
    feedback.settle();
    filled = count = 0;
    formerDelay = presentDelay = wantedDelay;
}

inline float MFXTapeDelay::readAt (int delay) const noexcept
{
    return delay > 0 && delay <= filled ? memory[static_cast<size_t> ((writeIndex - delay) & indexMask)]
                                        : 0.0f;
}

void MFXTapeDelay::process (const float* in, float* delayed, int frames) noexcept
{
    for (int i = 0; i < frames; ++i)
    {
        auto read = readAt (presentDelay);
        if (presentDelay != formerDelay)
        {
            const auto present = std::max (0, count - alone) * (1.0f / crossfade);
            read = CrossFade::mixed (readAt (formerDelay), read, present);
        }
        memory[static_cast<size_t> (writeIndex)] =
            withoutSubnormal (in[i] + static_cast<float> (feedback.next()) * read);
        delayed[i] = read;

        writeIndex = (writeIndex + 1) & indexMask;
        filled = std::min (filled + 1, memorySize);
        if (++count == turn)
        {
            count = 0;
            formerDelay = presentDelay;
            presentDelay = wantedDelay;
        }
    }
}
}
