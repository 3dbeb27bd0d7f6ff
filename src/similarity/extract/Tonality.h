#pragma once

#include "similarity/extract/HalfBand.h"
#include "similarity/extract/RealTransform.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

/** The key of a track and the spread of its pitches. One thread. */
class Tonality
{
public:
    /** Keys are 0 to 11 for C major to B major, 12 to 23 for C minor to B minor. */
    static constexpr int minorKeys = 12, keyCount = 24, noKey = -1;

    using Profile = std::array<float, 12>;

    struct Result
    {
        int key = noKey;
        float confidence = 0.0f; ///< 0 to 1: how far the best key stands before the next one
        float tuningCents = 0.0f;
        Profile chroma {}; ///< of all octaves from C on, with a sum of 1
    };

    /** @param rate   of the signal, 8 to 26 kHz */
    explicit Tonality (double rate);

    void add (std::span<const float>);
    Result result() const;

private:
    static constexpr int length = 4096, hop = 2048;
    static constexpr size_t stepsPerSemitone = 10, steps = 12 * stepsPerSemitone;

    void takeFrame (const float*);

    HalfBand half, quarter;
    std::vector<float> halved, pending;
    RealTransform transform { length };
    double binHz = 1.0;
    std::array<double, steps> bass {}, treble {}; ///< tenths of a semitone from C on
};
