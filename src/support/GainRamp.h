#pragma once

#include "support/FadeCurve.h"

#include <algorithm>

/** A gain that moves to each new target: linearly over 64 samples, or, once it knows the sample rate, along FadeCurve over
    5 ms. Audio thread. */
class GainRamp
{
public:
    static constexpr int steps = 64;

    explicit GainRamp (double initial = 1.0) noexcept : target (initial), current (initial) {}

    /** Makes each move from now on smooth and 5 ms long. @param rate   in Hz, above 0 */
    PX_AUDIO_THREAD void setSampleRate (double rate) noexcept
    {
        isSmooth = true;
        length = std::max (1, static_cast<int> (FadeCurve::seconds * rate));
    }

    PX_AUDIO_THREAD void setTarget (double next) noexcept
    {
        if (next == target)
            return;
        target = next;
        start = current;
        total = remaining = length;
    }

    /** The gain of the next sample. */
    PX_AUDIO_THREAD double next() noexcept
    {
        if (remaining > 0)
        {
            --remaining;
            current = remaining == 0 ? target : start + (target - start) * part();
        }
        return current;
    }

    PX_AUDIO_THREAD bool isMoving() const noexcept { return remaining > 0; }
    PX_AUDIO_THREAD int samplesLeft() const noexcept { return remaining; }

    /** The gain of the last sample. */
    PX_AUDIO_THREAD double value() const noexcept { return current; }

    /** True once it has arrived at a gain. */
    PX_AUDIO_THREAD bool isAt (double gain) const noexcept { return !isMoving() && current == gain; }

    /** Jumps to where it was going. */
    PX_AUDIO_THREAD void settle() noexcept { reset (target); }

    PX_AUDIO_THREAD void reset (double value) noexcept
    {
        target = current = value;
        remaining = 0;
    }

private:
    /** The part of the way that lies behind. */
    double part() const noexcept
    {
        const auto t = static_cast<double> (total - remaining) / total;
        return isSmooth ? FadeCurve::at (t) : t;
    }

    double target, current, start = 0.0;
    int length = steps, total = steps, remaining = 0;
    bool isSmooth = false;
};
