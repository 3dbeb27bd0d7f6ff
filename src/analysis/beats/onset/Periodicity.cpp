#include "analysis/beats/onset/Periodicity.h"

#include "analysis/AnalysisError.h"
#include "analysis/signal/Fft.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>

namespace
{
struct Lag
{
    double beats, weight;
};

/** Without the parts of a beat, a rhythm of three against four often wins. Two beats don't count: what repeats there may
    as well be a beat of half the tempo; what repeats at four and eight is a bar. */
constexpr Lag lags[] { { 0.25, 0.25 }, { 0.5, 0.5 }, { 1, 1 }, { 4, 2 }, { 8, 1 } };
constexpr double lagWeights = 4.75;

/** The tempos that people tap to: a bell over the logarithm of the tempo. */
constexpr double centreBpm = 120.0, spreadOctaves = 1.0;

constexpr double lowestBpm = 60.0, highestBpm = 185.0;
constexpr int numTempos = 800;
}

Periodicity::Periodicity (std::span<const float> function, double frameRate, double maxSeconds)
    : rate (frameRate)
{
    const auto lagsKept = std::min (function.size(), static_cast<size_t> (maxSeconds * frameRate) + 2);
    if (function.empty())
        return;
    // Zeros as long as the longest lag keep the circle from closing.
    const auto size = std::bit_ceil (function.size() + lagsKept);
    std::unique_ptr<CFFT> transform;
    if (CFFT::create (transform, static_cast<int> (size)) != AnalysisError::none)
        return;
    std::vector<float> signal (size, 0.0f);
    std::copy (function.begin(), function.end(), signal.begin());
    // The autocorrelation is the power spectrum's inverse transform.
    transform->forward (signal.data());
    transform->power (signal.data());
    std::fill (signal.begin() + static_cast<std::ptrdiff_t> (size / 2) + 1, signal.end(), 0.0f);
    transform->inverse (signal.data());
    if (!(signal[0] > 0.0f))
        return;
    correlation.assign (signal.begin(), signal.begin() + static_cast<std::ptrdiff_t> (lagsKept));
    for (auto& value : correlation)
        value /= signal[0];
}

double Periodicity::at (double seconds) const
{
    const auto place = seconds * rate;
    const auto i = static_cast<size_t> (place);
    if (i + 1 >= correlation.size())
        return 0.0;
    const auto part = place - static_cast<double> (i);
    return (1.0 - part) * correlation[i] + part * correlation[i + 1];
}

double Periodicity::score (double bpm) const
{
    auto sum = 0.0;
    for (const auto& lag : lags)
        sum += lag.weight * at (lag.beats * 60.0 / bpm);
    const auto octaves = std::log2 (bpm / centreBpm) / spreadOctaves;
    return sum / lagWeights * std::exp (-0.5 * octaves * octaves);
}

Periodicity::Tempo Periodicity::tempo() const
{
    Tempo best;
    if (correlation.empty())
        return best;
    for (int i = 0; i < numTempos; ++i)
    {
        const auto bpm = lowestBpm * std::pow (highestBpm / lowestBpm, i / (numTempos - 1.0));
        if (const auto s = score (bpm); best.bpm == 0.0 || s > best.confidence)
            best = { bpm, s };
    }
    best.confidence = std::clamp (best.confidence, 0.0, 1.0);
    return best;
}
