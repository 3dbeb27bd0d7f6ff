#include "fx/MFXTapeDelay.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace fx_dsp
{
namespace
{
constexpr int indexMask = 0x3ffff;
static_assert (indexMask == MFXTapeDelay::memorySize - 1);

/** The samples of a turn in which the former head is heard alone, and those of the cross-fade behind it. */
constexpr int alone = 12, crossfade = 499;

/** The value, or 0 for a subnormal number and for NaN. */
float withoutSubnormal (float value) noexcept
{
    return std::abs (value) >= FLT_MIN ? value : 0.0f;
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

/** Samples for which only one head is heard, nothing moves, and neither place in the memory wraps: 0 if not even one. A run
    that is no longer than the delay reads nothing that it writes itself. */
int MFXTapeDelay::steadyFrames() const noexcept
{
    if (presentDelay != formerDelay || presentDelay == 0 || feedback.isMoving() || filled < presentDelay)
        return 0;
    const auto readIndex = (writeIndex - presentDelay) & indexMask;
    return std::min ({ turn - count, presentDelay, memorySize - writeIndex, memorySize - readIndex });
}

void MFXTapeDelay::runSteady (const float* in, float* delayed, int frames) noexcept
{
    const auto run = [gain = static_cast<float> (feedback.value()),
                      frames] (const float* __restrict input, const float* __restrict read,
                               float* __restrict write, float* __restrict out)
    {
        for (int i = 0; i < frames; ++i)
        {
            const auto value = input[i] + gain * read[i];
            write[i] = withoutSubnormal (value);
            out[i] = read[i];
        }
    };
    run (in, memory.data() + ((writeIndex - presentDelay) & indexMask), memory.data() + writeIndex, delayed);
}

void MFXTapeDelay::moveOn (int frames) noexcept
{
    writeIndex = (writeIndex + frames) & indexMask;
    filled = std::min (filled + frames, memorySize);
    count += frames;
    if (count == turn)
    {
        count = 0;
        formerDelay = presentDelay;
        presentDelay = wantedDelay;
    }
}

void MFXTapeDelay::process (const float* in, float* delayed, int frames) noexcept
{
    for (int i = 0; i < frames;)
    {
        if (const auto steady = std::min (steadyFrames(), frames - i); steady > 0)
        {
            runSteady (in + i, delayed + i, steady);
            moveOn (steady);
            i += steady;
            continue;
        }
        auto read = readAt (presentDelay);
        if (presentDelay != formerDelay)
        {
            const auto present =
                static_cast<float> (std::max (0, count - alone)) * (1.0f / static_cast<float> (crossfade));
            read = CrossFade::mixed (readAt (formerDelay), read, present);
        }
        memory[static_cast<size_t> (writeIndex)] =
            withoutSubnormal (in[i] + static_cast<float> (feedback.next()) * read);
        delayed[i] = read;
        moveOn (1);
        ++i;
    }
}
}
