#pragma once

#include <span>
#include <vector>

/** Test signals and what is measured of them. Frequencies in Hz, lengths in frames, levels linear. */
namespace Signals
{
std::vector<float> sine (double frequency, double rate, int frames, double amplitude = 0.5);

/** The same values for the same seed, evenly spread over +-amplitude. */
std::vector<float> noise (int frames, unsigned seed, double amplitude = 0.5);

double rms (std::span<const float>);
double peak (std::span<const float>);

/** The largest step between neighbours. */
double largestStep (std::span<const float>);

struct SineFit
{
    double frequency = 0.0, amplitude = 0.0;
    double residualRms = 0.0; ///< of all that is not this sine
};

/** The least-squares sine near a frequency. */
SineFit fitSine (std::span<const float>, double rate, double nearFrequency);

/** Normalised correlation of two signals, -1 to 1, over the shorter one's length. */
double correlation (std::span<const float>, std::span<const float>);
}
