#pragma once

#include "support/AudioThread.h"

/** The faults for which a slot takes its plug-in out. */
enum class PluginFault
{
    none,
    notANumber,
    tooLoud,
    threw
};

/** Keeps a plug-in's output within what a mixer may see: what is no number, and what is above +60 dB, is a fault, from which
    on the last good samples fade out; up to there the output is limited to +24 dB, and subnormal numbers become zeros.
    Audio thread. */
class SignalGuard
{
public:
    static constexpr float faultLevel = 1000.0f, highestLevel = 15.849f; ///< +60 dB and +24 dB

    PX_AUDIO_THREAD void reset() noexcept { last[0] = last[1] = 0.0f; }

    /** Mends a block in place. @param channels   left and right
        @returns the first fault in it */
    PX_AUDIO_THREAD PluginFault run (float* const* channels, int frames) noexcept;

private:
    PX_AUDIO_THREAD void fadeOut (float* const* channels, int begin, int frames) noexcept;

    float last[2] {};
};
