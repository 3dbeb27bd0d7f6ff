#pragma once

#include "demo/DemoTracks.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <vector>

/** Plain measurements of a rendered track. */
namespace Measure
{
enum class Part
{
    sum,
    difference
};

inline std::vector<double> mono (const juce::AudioBuffer<float>& audio, Part part = Part::sum)
{
    std::vector<double> out (static_cast<size_t> (audio.getNumSamples()));
    const auto sign = part == Part::sum ? 1.0 : -1.0;
    for (int i = 0; i < audio.getNumSamples(); ++i)
        out[static_cast<size_t> (i)] = 0.5 * (audio.getSample (0, i) + sign * audio.getSample (1, i));
    return out;
}

/** A second-order band of the audio equalizer cookbook's low pass (and its complement's twin, the high pass). */
inline std::vector<double> filtered (std::vector<double> samples, double hz, bool highPass)
{
    const auto w = 2.0 * std::numbers::pi * hz / DemoTrack::sampleRate;
    const auto alpha = std::sin (w) / std::sqrt (2.0), c = std::cos (w);
    const auto edge = highPass ? 1.0 + c : 1.0 - c;
    const auto b0 = 0.5 * edge / (1.0 + alpha), b1 = (highPass ? -edge : edge) / (1.0 + alpha);
    const auto a1 = -2.0 * c / (1.0 + alpha), a2 = (1.0 - alpha) / (1.0 + alpha);
    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
    for (auto& sample : samples)
    {
        const auto y = b0 * (sample + x2) + b1 * x1 - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = sample;
        y2 = y1;
        y1 = y;
        sample = y;
    }
    return samples;
}

inline std::vector<double> lowPassed (std::vector<double> samples, double hz)
{
    return filtered (std::move (samples), hz, false);
}

inline std::vector<double> bandPassed (std::vector<double> samples, double low, double high)
{
    for (int order = 0; order < 2; ++order)
        samples = filtered (filtered (std::move (samples), low, true), high, false);
    return samples;
}

inline double rms (std::span<const double> samples)
{
    double sum = 0.0;
    for (const auto sample : samples)
        sum += sample * sample;
    return std::sqrt (sum / static_cast<double> (samples.size()));
}

inline double decibels (double gain)
{
    return 20.0 * std::log10 (std::max (gain, 1e-9));
}

/** The level of what sustains: a fifth of all 20 ms stretches are quieter. Strokes of drums leave gaps, chords don't. */
inline double sustainedRms (std::span<const double> samples)
{
    constexpr size_t stretch = 882;
    std::vector<double> levels;
    for (size_t i = 0; i + stretch <= samples.size(); i += stretch)
        levels.push_back (rms (samples.subspan (i, stretch)));
    std::ranges::nth_element (levels, levels.begin() + static_cast<std::ptrdiff_t> (levels.size() / 5));
    return levels[levels.size() / 5];
}
}
