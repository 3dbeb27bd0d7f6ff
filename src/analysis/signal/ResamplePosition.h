#pragma once

#include "support/AudioThread.h"

#include <algorithm>
#include <cmath>

/** The place of a resampler between its input frames, which tells how many frames a call will give.

    Output frames of a call lie at multiples of the ratio from where the call before left off; a call gives those that
    lie within its input. What goes over is carried to the next call as a double, so the count over any length is exact
    to the rounding of one sum a call. */
class ResamplePosition
{
public:
    static constexpr double leastRatio = 1.0 / 16.0, greatestRatio = 16.0;

    /** The ratio in force for one asked for: within the limits, and 1 for NaN. */
    PX_AUDIO_THREAD static double limited (double ratio) noexcept
    {
        return std::isnan (ratio) ? 1.0 : std::clamp (ratio, leastRatio, greatestRatio);
    }

    /** The place of the output frame `index` of this call, in input frames from the call's first. */
    PX_AUDIO_THREAD double at (int index, double ratio) const noexcept { return carried + index * ratio; }

    PX_AUDIO_THREAD int framesProduced (int in, double ratio) const noexcept
    {
        auto count = std::max (0, static_cast<int> (std::ceil ((in - carried) / ratio)));
        // The quotient is rounded; what decides is where the frames themselves come to lie.
        while (count > 0 && at (count - 1, ratio) >= in)
            --count;
        while (at (count, ratio) < in)
            ++count;
        return count;
    }

    PX_AUDIO_THREAD int framesNeeded (int out, double ratio) const noexcept
    {
        return out <= 0 ? 0 : static_cast<int> (at (out - 1, ratio)) + 1;
    }

    /** After a call that took `in` frames and gave `out`. */
    PX_AUDIO_THREAD void advance (int in, int out, double ratio) noexcept { carried = at (out, ratio) - in; }

    PX_AUDIO_THREAD void reset() noexcept { carried = 0.0; }

    /** True if nothing but the rounding of sums keeps the next output frame off a whole input frame, the nearest one. */
    PX_AUDIO_THREAD bool isWhole() const noexcept { return std::abs (carried - nearest()) < roundingOfSums; }
    PX_AUDIO_THREAD int nearest() const noexcept { return static_cast<int> (carried + 0.5); }

private:
    static constexpr double roundingOfSums = 1.0e-9;

    double carried =
        0.0; ///< where the next output frame lies, in frames after the input so far; never negative
};
