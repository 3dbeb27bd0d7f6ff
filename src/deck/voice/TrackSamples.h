#pragma once

#include "support/AudioThread.h"

#include <cstdint>

/** A frame of sound, full scale 1. */
struct TrackFrame
{
    float left = 0.0f, right = 0.0f;
};

/** The samples of a 16-bit track, on its frames and between them: a sinc of 24 frames under Kaiser's window, whose images
    lie 80 dB and more under a tone of up to 16 kHz of 44.1. A place on a frame gives that frame as it is.

    A reading at more than 1.2 frames a step is low-passed by twice as many frames, so that what lies above half of the
    output's rate does not fold back. A value; any thread. */
class TrackSamples
{
public:
    /** @param loadedFrames   that are there; beyond them, and at frame 0, is silence */
    TrackSamples (const int16_t* leftSamples, const int16_t* rightSamples, int32_t loadedFrames) noexcept
        : left (leftSamples),
          right (rightSamples),
          frames (loadedFrames)
    {
    }

    /** True for a place that has sound; outside the track and at its edges is silence. */
    PX_AUDIO_THREAD bool covers (double place) const noexcept
    {
        const auto frame = static_cast<int32_t> (place);
        return frame >= 1 && frame < frames - 2;
    }

    /** @param place   in frames of the file
        @param rate    of the reading, in frames of the file per output frame; only its size matters */
    PX_AUDIO_THREAD TrackFrame at (double place, double rate) const noexcept
    {
        TrackFrame frame;
        read (&place, rate, &frame.left, &frame.right, 1);
        return frame;
    }

    /** The same for each of `count` places. */
    PX_AUDIO_THREAD void read (const double* places, double rate, float* leftOut, float* rightOut,
                               int count) const noexcept;

    /** The frames from a whole place on, onwards or backwards, all of which have sound. */
    PX_AUDIO_THREAD void readWhole (double place, bool isOnward, float* leftOut, float* rightOut,
                                    int count) const noexcept;

private:
    const int16_t *left, *right;
    int32_t frames;
};
