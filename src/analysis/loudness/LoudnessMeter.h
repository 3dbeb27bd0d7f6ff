#pragma once

#include "analysis/loudness/EqualLoudnessFilter.h"
#include "analysis/loudness/HalfRate.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/** The ReplayGain reference analysis: how much louder or softer a track must become to be as loud as the reference, a
    pink noise of 89 dB.

    Root-mean-square levels of 50 ms after the equal-loudness filter are counted in 12000 bins of 0.01 dB; the level that
    5 % of them exceed stands for the track. One object per track; any one thread. */
class LoudnessMeter
{
public:
    static constexpr int bins = 12000, binsPerDecibel = 100;
    static constexpr double windowSeconds = 0.05, percentile = 0.95, referenceDb = 64.82, limitDb = 24.0;

    /** @param rate   Hz: 8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100 or 48000, or one of the upper three times
                      2, 4 or 8, which is halved as often. At any other rate nothing is measured. */
    explicit LoudnessMeter (double rate);

    bool canMeasure() const noexcept { return filter.has_value(); }

    /** The next samples. Full scale is 1, and NaN or samples 36 dB beyond count as silence. */
    void add (const float* left, const float* right, int frames) noexcept;
    void add (const int16_t* left, const int16_t* right, int frames) noexcept;

    /** The gain in dB, -24 to 24; nothing for a track that is silent, shorter than a window, or of a rate that cannot be
        measured. */
    std::optional<double> gainDb() const noexcept;

private:
    using Pair = EqualLoudnessFilter::Pair;
    static constexpr size_t pieceFrames = 256;

    template <class Sample>
    void addSamples (const Sample* left, const Sample* right, int frames) noexcept;
    size_t halve (std::span<Pair> frames) noexcept;
    void addFrames (std::span<const Pair> frames) noexcept;
    void endWindow() noexcept;

    std::optional<EqualLoudnessFilter> filter;
    std::array<HalfRate, 3> halvings;
    size_t halvingCount = 0;
    size_t windowFrames = 0, filled = 0;
    Pair windowSum { 0.0, 0.0 };
    std::vector<uint32_t> histogram;
};
