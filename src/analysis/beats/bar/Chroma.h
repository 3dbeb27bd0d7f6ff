#pragma once

#include "analysis/signal/Fft.h"

#include <array>
#include <memory>
#include <span>
#include <vector>

/** The profile of pitches over time: how strong each semitone of six octaves sounds. Octaves are kept apart, since a
    bass that moves tells more of the bar than the chord above it.

    Takes the signal at a quarter or less of its rate (Decimator). One thread. */
class CChroma
{
public:
    static constexpr int numPitches = 72;
    static constexpr int lowestCents =
        2800 - 1200; ///< above C0, whose note number is 12; E1 with A4 at 440 Hz
    static constexpr int length = 4096, hop = 512;

    using Profile = std::array<float, numPitches>;

    /** @returns AnalysisError::none or noMemory */
    int init (double rateOfInput);

    void process (std::span<const float>);

    /** Magnitudes, one profile per hop; profile i stands for the sound around frame i * hop + length / 2. */
    std::span<const Profile> profiles() const { return made; }

private:
    void takeFrame (const float*);

    std::unique_ptr<CFFT> transform;
    std::vector<float> pending, spectrum;
    std::array<int, numPitches + 1> firstBin {}; ///< of each pitch; the last one's end
    std::vector<Profile> made;
};
