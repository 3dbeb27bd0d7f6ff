#pragma once

#include <span>
#include <vector>

/** Lowers a signal's rate to about 11 kHz: a windowed sinc, and then every n-th value. */
class Decimator
{
public:
    /** @param sampleRate   of the signal in Hz, 11025 or more */
    void prepare (int sampleRate);

    int factor() const { return every; }

    /** Frames of the signal that the filter needs on each side; the result is moved to be in time. */
    int reach() const { return half; }

    /** @returns what the frames gave; valid until the next call */
    std::span<const float> process (std::span<const float>);

private:
    int every = 1, half = 0;
    std::vector<float> taps, pending, out;
};
