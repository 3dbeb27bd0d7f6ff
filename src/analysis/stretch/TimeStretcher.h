#pragma once

#include "support/AudioThread.h"

/** A time stretcher with a fixed output block: tempo and key of a live stream, each on its own.

    Owned and driven by one thread, the audio thread of its deck; only construction allocates. */
class CElastiqueProIf
{
public:
    virtual ~CElastiqueProIf() = default;

    /** Takes exactly getFramesNeeded() frames and gives one output block.
        @returns 0 for a full output block, -1 if the input was not enough */
    PX_AUDIO_THREAD virtual int process (const float* const* in, int frames, float* const* out) = 0;

    /** Input frames to give to the next process(). */
    PX_AUDIO_THREAD virtual int getFramesNeeded() = 0;

    /** @param stretch     output length over input length
        @param pitch       frequency factor; replaced by the one that is really in force
        @param keepPhase   0 lines the first output up with the input
        @returns 0, or AnalysisError::badArgument with nothing changed when stretch * pitch is outside 0.1 to 10 */
    PX_AUDIO_THREAD virtual int setStretchAndPitch (float stretch, float* pitch, int keepPhase) = 0;

    /** Forgets all signal. The factors return to 1. */
    PX_AUDIO_THREAD virtual void reset() = 0;
};
