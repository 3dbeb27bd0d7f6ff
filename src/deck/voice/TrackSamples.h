#pragma once

#include "support/AudioThread.h"

#include <cstdint>

/** One frame of a track on its way to the output. */
struct TrackFrame
{
    double left = 0.0, right = 0.0;

    void add (const TrackFrame& other, double weight, double noise = 0.0) noexcept
    {
        left += other.left * weight + noise;
        right += other.right * weight + noise;
    }
};

/** The samples of a track between its frames. A value; audio thread. */
struct TrackSamples
{
    static constexpr double sampleScale = 3.0517578125e-05; // 1 / 32768

    const int16_t *left = nullptr, *right = nullptr;
    int32_t frames = 0; ///< that are loaded

    /** The cubic through four samples around b, of which c is the next: Catmull-Rom's. */
    static double cubic (const int16_t* b, double t) noexcept
    {
        const double before = b[-1], here = b[0], next = b[1], after = b[2];
        return ((((here - next) * 1.5 + (after - before) * 0.5) * t
                 + (before - here * 2.5 + next * 2.0 - after * 0.5))
                    * t
                + (next - before) * 0.5)
                   * t
               + here;
    }

    /** Adds the interpolated samples at a place, times `weight`; nothing where the cubic has no four samples. */
    PX_AUDIO_THREAD void addAt (double where, double weight, double noise, TrackFrame& frame) const noexcept
    {
        const auto index = static_cast<int32_t> (where);
        if (index < 1 || index >= frames - 2)
            return;
        const auto t = where - index;
        frame.add ({ cubic (left + index, t), cubic (right + index, t) }, weight * sampleScale, noise);
    }
};
