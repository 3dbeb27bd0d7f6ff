#pragma once

#include "support/AudioThread.h"
#include "support/Relaxed.h"

#include <array>

/** Peak meters of a stereo bus: they rise at once and fall by full scale in 300 ms. Written by the audio thread, read by
    any. */
class Meters
{
public:
    static constexpr double fallMs = 300.0;

    void setRate (double hz) noexcept { rate = hz; }

    /** Takes a block's samples in. */
    PX_AUDIO_THREAD void update (const float* left, const float* right, int frames) noexcept;

    /** @param side   0 left, 1 right @returns 0 to 1 */
    float level (int side) const noexcept { return levels[static_cast<size_t> (side)]; }

private:
    double rate = 44100.0;
    std::array<Relaxed<float>, 2> levels {};
};
