#pragma once

#include "support/AudioThread.h"
#include "support/Relaxed.h"

#include <array>

/** Peak meters of a stereo bus: they rise at once and fall by full scale in 300 ms. A side that reached full scale is held as
    clipped for 2 s. Written by the audio thread, read by any. */
class Meters
{
public:
    static constexpr double fallMs = 300.0, clipHoldMs = 2000.0;

    void setRate (double hz) noexcept { rate = hz; }

    /** Takes a block's samples in. @param gain   linear, that the samples are about to get */
    PX_AUDIO_THREAD void update (const float* left, const float* right, int frames,
                                 float gain = 1.0f) noexcept;

    /** @param side   0 left, 1 right @returns 0 to 1 */
    float level (int side) const noexcept { return levels[static_cast<size_t> (side)]; }

    /** True for 2 s after a sample of full scale. @param side   0 left, 1 right */
    bool hasClipped (int side) const noexcept { return clipMs[static_cast<size_t> (side)] > 0.0f; }

private:
    double rate = 44100.0;
    std::array<Relaxed<float>, 2> levels {}, clipMs {}; ///< clipMs: what is left of the hold
};
