#pragma once

#include "support/GainRamp.h"

/** The cross-fade of two sounds. Audio thread. */
namespace CrossFade
{
/** A sample on the way from one sound (`part` 0) to another (1). */
PX_AUDIO_THREAD constexpr float mixed (float from, float to, float part) noexcept
{
    return from + (to - from) * part;
}

/** Fades a pair in over another, in its place, by the ramp's next gains: 0 is the other alone. */
PX_AUDIO_THREAD inline void over (const float* otherLeft, const float* otherRight, float* left, float* right,
                                  int frames, GainRamp& ramp) noexcept
{
    for (int i = 0; i < frames; ++i)
    {
        const auto part = static_cast<float> (ramp.next());
        left[i] = mixed (otherLeft[i], left[i], part);
        right[i] = mixed (otherRight[i], right[i], part);
    }
}
}
