#include "similarity/extract/Tonality.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace
{
constexpr double lowestHz = 50.0, bassHz = 200.0, highestHz = 2000.0;

/** Of C0 with A4 at 440 Hz. */
constexpr double c0Hz = 16.351598;

/** Peaks within 40 dB of a frame's highest count. */
constexpr float leastShare = 1e-4f;

/** Temperley's profiles of major and minor: the weights of pitches in pieces of a key. */
constexpr Tonality::Profile major { 5.0f, 2.0f, 3.5f, 2.0f, 4.5f, 4.0f, 2.0f, 4.5f, 2.0f, 3.5f, 1.5f, 4.0f },
    minor { 5.0f, 2.0f, 3.5f, 4.5f, 2.0f, 4.0f, 2.0f, 4.5f, 3.5f, 2.0f, 1.5f, 4.0f };

float correlation (const Tonality::Profile& chroma, const Tonality::Profile& key, size_t tonic)
{
    auto meanA = 0.0f, meanB = 0.0f;
    for (size_t i = 0; i < 12; ++i)
    {
        meanA += chroma[i] / 12.0f;
        meanB += key[i] / 12.0f;
    }
    auto ab = 0.0f, aa = 0.0f, bb = 0.0f;
    for (size_t i = 0; i < 12; ++i)
    {
        const auto a = chroma[(i + tonic) % 12] - meanA, b = key[i] - meanB;
        ab += a * b;
        aa += a * a;
        bb += b * b;
    }
    return aa > 0.0f ? ab / std::sqrt (aa * bb) : 0.0f;
}
}

Tonality::Tonality (double rate) : binHz (rate / 4.0 / length) {}

void Tonality::add (std::span<const float> in)
{
    halved.clear();
    half.process (in, halved);
    quarter.process (halved, pending);
    size_t start = 0;
    for (; pending.size() - start >= length; start += hop)
        takeFrame (pending.data() + start);
    pending.erase (pending.begin(), pending.begin() + static_cast<std::ptrdiff_t> (start));
}

void Tonality::takeFrame (const float* in)
{
    const auto power = transform.power (in);
    const auto first = static_cast<size_t> (lowestHz / binHz) + 1,
               end = std::min (power.size() - 2, static_cast<size_t> (highestHz / binHz));
    auto highest = 1e-9f;
    for (auto k = first; k < end; ++k)
        highest = std::max (highest, power[k]);

    struct Peak
    {
        size_t step = 0;
        double strength = 0.0;
        bool isBass = false;
    };
    std::array<Peak, 128> peaks;
    size_t count = 0;
    auto total = 0.0;
    for (auto k = first; k < end && count < peaks.size(); ++k)
    {
        if (power[k] < highest * leastShare || power[k] <= power[k - 1] || power[k] < power[k + 1])
            continue;
        // A parabola through the levels of three bins; neighbours may be 0 where a signal is constant.
        constexpr auto least = 1e-20f;
        const auto a = std::log (std::max (power[k - 1], least)), b = std::log (power[k]),
                   c = std::log (std::max (power[k + 1], least));
        const auto bend = a - 2.0f * b + c;
        const auto offset = bend < 0.0f ? std::clamp (0.5f * (a - c) / bend, -0.5f, 0.5f) : 0.0f;
        const auto hertz = (static_cast<double> (k) + static_cast<double> (offset)) * binHz;
        const auto pitch = 12.0 * std::log2 (hertz / c0Hz);
        const auto step = std::lround (pitch * stepsPerSemitone) % static_cast<long> (steps);
        const auto strength = std::pow (static_cast<double> (power[k]), 0.25);
        peaks[count++] = { static_cast<size_t> (step), strength, hertz < bassHz };
        total += strength;
    }
    for (size_t i = 0; i < count; ++i)
        (peaks[i].isBass ? bass : treble)[peaks[i].step] += peaks[i].strength / total;
}

Tonality::Result Tonality::result() const
{
    Result made;
    std::complex<double> turn;
    auto sum = 0.0;
    for (size_t s = 0; s < steps; ++s)
    {
        const auto strength = bass[s] + treble[s];
        turn +=
            strength * std::polar (1.0, 2.0 * std::numbers::pi * static_cast<double> (s) / stepsPerSemitone);
        sum += strength;
    }
    if (sum <= 0.0)
        return made;
    const auto tuning = std::arg (turn) / (2.0 * std::numbers::pi); // semitones
    made.tuningCents = static_cast<float> (100.0 * tuning);
    for (size_t s = 0; s < steps; ++s)
    {
        const auto pitch = static_cast<double> (s) / stepsPerSemitone - tuning + 12.0;
        const auto nearest = std::round (pitch);
        const auto off = std::cos (std::numbers::pi * (pitch - nearest));
        made.chroma[static_cast<size_t> (nearest) % 12] +=
            static_cast<float> ((bass[s] + treble[s]) * off * off / sum);
    }

    std::array<float, keyCount> likeness {};
    for (size_t k = 0; k < keyCount; ++k)
        likeness[k] = correlation (made.chroma, k < minorKeys ? major : minor, k % 12);
    const auto best = std::max_element (likeness.begin(), likeness.end());
    made.key = static_cast<int> (best - likeness.begin());
    auto second = -1.0f;
    for (auto k = likeness.begin(); k != likeness.end(); ++k)
        if (k != best)
            second = std::max (second, *k);
    made.confidence = std::clamp (4.0f * (*best - second), 0.0f, 1.0f);
    return made;
}
