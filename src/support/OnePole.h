#pragma once

#include "support/AudioThread.h"

#include <cmath>

/** The one-pole smoother: a value that goes a fixed part of the remaining way to its target with each step. */
namespace OnePole
{
/** The part of the way that remains after a step: 1 / e of it after `seconds`. @param rate   steps a second, above 0 */
PX_AUDIO_THREAD inline double coefficient (double seconds, double rate) noexcept
{
    return std::exp (-1.0 / (seconds * rate));
}

/** The value after one step. @param coefficient   the part of the way that remains, 0 to 1 */
PX_AUDIO_THREAD constexpr double approached (double value, double target, double coefficient) noexcept
{
    return (value - target) * coefficient + target;
}
}
