#pragma once

#include "tracks/PXAudioSampleBuffer.h"

#include <cstdint>

/** Lays samples on the pixels of a screen, and finds the extremes of those in a column. */
struct PeakColumns
{
    double framesPerColumn = 1.0; ///< of a physical column, above 0

    int64_t columnAt (double frame) const noexcept;

    struct Extremes
    {
        int16_t most = 0, least = 0;
    };

    /** Of both channels, from the first frame of the column to the first of the next, so that neighbours join.
        @returns nothing but zeros outside the `loadedFrames` of the track; `inTrack` says so */
    Extremes of (const PXAudioSampleBuffer&, int32_t loadedFrames, int64_t column,
                 bool& inTrack) const noexcept;
};
