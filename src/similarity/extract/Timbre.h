#pragma once

#include "similarity/extract/MelSpectrum.h"

#include <array>
#include <cstdint>
#include <vector>

/** Statistics of the cepstrum: the timbre of a track, in pieces of 64 frames (1.5 s). One thread. */
class Timbre
{
public:
    static constexpr size_t coefficients = 20;
    static constexpr int framesPerPiece = 64;

    using Cepstrum = std::array<float, coefficients>;

    Timbre();

    void add (const MelSpectrum::Levels&);

    /** Sums over frames. */
    struct Piece
    {
        int frames = 0;
        Cepstrum sum {}, squares {}, changes {}; ///< of the coefficients; of their steps from frame to frame

        void add (const Piece&);
        float mean (size_t c) const { return sum[c] / static_cast<float> (frames); }
        float deviation (size_t c) const;
        float change (size_t c) const { return changes[c] / static_cast<float> (frames); }
    };

    /** The pieces that sound: those within 30 dB of the loud ones. Ends the last piece. */
    std::vector<Piece> soundingPieces();

private:
    std::array<Cepstrum, MelSpectrum::bandCount> cosines;
    Cepstrum last {};
    bool hasLast = false;
    Piece current;
    std::vector<Piece> pieces;
};
