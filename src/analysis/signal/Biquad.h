#pragma once

#include "support/AudioThread.h"

namespace zParamEQ
{
enum class BandType
{
    peak,
    lowShelf,
    highShelf,
    lowPass,
    highPass
};

/** Coefficients of a second-order section, divided by a0; at first it lets everything through. */
struct Biquad
{
    double b0 = 1.0, b1 = 0.0, b2 = 0.0, a1 = 0.0, a2 = 0.0;
};

/** The audio equalizer cookbook's filters: w = 2 pi hz / rate, alpha = sin w / (2 q), A = 10^(gainDb / 40). Some
    transcendental functions, so not for every sample. Any thread.
    @param hz       above 0; at or above half the rate it is held just below
    @param gainDb   of a peak or shelf; the others ignore it */
PX_AUDIO_THREAD Biquad design (BandType, double hz, double gainDb, double q, double sampleRate) noexcept;
}
