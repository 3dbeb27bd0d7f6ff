#include "similarity/extract/Rhythm.h"

#include <algorithm>
#include <cmath>

namespace
{
/** First bands of the ranges and the end: to 290 Hz, to 1.6 kHz, above. */
constexpr std::array<size_t, Rhythm::rangeCount + 1> ranges { 0, 4, 16, MelSpectrum::bandCount };
constexpr double leastSeconds = 3.0;
}

Rhythm::Rhythm (double framesPerSecond) : frameRate (framesPerSecond)
{
    for (auto& sum : sums)
        sum.assign (windowFrames, 0.0);
}

void Rhythm::add (const MelSpectrum::Levels& levels)
{
    for (size_t r = 0; r < rangeCount; ++r)
    {
        auto rise = 0.0f;
        for (auto b = ranges[r]; hasLast && b < ranges[r + 1]; ++b)
            rise += std::max (0.0f, levels[b] - last[b]);
        attacks[r].push_back (rise);
    }
    last = levels;
    hasLast = true;
    if (attacks[0].size() == windowFrames)
        takeWindow();
}

void Rhythm::takeWindow()
{
    for (size_t r = 0; r < rangeCount; ++r)
    {
        auto& curve = attacks[r];
        auto mean = 0.0f;
        for (const auto value : curve)
            mean += value;
        mean /= static_cast<float> (curve.size());
        for (auto& value : curve)
            value -= mean;
        const auto filled = static_cast<float> (curve.size());
        curve.resize (windowFrames, 0.0f);
        const auto correlation = transform.autocorrelation (curve.data());
        // Short windows overlap themselves less at long distances.
        for (size_t lag = 0; correlation[0] > 0.0f && lag < windowFrames / 2; ++lag)
            if (static_cast<float> (lag) < 0.75f * filled)
                sums[r][lag] +=
                    correlation[lag] / correlation[0] * filled / (filled - static_cast<float> (lag));
        curve.clear();
    }
    ++windows;
}

Rhythm::Pattern Rhythm::pattern()
{
    if (windows == 0 && static_cast<double> (attacks[0].size()) > leastSeconds * frameRate)
        takeWindow();
    Pattern made {};
    for (size_t r = 0; windows > 0 && r < rangeCount; ++r)
        for (size_t i = 0; i < lagCount; ++i)
        {
            const auto lagAt = [&] (double place)
            { return shortestLag * std::exp2 (place / static_cast<double> (lagsPerOctave)) * frameRate; };
            const auto centre = static_cast<double> (i);
            const auto from = lagAt (centre - 1.0), peak = lagAt (centre), to = lagAt (centre + 1.0);
            auto sum = 0.0, weights = 0.0;
            for (auto lag = static_cast<size_t> (std::ceil (from)); static_cast<double> (lag) < to; ++lag)
            {
                const auto x = static_cast<double> (lag);
                const auto weight = x < peak ? (x - from) / (peak - from) : (to - x) / (to - peak);
                weights += weight;
                sum += weight * sums[r][std::min (lag, windowFrames - 1)];
            }
            made[r][i] = weights > 0.0 ? static_cast<float> (sum / weights / windows) : 0.0f;
        }
    return made;
}
