#include "analysis/loudness/LoudnessMeter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
// The analysis is defined on samples of 16 bits.
constexpr float fullScale = 32767.0f, loudest = 64.0f;

inline double in16Bits (int16_t sample) noexcept
{
    return sample;
}

inline double in16Bits (float sample) noexcept
{
    return std::fabs (sample) <= loudest ? static_cast<double> (sample * fullScale) : 0.0;
}
}

LoudnessMeter::LoudnessMeter (double rate)
{
    constexpr auto lowestHalved = 32000.0;
    const auto* design = EqualLoudnessFilter::designFor (rate);
    while (design == nullptr && halvingCount < halvings.size() && rate / 2.0 >= lowestHalved)
    {
        rate /= 2.0;
        ++halvingCount;
        design = EqualLoudnessFilter::designFor (rate);
    }
    if (design == nullptr)
        return;
    filter.emplace (*design);
    windowFrames = static_cast<size_t> (std::ceil (design->rate * windowSeconds));
    histogram.resize (bins);
}

void LoudnessMeter::add (const float* left, const float* right, int frames) noexcept
{
    addSamples (left, right, frames);
}

void LoudnessMeter::add (const int16_t* left, const int16_t* right, int frames) noexcept
{
    addSamples (left, right, frames);
}

template <class Sample>
void LoudnessMeter::addSamples (const Sample* left, const Sample* right, int frames) noexcept
{
    if (!canMeasure() || frames <= 0)
        return;
    std::array<Pair, pieceFrames> piece;
    const auto total = static_cast<size_t> (frames);
    for (size_t done = 0; done < total; done += pieceFrames)
    {
        const auto count = std::min (pieceFrames, total - done);
        for (size_t i = 0; i < count; ++i)
            piece[i] = Pair { in16Bits (left[done + i]), in16Bits (right[done + i]) };
        const auto kept = halve (std::span (piece).first (count));
        addFrames (std::span (piece).first (kept));
    }
}

size_t LoudnessMeter::halve (std::span<Pair> frames) noexcept
{
    for (size_t stage = 0; stage < halvingCount; ++stage)
    {
        size_t kept = 0;
        for (const auto frame : frames)
            if (halvings[stage].add (frame, frames[kept]))
                ++kept;
        frames = frames.first (kept);
    }
    return frames.size();
}

void LoudnessMeter::addFrames (std::span<const Pair> frames) noexcept
{
    while (!frames.empty())
    {
        const auto count = std::min (frames.size(), windowFrames - filled);
        windowSum += filter->sumOfSquares (frames.first (count));
        filled += count;
        frames = frames.subspan (count);
        if (filled == windowFrames)
            endWindow();
    }
}

void LoudnessMeter::endWindow() noexcept
{
    const auto meanSquare = 0.5 * (windowSum[0] + windowSum[1]) / static_cast<double> (windowFrames);
    const auto level = binsPerDecibel * 10.0 * std::log10 (meanSquare + 1e-37);
    ++histogram[static_cast<size_t> (std::clamp (level, 0.0, bins - 1.0))];
    windowSum = Pair { 0.0, 0.0 };
    filled = 0;
}

std::optional<double> LoudnessMeter::gainDb() const noexcept
{
    const auto windows = std::accumulate (histogram.begin(), histogram.end(), uint64_t { 0 });
    auto above = static_cast<int64_t> (std::ceil (static_cast<double> (windows) * (1.0 - percentile)));
    size_t bin = histogram.size();
    while (bin > 0 && above > 0)
        above -= histogram[--bin];
    // The lowest bin holds everything below one step of 16 bits.
    if (windows == 0 || bin == 0)
        return std::nullopt;
    return std::clamp (referenceDb - static_cast<double> (bin) / binsPerDecibel, -limitDb, limitDb);
}
