#pragma once

#include "ui/deckviews/TrackScale.h"

#include <juce_graphics/juce_graphics.h>

#include <array>
#include <vector>

/** The small pictures that marks are made of, drawn once for a scale. Sizes in logical pixels. */
class MarkSprites
{
public:
    enum class Sprite
    {
        bigBeat,  ///< 7 by 7; frame 1 is the anchor's
        beat,     ///< 5 by 5
        bigLine,  ///< 1 by 130; frame 1 is the anchor's
        line,     ///< 1 by 132
        thinLine, ///< 1 by 137, opaque: the one who draws it knows how faint it is
        hotCue,   ///< 7 by 11, frames 0 to 15: the cue slot
        hotCueLine,
        currentCue, ///< the same in the deck's hue
        currentCueLine,
        startPoint,
        loopIn,
        loopOut,
        loopLine, ///< 1 by 104, as the other lines of flags
        playhead, ///< 4 by 140
        count
    };

    /** Does nothing if it is prepared for these already. */
    void prepare (TrackScale, juce::Colour deckHue);

    /** At physical size. */
    const juce::Image& get (Sprite, int frame = 0) const;

private:
    std::array<std::vector<juce::Image>, static_cast<size_t> (Sprite::count)> images;
    double scale = 0.0;
    juce::Colour hue;
};
