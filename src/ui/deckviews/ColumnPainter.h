#pragma once

#include "tracks/TrackOverview.h"
#include "ui/deckviews/TrackScale.h"

#include <juce_graphics/juce_graphics.h>

/** Draws a track's waveform data, an entry a column: the body of the sound inside its peaks. */
struct ColumnPainter
{
    static constexpr int fullScale = 32;                     ///< of the waveform data, 6 bits with sign
    static constexpr int imageHeight = 118, centreLine = 59; ///< logical pixels
    static constexpr int reach = 59; ///< from the centre line to a column's tip, at most

    const TrackOverview& overview;
    int32_t loadedFrames = 0; ///< columns beyond stay empty
    bool spectral = true;     ///< bands by colour; else all in the plain colour
    juce::Colour plain;
    TrackScale track;
    double gain = 1.0; ///< logical pixels for a step of the data; what goes beyond the reach is cut
    int half = reach;  ///< logical pixels from the image's top to the centre line: the reach

    /** Draws into an RGB image whose left edge is a physical column of the track, and whose height is twice the half, times the
        scale. */
    void paint (juce::Image&, int64_t firstColumn) const;
};
