#include "similarity/extract/MelSpectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace
{
constexpr double lowestHz = 80.0, highestHz = 7600.0;

/** The mel scale of speech recognition: 2595 log10 (1 + f / 700). */
double melOf (double hz)
{
    return 2595.0 * std::log10 (1.0 + hz / 700.0);
}

double hertzOf (double mel)
{
    return 700.0 * (std::pow (10.0, mel / 2595.0) - 1.0);
}

/** 10 log10 to 0.02 dB, of positive numbers: the exponent, and a cubic for the mantissa. */
float decibels (float power)
{
    const auto bits = std::bit_cast<uint32_t> (power);
    const auto exponent = static_cast<float> (static_cast<int> (bits >> 23) - 127);
    const auto m = std::bit_cast<float> ((bits & 0x7fffffu) | 0x3f800000u) - 1.0f;
    const auto log2 = exponent + m * (1.4234f + m * (-0.5857f + 0.1623f * m));
    return 3.0103f * log2;
}
}

MelSpectrum::MelSpectrum (double rate)
{
    const auto lowest = melOf (lowestHz), step = (melOf (highestHz) - lowest) / (bandCount + 1);
    const auto binHz = rate / frameLength;
    for (size_t b = 0; b < bandCount; ++b)
    {
        const auto from = hertzOf (lowest + step * static_cast<double> (b)),
                   peak = hertzOf (lowest + step * static_cast<double> (b + 1)),
                   to = hertzOf (lowest + step * static_cast<double> (b + 2));
        auto& band = bands[b];
        band.first = static_cast<size_t> (std::ceil (from / binHz));
        auto sum = 0.0f;
        for (auto k = band.first; k <= frameLength / 2 && static_cast<double> (k) * binHz < to; ++k)
        {
            const auto hz = static_cast<double> (k) * binHz;
            band.weights.push_back (
                static_cast<float> (hz < peak ? (hz - from) / (peak - from) : (to - hz) / (to - peak)));
            sum += band.weights.back();
        }
        for (auto& weight : band.weights)
            weight /= sum;
    }
}

MelSpectrum::Levels MelSpectrum::levels (const float* in)
{
    const auto power = transform.power (in);
    const auto floor = std::pow (10.0f, 0.1f * floorDb);
    Levels made;
    for (size_t b = 0; b < bandCount; ++b)
    {
        auto sum = floor;
        const auto* bins = power.data() + bands[b].first;
        for (size_t i = 0; i < bands[b].weights.size(); ++i)
            sum += bins[i] * bands[b].weights[i];
        made[b] = sum;
    }
    for (auto& level : made)
        level = decibels (level);
    return made;
}
