#pragma once

#include "similarity/extract/RealTransform.h"

#include <array>
#include <vector>

/** The levels of 32 mel bands from 80 to 7600 Hz in frames of 1024, every 512, of a signal of 8 to 26 kHz. Bands above the
    signal's own range stay at the floor. One thread. */
class MelSpectrum
{
public:
    static constexpr int frameLength = 1024, hop = 512;
    static constexpr size_t bandCount = 32;

    /** In dB, a full-scale sine being 0; never below the floor. */
    using Levels = std::array<float, bandCount>;
    static constexpr float floorDb = -90.0f;

    explicit MelSpectrum (double rate);

    /** @param in   frameLength samples */
    Levels levels (const float* in);

private:
    /** The weights of one band's bins. */
    struct Band
    {
        size_t first = 0;
        std::vector<float> weights;
    };

    RealTransform transform { frameLength };
    std::array<Band, bandCount> bands;
};
