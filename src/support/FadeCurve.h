#pragma once

#include "support/AudioThread.h"

/** The way of a gain that moves from one value to another: an S whose slope and curvature are 0 at both ends, so that
    there is no corner to be heard. */
namespace FadeCurve
{
/** The length of a gain's move that is not heard as a click, in seconds. */
inline constexpr double seconds = 0.005;

/** The same of a jump from one place of a track to another: shorter, as it takes from the attack that is jumped to. */
inline constexpr double jumpSeconds = 0.003;

/** The part of the way that lies behind. @param t   the part of the time, 0 to 1. Perlin's smootherstep. */
PX_AUDIO_THREAD constexpr double at (double t) noexcept
{
    return t * t * t * (t * (t * 6.0 - 15.0) + 10.0);
}
}
