#include "analysis/signal/Biquad.h"

#include <algorithm>
#include <cmath>
#include <numbers>

zParamEQ::Biquad zParamEQ::design (BandType type, double hz, double gainDb, double q,
                                   double sampleRate) noexcept
{
    const auto a = std::pow (10.0, gainDb * 0.025);
    const auto w = 2.0 * std::numbers::pi * std::min (hz / sampleRate, 0.4999);
    const auto cosine = std::cos (w), alpha = std::sin (w) / (2.0 * q);
    switch (type)
    {
    case BandType::peak:
    {
        const auto a0 = 1.0 + alpha / a;
        return { (1.0 + alpha * a) / a0, -2.0 * cosine / a0, (1.0 - alpha * a) / a0, -2.0 * cosine / a0,
                 (1.0 - alpha / a) / a0 };
    }
    case BandType::lowShelf:
    case BandType::highShelf:
    {
        // The two shelves are one with the sign of the cosine turned, and with it that of the odd terms.
        const auto sign = type == BandType::lowShelf ? 1.0 : -1.0;
        const auto c = sign * cosine;
        const auto root = 2.0 * std::sqrt (std::max (a, 0.0001)) * alpha;
        const auto a0 = (a + 1.0) + (a - 1.0) * c + root;
        return { a * ((a + 1.0) - (a - 1.0) * c + root) / a0,
                 sign * 2.0 * a * ((a - 1.0) - (a + 1.0) * c) / a0,
                 a * ((a + 1.0) - (a - 1.0) * c - root) / a0, sign * -2.0 * ((a - 1.0) + (a + 1.0) * c) / a0,
                 ((a + 1.0) + (a - 1.0) * c - root) / a0 };
    }
    case BandType::lowPass:
    case BandType::highPass:
        break;
    }
    const auto sign = type == BandType::lowPass ? 1.0 : -1.0;
    const auto a0 = 1.0 + alpha, edge = (1.0 - sign * cosine) / 2.0;
    return { edge / a0, sign * 2.0 * edge / a0, edge / a0, -2.0 * cosine / a0, (1.0 - alpha) / a0 };
}
