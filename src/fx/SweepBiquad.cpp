#include "fx/SweepBiquad.h"

#include <algorithm>
#include <cmath>
#include <numbers>

SweepBiquad::Coefficients SweepBiquad::coefficients (double hz, double q, double rate) noexcept
{
    const auto w = 2.0 * std::numbers::pi * std::min (hz / rate, 0.49);
    const auto share = std::sin (w) / q;
    return { StateVariable::coefficients (std::tan (0.5 * w), 2.0 / q), (1.0 + share) / (1.0 + 0.5 * share) };
}
