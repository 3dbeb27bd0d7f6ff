#pragma once

#include <array>
#include <complex>
#include <span>
#include <vector>

/** The exact tempo of a whole onset function, near one that is known to 1.6 percent.

    It adds up the magnitudes of the function's Fourier transform at the beat and its halves and quarters. A function
    of minutes tells these apart to some thousandths of a BPM. The function is first turned down by the known tempo and
    summed in short blocks, so that each further tempo costs little. */
class TempoComb
{
public:
    /** @param frameRate   values per second
        @param bpm         the known tempo, off by no more than `reach` of it */
    TempoComb (std::span<const float> function, double frameRate, double bpm);

    /** The reach of best(): lengths of the beat up to `apart` off the known one, and `around` each. */
    static constexpr double apart = 0.01, around = 0.006, reach = apart + around;

    /** The strength of a tempo in the function: 0 upwards. */
    double score (double bpm) const;

    /** The tempo of the highest score: three lengths of the beat, at the known one and at 0.99 and 1.01 of it, are each
        brought to the best nearby; the last steps are a bisection that ends at 1/32 of a sample. */
    double best() const;

private:
    using Complex = std::complex<double>;
    static constexpr std::array<int, 3> harmonics { 1, 2, 4 };
    static constexpr int blockFrames = 32;

    /** Distance of tempos that the function's length can just tell apart, in BPM. */
    double resolution() const;

    double bisect (double bpm) const;

    double rate = 0.0, centre = 0.0;
    size_t length = 0;
    std::array<std::vector<Complex>, harmonics.size()> blocks;
};
