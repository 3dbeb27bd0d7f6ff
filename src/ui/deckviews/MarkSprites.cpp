#include "ui/deckviews/MarkSprites.h"

#include "skin/Skin.h"

#include <algorithm>
#include <string>

namespace
{
struct Source
{
    const char* name;
    bool ofDeck; ///< there is one for each deck's hue
};

/** In the order of the sprites. */
constexpr Source sources[] {
    { "mark_32", false },       { "mark_8", false },  { "line_32", false },      { "line_8", false },
    { "line_2", false },        { "hot_cue", false }, { "hot_cue_line", false }, { "cue_point", true },
    { "cue_point_line", true }, { "loop_in", false }, { "loop_out", false },     { "loop_line", false },
    { "playhead", true },
};
static_assert (std::size (sources) == static_cast<size_t> (MarkSprites::Sprite::count));

/** A frame at physical size: its own pixels where the skin has the scale, else resampled once. */
juce::Image frameOf (const skin::Strip& strip, int frame, TrackScale track)
{
    const auto source = strip.image.getClippedImage (strip.pixels (frame));
    return source.rescaled (std::max (1, track.length (strip.width)), track.length (strip.height));
}
}

void MarkSprites::prepare (TrackScale track, int deck)
{
    if (track.scale == scale && deck == preparedDeck)
        return;
    scale = track.scale;
    preparedDeck = deck;
    for (size_t i = 0; i < images.size(); ++i)
    {
        const auto name = sources[i].ofDeck ? skin::deckName (sources[i].name, deck) : sources[i].name;
        const auto strip = skin::strip (name, static_cast<float> (scale));
        images[i].clear();
        for (int frame = 0; frame < strip.frames; ++frame)
            images[i].push_back (frameOf (strip, frame, track));
    }
}

const juce::Image& MarkSprites::get (Sprite sprite, int frame) const
{
    const auto& frames = images[static_cast<size_t> (sprite)];
    return frames[static_cast<size_t> (std::clamp (frame, 0, static_cast<int> (frames.size()) - 1))];
}
