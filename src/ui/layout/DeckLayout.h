#pragma once

#include <juce_graphics/juce_graphics.h>

#include <vector>

/** The places of a deck strip's parts: transport column, utility panels, waveform between them, thumbnail below. */
struct DeckLayout
{
    static constexpr int transportWidth = 49, upperHeight = 190;
    static constexpr int panelWidth = 100, mostPanels = 4;

    /** Below this the waveform would be too narrow to mix by; panels give way to it, those next to it first. */
    static constexpr int leastWaveform = 132;

    /** From this width on there is room for texts beside the time. */
    static constexpr int wideWaveform = 376;

    /** @param left    panels wanted on the left, 0 to 4
        @param right   the same on the right */
    DeckLayout (int width, int height, int left, int right);

    juce::Rectangle<int> transport, waveform, thumbnail;
    std::vector<juce::Rectangle<int>> leftPanels, rightPanels; ///< from the outside to the waveform

    /** The track's texts: beside the time above a wide waveform; in one line above the thumbnail, without an area for the
        artist, where the waveform is narrow. */
    juce::Rectangle<int> title, artist, tempo;

    /** The sign of a doubtful grid: above the tempo, or on the end of the title. */
    juce::Rectangle<int> gridSign;
};
