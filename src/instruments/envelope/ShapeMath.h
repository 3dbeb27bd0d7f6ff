#pragma once

#include "support/AudioThread.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

/** The functions that shapes are made of. A pad asks for two levels a sample, so no library call is spent on what shapes
    are asked for: polynomials are within 1e-12 of the functions, and exact where segments begin and end. Arguments out of
    their range go to the library. */
namespace ShapeMath
{
/** The greatest whole number not above a value. */
PX_AUDIO_THREAD inline double floorOf (double value) noexcept
{
    if (!(std::abs (value) < 1e15))
        return std::floor (value);
    const auto whole = static_cast<double> (static_cast<std::int64_t> (value));
    return whole > value ? whole - 1.0 : whole;
}

/** sin (x pi / 2): x (1 + (1 - x^2) Q (x^2)) with a Chebyshev fit of Q for x from -1 to 1. */
PX_AUDIO_THREAD inline double sineOfQuarterTurns (double x) noexcept
{
    if (!(std::abs (x) <= 1.0))
        return std::sin (x * (0.5 * std::numbers::pi));
    const auto s = x * x, s2 = s * s;
    const auto low = 0.5707963267945829 - 0.07516777068870747 * s;
    const auto middle = 0.004524855270354895 - 0.00015689747018162874 * s;
    const auto high = 3.5403981073809887e-06 - 5.4304468093943774e-08 * s;
    return x * (1.0 + (1.0 - s) * (low + s2 * (middle + s2 * high)));
}

/** sin (angle). @param angle   in radians */
PX_AUDIO_THREAD inline double sineOf (double angle) noexcept
{
    const auto quarters = angle * (2.0 / std::numbers::pi);
    if (!(std::abs (quarters) < 1e5))
        return std::sin (angle);
    const auto fromCrest = quarters - 1.0;
    return sineOfQuarterTurns (1.0 - std::abs (fromCrest - 4.0 * floorOf (0.25 * fromCrest + 0.5)));
}

/** exp (x) - 1: a whole power of two, and 1 + f R (f) with a Chebyshev fit of R for the rest f from -0.5 to 0.5. */
PX_AUDIO_THREAD inline double exponentialLessOne (double x) noexcept
{
    const auto powers = x * std::numbers::log2e;
    if (!(std::abs (powers) < 1000.0))
        return std::exp (x) - 1.0;
    const auto whole = floorOf (powers + 0.5), f = powers - whole, f2 = f * f, f4 = f2 * f2;
    const auto lowest = 0.6931471805599471 + 0.24022650695812936 * f;
    const auto low = 0.05550410866464222 + 0.009618129159427715 * f;
    const auto high = 0.0013333558202866089 + 0.00015403455826341935 * f;
    const auto highest = 1.5252671516146634e-05 + 1.3255232089916504e-06 * f + 1.0206205102779685e-07 * f2;
    const auto rest = f * ((lowest + f2 * low) + f4 * (high + f2 * highest));
    const auto power = std::bit_cast<double> ((static_cast<std::uint64_t> (whole + 1023.0)) << 52);
    return (power - 1.0) + power * rest;
}
}
