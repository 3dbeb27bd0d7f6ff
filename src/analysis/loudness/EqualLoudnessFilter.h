#pragma once

#include <array>
#include <span>

/** The ear's frequency response as the ReplayGain reference analysis models it: two recursive filters in a row. Stereo,
    one channel in each half of a vector. One object per stream; any one thread. */
class EqualLoudnessFilter
{
public:
    /** A frame: the left and the right sample. */
    using Pair = double __attribute__ ((vector_size (16)));

    struct Design
    {
        double rate; ///< Hz
        std::array<double, 11> fitForward;
        std::array<double, 10> fitBackward;
        std::array<double, 3> highPassForward;
        std::array<double, 2> highPassBackward;
    };

    /** The published filter of a rate in Hz, or null for one that has none. */
    static const Design* designFor (double rate) noexcept;

    explicit EqualLoudnessFilter (const Design&);

    /** Filters the next frames and gives the sum of their squares per channel. */
    Pair sumOfSquares (std::span<const Pair> frames) noexcept;

private:
    std::array<Pair, 11> fitForward;
    std::array<Pair, 10> fitBackward, fitState {};
    std::array<Pair, 3> highPassForward;
    std::array<Pair, 2> highPassBackward, highPassState {};
};
