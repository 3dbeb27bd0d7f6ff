#pragma once

#include "similarity/extract/MelSpectrum.h"

#include <array>
#include <vector>

/** The rhythm of a track: how alike its attacks are at distances from 0.12 to 1.9 s, in three ranges of pitch. Distances stand
    on a logarithmic scale, so that another speed moves the pattern a little and does not change it. One thread. */
class Rhythm
{
public:
    static constexpr size_t rangeCount = 3, lagsPerOctave = 6, lagCount = 4 * lagsPerOctave + 1;
    static constexpr double shortestLag = 0.12;

    using Pattern = std::array<std::array<float, lagCount>, rangeCount>;

    /** @param framesPerSecond   of the levels */
    explicit Rhythm (double framesPerSecond);

    void add (const MelSpectrum::Levels&);

    /** The mean autocorrelation of the attacks of each range, -1 to 1. All 0 for less than 3 s. */
    Pattern pattern();

private:
    static constexpr size_t windowFrames = 512;
    void takeWindow();

    const double frameRate;
    MelSpectrum::Levels last {};
    bool hasLast = false;
    std::array<std::vector<float>, rangeCount> attacks;
    std::array<std::vector<double>, rangeCount> sums; ///< of autocorrelations
    int windows = 0;
    RealTransform transform { 2 * static_cast<int> (windowFrames) };
};
