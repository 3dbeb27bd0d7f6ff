#pragma once

#include "fx/effect/FxEffect.h"

#include <cmath>
#include <complex>
#include <numbers>
#include <span>
#include <vector>

/** Helpers of the tests of effects. */
namespace Response
{
inline constexpr double turn = 2.0 * std::numbers::pi;

inline std::vector<float> impulse (int frames)
{
    std::vector<float> signal (static_cast<size_t> (frames));
    signal[0] = 1.0f;
    return signal;
}

/** The spectrum of a response at a frequency. */
inline std::complex<double> at (std::span<const float> response, double hertz, double rate)
{
    std::complex<double> sum;
    for (size_t i = 0; i < response.size(); ++i)
        sum += static_cast<double> (response[i])
               * std::polar (1.0, -turn * hertz * static_cast<double> (i) / rate);
    return sum;
}

inline double decibels (double gain)
{
    return 20.0 * std::log10 (gain);
}

/** Nothing but the effect's own sound, with all ramps at rest. */
inline void listenTo (FxEffect& effect, double rate)
{
    effect.setFxParameter (FxParameter::dryWet, 1.0);
    effect.setFxParameter (FxParameter::bypass, 0.0);
    effect.setSampleRate (rate);
    effect.reset();
}
}
