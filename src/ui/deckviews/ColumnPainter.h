#pragma once

#include "tracks/TrackOverview.h"
#include "ui/deckviews/TrackScale.h"

#include <juce_graphics/juce_graphics.h>

/** Draws a track's waveform data, an entry a column: the body of the sound inside its peaks. */
struct ColumnPainter
{
    static constexpr int imageHeight = 91, centreLine = 44; ///< logical pixels
    static constexpr int reach =
        32; ///< from the centre line to a column's tip, at most: all else stays clear

    const TrackOverview& overview;
    int32_t loadedFrames = 0; ///< columns beyond stay empty
    bool spectral = true;     ///< bands by colour; else all in the plain colour
    juce::Colour plain;
    TrackScale track;

    /** Draws into an RGB bitmap whose left edge is a physical column of the track, and whose height is imageHeight times the
        scale. */
    void paint (juce::Image::BitmapData&, int64_t firstColumn) const;
};
