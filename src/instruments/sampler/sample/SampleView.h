#pragma once

#include "instruments/sampler/sample/SampleFacts.h"
#include "support/AudioThread.h"

/** A sample as its voice reads it: frames, the region that loops, and the edges that need a fade. A value, made once a
    block; places are frames of the sample, fractional. */
struct SampleView
{
    const float *left = nullptr, *right = nullptr;
    int32_t frames = 0;
    int32_t begin = 0, end = 0; ///< of the region that loops
    bool loops = false;

    /** A step at the seam of the loop that the sound around it does not have: the end fades out, the begin fades in. */
    bool fadesOutAtSeam = false, fadesInAtSeam = false;

    /** The region of these facts, within their frames. */
    PX_AUDIO_THREAD static SampleView of (const float* left, const float* right, const SampleFacts&) noexcept;

    int32_t regionFrames() const noexcept { return end - begin; }
};

/** A place in a sample that is being read. */
struct SamplePlace
{
    double frame = 0.0;
    bool hasTurned = false; ///< this round of the loop began at the seam
};

namespace SampleReading
{
/** Reads frames from a place on, `step` frames of the sample apart: four-point cubic interpolation, the frames themselves
    where the places are whole. Past the end of a sample that does not loop lies silence.
    @param fadeFrames   length of the fades at edges, in frames of the sample
    Moves the place on. Audio thread. */
PX_AUDIO_THREAD void read (const SampleView&, SamplePlace&, double step, double fadeFrames, float* left,
                           float* right, int frames) noexcept;

/** True if a sound that begins at a frame must be faded in: its first step, up from silence, is larger than those that
    follow. An attack, a noise or a start from zero needs none. Audio thread. */
PX_AUDIO_THREAD bool beginsWithStep (const SampleView&, double frame) noexcept;

/** True if a hit sets on within some 3 ms of a frame: much louder than what lies before. Audio thread. */
PX_AUDIO_THREAD bool beginsWithAttack (const SampleView&, double frame) noexcept;

/** Looks at the seam of the region and says which side of it is to be faded. Any thread. */
void inspectSeam (SampleView&) noexcept;
}
