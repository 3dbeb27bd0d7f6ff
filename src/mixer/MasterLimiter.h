#pragma once

#include "support/AudioThread.h"
#include "support/NoiseTable.h"

/** The master's volume and limiter. The envelope of the louder channel rises with 0.1 ms and falls with 99 ms; while it
    stands above 1, both channels are divided by it. Nothing looks ahead, so a first few samples may pass above 1. Audio
    thread. */
class MasterLimiter
{
public:
    /** Takes the rate in Hz, above 0. */
    PX_AUDIO_THREAD void setRate (double sampleRate) noexcept;

    /** In place. @param volume   0 to 1 */
    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double volume, NoiseTable&) noexcept;

    PX_AUDIO_THREAD double envelope() const noexcept { return limiterEnvelope; }

private:
    double limiterEnvelope = 1.0;
    double rate = 0.0, attack = 0.0, release = 0.0; ///< coefficients exp(-1/x), x the time in samples
};
