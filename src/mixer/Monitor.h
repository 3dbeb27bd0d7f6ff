#pragma once

#include "mixer/PairDelay.h"
#include "support/CrossFade.h"

/** The headphones' bus: cue signal and master, mixed. No limiter follows. Every change of a setting takes 5 ms. Audio thread. */
class Monitor
{
public:
    struct Settings
    {
        double mix = 0.0;    ///< 0 cue to 1 master; both are at full level in the middle
        double volume = 1.0; ///< 0 to 1, squared to a gain
        bool split = false;  ///< cue on the left, master on the right, in place of the mix
        bool overdrive = false;
    };

    /** @param cueDelay   in frames: by how much the master comes late, so that cue and master stay together */
    PX_AUDIO_THREAD void setRate (double sampleRate, int cueDelay) noexcept;

    /** Mixes in place. @param monitor   left and right with the cue signal, both replaced
        @param master   left and right after the limiter */
    PX_AUDIO_THREAD void process (const Settings&, float* const monitor[2], const float* const master[2],
                                  int frames) noexcept;

    /** The soft curve of the overdrive: steep at 0, never beyond 1.15. */
    PX_AUDIO_THREAD static double overdriven (double sample) noexcept;

private:
    struct Side
    {
        GainRamp cue, master, overdrive;
    };

    void setTargets (const Settings&) noexcept;
    static void mix (Side&, float* monitor, const float* master, int frames) noexcept;

    std::array<Side, 2> sides;
    PairDelay delay;
    bool isNew = true;
};
