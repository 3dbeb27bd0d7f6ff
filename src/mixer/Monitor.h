#pragma once

#include "support/AudioThread.h"

/** The headphones' bus: cue signal and master, mixed. No limiter follows. */
namespace Monitor
{
struct Settings
{
    double mix = 0.0;    ///< 0 cue to 1 master; both are at full level in the middle
    double volume = 1.0; ///< 0 to 1, squared to a gain
    bool split = false;  ///< cue on the left, master on the right, in place of the mix
    bool overdrive = false;
};

/** The soft curve of the overdrive: steep at 0, never beyond 1.15. */
PX_AUDIO_THREAD double overdriven (double sample) noexcept;

/** Mixes in place. @param monitor   left and right with the cue signal, both replaced
    @param master   left and right after the limiter. Audio thread. */
PX_AUDIO_THREAD void process (const Settings&, float* const monitor[2], const float* const master[2],
                              int frames) noexcept;
}
