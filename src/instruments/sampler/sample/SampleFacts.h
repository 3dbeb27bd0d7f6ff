#pragma once

#include <cstdint>

/** The numbers of a sample in memory. Beats are counted as a grid's entries are, two to a beat: a loop of four beats has
    8 of them. */
struct SampleFacts
{
    int32_t lengthFrames = 0;
    uint32_t sampleRate = 44100; ///< Hz
    uint16_t channels = 2;       ///< of the file
    uint16_t bitsPerSample = 32; ///< of the file; 32 where it states none
    double beats = 0.0;          ///< 0 for a sample without a tempo
    double bpm = 120.0;          ///< 0 for a sample without a tempo, which is never stretched

    /** The frames that a loop goes round in, the second one past its end. 0, 0: all of the sample. */
    uint32_t beatStart = 0, beatEnd = 0;

    bool operator== (const SampleFacts&) const noexcept = default;
};
