#pragma once

#include "ui/deckviews/TrackScale.h"

#include <juce_graphics/juce_graphics.h>

#include <array>
#include <vector>

/** The small pictures of the skin that marks are made of, at the size of a screen's pixels. Message thread. */
class MarkSprites
{
public:
    enum class Sprite
    {
        phraseMark, ///< frame 1 is the downbeat's
        barMark,
        phraseLine, ///< frame 1 is the downbeat's
        barLine,
        beatLine,
        hotCue, ///< frames 0 to 7: the cue
        hotCueLine,
        cuePoint,
        cuePointLine,
        loopIn, ///< frame 1 is the running loop's, as of the next two
        loopOut,
        loopLine,
        playhead,
        count
    };

    /** Does nothing if it is prepared for these already. @param deck   0 to 3 */
    void prepare (TrackScale, int deck);

    const juce::Image& get (Sprite, int frame = 0) const;

private:
    std::array<std::vector<juce::Image>, static_cast<size_t> (Sprite::count)> images;
    double scale = 0.0;
    int preparedDeck = -1;
};
