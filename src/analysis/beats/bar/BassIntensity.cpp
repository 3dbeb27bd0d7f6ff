#include "analysis/beats/bar/BassIntensity.h"

#include "analysis/signal/Biquad.h"
#include "support/OnePole.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

void CBassIntensity::prepare (double rateOfInput)
{
    constexpr auto butterworth = std::numbers::sqrt2 / 2.0;
    const auto design =
        zParamEQ::design (zParamEQ::BandType::lowPass, cutoffHz, 0.0, butterworth, rateOfInput);
    *this = {};
    rate = rateOfInput;
    b0 = b2 = static_cast<float> (design.b0);
    b1 = static_cast<float> (design.b1);
    a1 = static_cast<float> (design.a1);
    a2 = static_cast<float> (design.a2);
    keep = static_cast<float> (OnePole::coefficient (smoothingSeconds, rateOfInput));
}

void CBassIntensity::process (std::span<const float> in)
{
    for (const auto x : in)
    {
        const auto y = b0 * x + z1;
        z1 = b1 * x - a1 * y + z2;
        z2 = b2 * x - a2 * y;
        power = keep * power + (1.0f - keep) * y * y;
        if (++filled == hop)
        {
            made.push_back (power);
            filled = 0;
        }
    }
    // Far below hearing the recursion would only go on with subnormal numbers.
    if (std::abs (z1) + std::abs (z2) < 1e-15f)
        z1 = z2 = 0.0f;
    if (power < 1e-20f)
        power = 0.0f;
}

double CBassIntensity::riseAt (double place) const
{
    // Far below what is heard; silence must not rise by hundreds of decibels.
    constexpr auto floorPower = 1e-6;
    const auto levelAt = [this] (double at)
    {
        const auto i = static_cast<int64_t> (std::floor (at / hop));
        const auto known = i >= 0 && i < static_cast<int64_t> (made.size());
        return 10.0 * std::log10 ((known ? made[static_cast<size_t> (i)] : 0.0f) + floorPower);
    };
    return levelAt (place + smoothingSeconds * rate) - levelAt (place - 0.25 * smoothingSeconds * rate);
}
