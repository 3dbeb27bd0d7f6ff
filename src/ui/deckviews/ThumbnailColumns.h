#pragma once

#include "tracks/TrackOverview.h"

#include <vector>

/** The peaks of a whole track, squeezed into the columns of a small picture. */
struct ThumbnailColumns
{
    /** One entry for each column and one for the track's end: -32 to 31, as the waveform data. */
    std::vector<int8_t> most, least;

    /** Each column takes the extremes of the entries that it covers, at least one.
        @param frames        loaded so far; columns beyond them are 0
        @param trackFrames   that all columns cover, at least `frames`
        @param width         columns, at least 1 */
    static ThumbnailColumns of (const TrackOverview&, int32_t frames, int32_t trackFrames, int width);
};
