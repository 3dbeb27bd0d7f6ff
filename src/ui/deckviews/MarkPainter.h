#pragma once

#include "ui/deckviews/MarkLayout.h"
#include "ui/deckviews/MarkSprites.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** Draws marks over a deck's waveform. Message thread. */
class MarkPainter
{
public:
    // Logical pixels from the strip's top. Beat marks, lines and playhead begin at the picture's top.
    static constexpr int pictureTop = 48, numberTop = 45, numberHeight = 13, numberOffset = 6;
    static constexpr int cueFlagTop = 59;  ///< where the wave begins; a cloth hangs before what it marks
    static constexpr int lowFlagTop = 179; ///< below the wave: cue point and loop, whose lines end there

    /** @param deck   0 to 3 */
    void prepare (TrackScale track, int deck);

    /** All of these draw in physical pixels, from the view's top left corner. */
    void paintLoop (juce::Graphics&, const MarkLayout::Region&, juce::Range<int> rows) const;
    void paintUnreachable (juce::Graphics&, int right,
                           juce::Range<int> rows) const; ///< before the start point
    void paintMarks (juce::Graphics&, const MarkLayout&) const;
    void paintPlayhead (juce::Graphics&, int centre) const;

private:
    using Sprite = MarkSprites::Sprite;

    void paintBeat (juce::Graphics&, const Mark&) const;
    void paintFlag (juce::Graphics&, const Mark&) const;
    enum class Cloth
    {
        beforePole,
        behindPole
    };
    void hang (juce::Graphics&, Sprite flag, Sprite line, int frame, int x, Cloth) const;
    void stand (juce::Graphics&, Sprite flag, Sprite line, int frame, int x, Cloth) const;
    int clothX (int pole, int width, Cloth) const;
    int y (int logical) const { return track.length (logical); }

    MarkSprites sprites;
    TrackScale track;
};
