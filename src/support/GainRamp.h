#pragma once

#include "support/AudioThread.h"

/** A gain that moves linearly to each new target over 64 samples. Audio thread. */
class GainRamp
{
public:
    static constexpr int steps = 64;

    explicit GainRamp (double initial = 1.0) noexcept : target (initial), current (initial) {}

    PX_AUDIO_THREAD void setTarget (double next) noexcept
    {
        if (next == target)
            return;
        target = next;
        step = (target - current) / steps;
        remaining = steps;
    }

    /** The gain of the next sample. */
    PX_AUDIO_THREAD double next() noexcept
    {
        if (remaining > 0)
        {
            --remaining;
            current = remaining == 0 ? target : current + step;
        }
        return current;
    }

    PX_AUDIO_THREAD bool isMoving() const noexcept { return remaining > 0; }
    PX_AUDIO_THREAD int samplesLeft() const noexcept { return remaining; }

    /** The gain of the last sample. */
    PX_AUDIO_THREAD double value() const noexcept { return current; }

    /** Jumps to where it was going. */
    PX_AUDIO_THREAD void settle() noexcept { reset (target); }

    PX_AUDIO_THREAD void reset (double value) noexcept
    {
        target = current = value;
        remaining = 0;
    }

private:
    double target, current, step = 0.0;
    int remaining = 0;
};
