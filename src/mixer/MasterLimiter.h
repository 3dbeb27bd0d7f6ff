#pragma once

#include "mixer/PairDelay.h"
#include "support/GainRamp.h"

/** The master's volume and limiter. It looks ahead by 1.5 ms, by which the sound comes out later: no sample leaves it above
    1, and both channels are turned down alike.

    The envelope is the greatest level of the frames that are still in the delay; it falls with 99 ms. The gain is the
    mean of its reciprocal over the delay's length, so that it has come all the way down when the peak is played. While
    nothing is above 1 the sound passes as it is. Audio thread. */
class MasterLimiter
{
public:
    static constexpr double lookAheadSeconds = 0.0015;

    /** Takes the rate in Hz, above 0. */
    PX_AUDIO_THREAD void setRate (double sampleRate) noexcept;

    /** By how many frames the sound comes out later. */
    PX_AUDIO_THREAD int latency() const noexcept { return delay.frames(); }

    /** In place. @param volume   0 to 1, followed over 5 ms */
    PX_AUDIO_THREAD void process (float* left, float* right, int frames, double volume) noexcept;

    /** The level that the gain is made for, from 1. */
    PX_AUDIO_THREAD double envelope() const noexcept { return limiterEnvelope; }

private:
    /** The greatest of the last so many values: a queue of those that no later one exceeds. */
    class SlidingMaximum
    {
    public:
        PX_AUDIO_THREAD void reset (int values) noexcept;
        PX_AUDIO_THREAD double next (double value) noexcept;

    private:
        struct Entry
        {
            double value;
            int64_t index;
        };

        static constexpr size_t size = 2048; // a power of two above the delay
        std::vector<Entry> queue = std::vector<Entry> (size);
        int64_t now = 0, first = 0, last = 0; ///< of the queue: from first to before last
        int length = 1;
    };

    void applyVolume (float* left, float* right, int frames, double volume) noexcept;
    void calmDown() noexcept;
    double nextGain (double level) noexcept;
    void limit (float* left, float* right, int frames) noexcept;

    PairDelay delay;
    SlidingMaximum loudest;
    std::vector<double> gains = std::vector<double> (PairDelay::mostFrames + 1, 1.0);
    double gainSum = 1.0;
    int window = 1, gainIndex = 0;
    int calmFrames = 0; ///< since the last level above 1
    GainRamp volumeRamp;
    bool isNew = true;
    double limiterEnvelope = 1.0;
    double rate = 0.0, release = 0.0;
};
