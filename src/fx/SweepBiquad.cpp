#include "fx/SweepBiquad.h"

#include <algorithm>
#include <cmath>
#include <numbers>

SweepBiquad::Coefficients SweepBiquad::coefficients (Side side, double hz, double q, double rate) noexcept
{
    const auto w = 2.0 * std::numbers::pi * std::min (hz / rate, 0.49);
    const auto s = std::sin (w), c = std::cos (w);
    const auto top = side == Side::lowPass ? 1.0 - c : 1.0 + c;
    return { top / (s / q + 2.0), -2.0 * q * c / (s + q), (q - s) / (s + q) };
}
