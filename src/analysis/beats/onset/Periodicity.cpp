#include "analysis/beats/onset/Periodicity.h"

#include "analysis/AnalysisError.h"
#include "analysis/signal/Fft.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>

namespace
{
/** The tempos looked at. Below the lower one a bar would be taken for a beat in three parts; a simple beat that slow is heard
    at twice the tempo. */
constexpr double lowestBpm = 56.0, lowestSimpleBpm = 60.0, highestBpm = 185.0;
constexpr int numTempos = 800;

/** Groups of two or three parts of a beat stand out from each other by less than this by chance; even clicks have none. Of a
    beat in three parts, the rarer, more is asked. */
constexpr double leastContrast = 0.02, leastCompoundContrast = 0.04;

/** Tempos this close are one tempo, halved, doubled or not. */
constexpr double sameOctaves = 0.06;

double octavesApart (double a, double b)
{
    const auto octaves = std::log2 (a / b);
    return std::abs (octaves - std::round (octaves));
}

double bell (double bpm, double centre, double spread)
{
    const auto octaves = std::log2 (bpm / centre) / spread;
    return std::exp (-0.5 * octaves * octaves);
}
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

double Periodicity::groupsOfThree (double seconds) const
{
    // A repetition of clicks lies in one value or is shared by two, as its lag falls: the mean of three takes all of it.
    const auto lag = [&] (int pulses)
    {
        const auto place = pulses * seconds;
        return (at (place - 1.0 / rate) + at (place) + at (place + 1.0 / rate)) / 3.0;
    };
    // Both sets of lags lie evenly around six, where both groupings meet: a tempo that drifts lets the correlation fall with
    // the lag, and that must not tell.
    return (lag (3) + lag (9)) / 2.0 - (lag (2) + lag (4) + lag (8) + lag (10)) / 4.0;
}

double Periodicity::score (double bpm, bool isCompound, const TempoWeights& weights) const
{
    const auto lag = [&] (double beats) { return at (beats * 60.0 / bpm); };
    const auto half = lag (0.5), third = lag (1.0 / 3.0), thirds = lag (2.0 / 3.0);
    // Two beats don't count: what repeats there may as well be a beat of half the tempo.
    auto bar = (2.0 * lag (4) + lag (8)) / 3.0;
    auto division = 0.0, against = 0.0;
    if (isCompound)
    {
        division = (third + thirds) / 2.0;
        against =
            weights.compoundContrast * std::max (0.0, leastCompoundContrast - groupsOfThree (20.0 / bpm))
            + weights.halves * (std::max (0.0, half - third) + std::max (0.0, half - thirds));
    }
    else
    {
        bar = std::max (bar, (2.0 * lag (3) + lag (6)) / 3.0);
        division = (lag (0.25) + 2.0 * half) / 3.0;
        against = weights.contrast * std::max (0.0, leastContrast + groupsOfThree (30.0 / bpm));
    }
    const auto fit = (weights.division * division + weights.beat * lag (1.0) + weights.bar * bar - against)
                     / (weights.division + weights.beat + weights.bar);
    return fit
           * bell (bpm, isCompound ? weights.compoundCentreBpm : weights.centreBpm, weights.spreadOctaves);
}

Periodicity::Tempo Periodicity::tempo (const TempoWeights& weights) const
{
    Tempo best;
    if (correlation.empty())
        return best;
    std::array<double, numTempos> tempos {}, scores {};
    for (size_t i = 0; i < numTempos; ++i)
    {
        const auto bpm =
            lowestBpm * std::pow (highestBpm / lowestBpm, static_cast<double> (i) / (numTempos - 1));
        const auto simple = bpm >= lowestSimpleBpm ? score (bpm, false, weights) : -1.0;
        const auto compound = score (bpm, true, weights);
        tempos[i] = bpm;
        scores[i] = std::max (simple, compound);
        if (best.bpm == 0.0 || scores[i] > best.confidence)
            best = { bpm, scores[i], 0.0, compound > simple };
    }
    auto next = 0.0;
    for (size_t i = 0; i < numTempos; ++i)
        if (octavesApart (tempos[i], best.bpm) > sameOctaves)
            next = std::max (next, scores[i]);
    best.confidence = std::clamp (best.confidence, 0.0, 1.0);
    best.margin = best.confidence > 0.0 ? std::clamp (1.0 - next / best.confidence, 0.0, 1.0) : 0.0;
    return best;
}
