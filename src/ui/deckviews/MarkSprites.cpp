#include "ui/deckviews/MarkSprites.h"
#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
using Sprite = MarkSprites::Sprite;

constexpr int flagWidth = 7, flagHeight = 11;

struct Size
{
    int width, height, frames;
};

constexpr Size sizeOf (Sprite sprite)
{
    switch (sprite)
    {
    case Sprite::bigBeat:
        return { 7, 7, 2 };
    case Sprite::beat:
        return { 5, 5, 1 };
    case Sprite::bigLine:
        return { 1, 130, 2 };
    case Sprite::line:
        return { 1, 132, 1 };
    case Sprite::thinLine:
        return { 1, 137, 1 };
    case Sprite::hotCue:
    case Sprite::currentCue:
        return { flagWidth, flagHeight, 16 };
    case Sprite::hotCueLine:
        return { 1, 104, 16 };
    case Sprite::currentCueLine:
    case Sprite::loopLine:
        return { 1, 104, 1 };
    case Sprite::startPoint:
    case Sprite::loopIn:
    case Sprite::loopOut:
        return { flagWidth, flagHeight, 1 };
    case Sprite::playhead:
        return { 4, 140, 1 };
    case Sprite::count:
        break;
    }
    return { 1, 1, 1 };
}

/** Light enough for a dark number, and neighbours differ in lightness too. */
juce::Colour cueColour (int slot)
{
    static const std::array colours { juce::Colour (0xffff7a5c), juce::Colour (0xfff5d547),
                                      juce::Colour (0xff6fcf6a), juce::Colour (0xff8fe3f2),
                                      juce::Colour (0xff7f9cff), juce::Colour (0xffe7a6ff),
                                      juce::Colour (0xffff8fb3), juce::Colour (0xffe8dcc8) };
    return colours[static_cast<size_t> (slot) % colours.size()];
}

/** A cloth with a number; its right edge is the pole. */
void drawFlag (juce::Graphics& g, juce::Colour colour, int number)
{
    g.setColour (colour);
    g.fillRect (0, 0, flagWidth, flagHeight);
    g.setColour (palette::ink);
    g.setFont (SMLookAndFeel::font (number < 10 ? 11.0f : 8.0f));
    g.drawText (juce::String (number), -2, 0, flagWidth + 4, flagHeight, juce::Justification::centred, false);
}

void drawTriangle (juce::Graphics& g, float base, float tip)
{
    juce::Path path;
    path.addTriangle (base, 0.0f, base, flagHeight, tip, 0.5f * flagHeight);
    g.fillPath (path);
}

/** The one place that knows how the marks look. Logical coordinates. */
void draw (juce::Graphics& g, Sprite sprite, int frame, juce::Colour hue)
{
    const auto size = sizeOf (sprite);
    const juce::Rectangle<int> all (0, 0, size.width, size.height);
    const auto anchorColour = juce::Colours::white;
    switch (sprite)
    {
    case Sprite::bigBeat:
    case Sprite::beat:
        g.setColour (frame == 1 ? anchorColour : palette::label.brighter (0.2f));
        g.fillEllipse (all.toFloat());
        break;
    case Sprite::bigLine:
        g.setColour (frame == 1 ? anchorColour.withAlpha (0.8f) : palette::value.withAlpha (0.6f));
        g.fillRect (all);
        break;
    case Sprite::line:
        g.setColour (palette::value.withAlpha (0.42f));
        g.fillRect (all);
        break;
    case Sprite::thinLine:
        g.setColour (palette::value.withAlpha (0.8f));
        g.fillRect (all);
        break;
    case Sprite::hotCue:
        drawFlag (g, cueColour (frame), frame + 1);
        break;
    case Sprite::hotCueLine:
        g.setColour (cueColour (frame));
        g.fillRect (all);
        break;
    case Sprite::currentCue:
        drawFlag (g, hue, frame + 1);
        break;
    case Sprite::currentCueLine:
        g.setColour (hue);
        g.fillRect (all);
        break;
    case Sprite::startPoint:
        g.setColour (palette::value);
        g.fillRect (0, 0, 2, flagHeight);
        drawTriangle (g, 3.0f, flagWidth);
        break;
    case Sprite::loopIn:
        g.setColour (hue);
        drawTriangle (g, 0.0f, flagWidth);
        break;
    case Sprite::loopOut:
        g.setColour (hue);
        drawTriangle (g, flagWidth, 0.0f);
        break;
    case Sprite::loopLine:
        g.setColour (hue.withAlpha (0.8f));
        g.fillRect (all);
        break;
    case Sprite::playhead:
        g.setColour (palette::ink);
        g.fillRect (all);
        g.setColour (hue);
        g.fillRect (all.reduced (1, 0));
        break;
    case Sprite::count:
        break;
    }
}
}

void MarkSprites::prepare (TrackScale track, juce::Colour deckHue)
{
    if (track.scale == scale && deckHue == hue)
        return;
    scale = track.scale;
    hue = deckHue;
    for (size_t i = 0; i < images.size(); ++i)
    {
        const auto sprite = static_cast<Sprite> (i);
        const auto size = sizeOf (sprite);
        images[i].clear();
        for (int frame = 0; frame < size.frames; ++frame)
        {
            const auto width = std::max (1, track.length (size.width)), height = track.length (size.height);
            juce::Image image (juce::Image::ARGB, width, height, true, juce::SoftwareImageType());
            juce::Graphics g (image);
            // The picture fills its whole pixels, however the scale rounds.
            g.addTransform (juce::AffineTransform::scale (
                static_cast<float> (width) / static_cast<float> (size.width),
                static_cast<float> (height) / static_cast<float> (size.height)));
            draw (g, sprite, frame, hue);
            images[i].push_back (image);
        }
    }
}

const juce::Image& MarkSprites::get (Sprite sprite, int frame) const
{
    const auto& frames = images[static_cast<size_t> (sprite)];
    return frames[static_cast<size_t> (juce::jlimit (0, static_cast<int> (frames.size()) - 1, frame))];
}
