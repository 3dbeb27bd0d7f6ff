#pragma once

#include "support/AudioThread.h"

#include <cstdint>

/** Turns positions of faders into gains. Pure functions, any thread. */
namespace FaderLaws
{
/** The crossfader as it stands. */
struct Crossfader
{
    double position = 0.5; ///< 0 left to 1 right
    double curve = 0.5;    ///< 0 to 1, for the smooth law: the greater, the softer
    bool smooth = false;   ///< else linear
    bool reverse = false;  ///< the sides swap
};

/** A channel fader's gain: 0 for 0, 1 for 1, exponential between. @param volume   0 to 1 */
PX_AUDIO_THREAD double faderGain (double volume) noexcept;

/** The gain of a side of the crossfader. The linear law holds 1 from the centre on. The smooth one is a rational
    approximation of the hyperbolic tangent of way over curve, so its centre lies below 1.
    @param side   0 left, 1 right */
PX_AUDIO_THREAD double crossfaderGain (const Crossfader&, int side) noexcept;

/** The gain of an equaliser's band in dB: 0 at 0.5, 10 at 1, -30 at 0. @param value   0 to 1 */
PX_AUDIO_THREAD double bandGainDb (double value, bool killed) noexcept;
}
