#pragma once

#include "support/AudioThread.h"

#include <cmath>
#include <cstdint>

/** The slow oscillator of the sweep effects. */
namespace Lfo
{
enum class Shape : int32_t
{
    sine,
    triangle, ///< from 0 up to 1 and back
    saw,      ///< the phase itself
    square    ///< 0, from half a turn on 1
};

/** sin (2 pi phase) for a phase from 0 to 1 by the odd Taylor polynomial of degree 11 over a quarter turn, within 1e-7;
    cheap enough for every sample. */
PX_AUDIO_THREAD inline double sineOfTurn (double phase) noexcept
{
    // The same sine within a quarter turn of 0: half a turn is mirrored, then the turn's second half.
    const auto fromMiddle = 0.5 - phase;
    const auto folded =
        std::abs (fromMiddle) > 0.25 ? std::copysign (0.5, fromMiddle) - fromMiddle : fromMiddle;
    const auto x = folded * 6.283185307179586;
    const auto x2 = x * x;
    return x
           * (1.0
              + x2
                    * (-1.0 / 6
                       + x2
                             * (1.0 / 120
                                + x2 * (-1.0 / 5040 + x2 * (1.0 / 362880 - x2 * (1.0 / 39916800))))));
}

/** The oscillator's value for a phase from 0 to 1. */
PX_AUDIO_THREAD inline double value (Shape shape, double phase) noexcept
{
    switch (shape)
    {
    case Shape::triangle:
        return 1.0 - std::abs (2.0 * phase - 1.0);
    case Shape::saw:
        return phase;
    case Shape::square:
        return phase < 0.5 ? 0.0 : 1.0;
    case Shape::sine:
        break;
    }
    return sineOfTurn (phase);
}
}
