#include "ui/deckviews/MarkPainter.h"
#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr float beatOpacity = 0.3f;
constexpr int flagLine = 104;
const juce::Colour numberColour { 0xffa0a1a3 }, anchorNumberColour { 0xffbfc0c1 };
}

void MarkPainter::prepare (TrackScale t, juce::Colour deckHue)
{
    track = t;
    hue = deckHue;
    sprites.prepare (t, deckHue);
}

void MarkPainter::blit (juce::Graphics& g, Sprite sprite, int frame, int x, int top) const
{
    g.drawImageAt (sprites.get (sprite, frame), x, top);
}

void MarkPainter::paintLoop (juce::Graphics& g, const MarkLayout::Region& loop, juce::Range<int> rows) const
{
    const auto area =
        juce::Rectangle<int>::leftTopRightBottom (loop.left, rows.getStart(), loop.right, rows.getEnd());
    g.setColour ((loop.running ? hue : palette::label).withAlpha (loop.running ? 0.24f : 0.12f));
    g.fillRect (area);
    g.setColour ((loop.running ? hue : palette::label).withAlpha (loop.running ? 0.7f : 0.3f));
    const auto edge = std::max (1, track.length (1));
    g.fillRect (area.withHeight (edge));
    g.fillRect (area.withTop (area.getBottom() - edge));
}

void MarkPainter::paintMarks (juce::Graphics& g, const MarkLayout& layout) const
{
    for (const auto& mark : layout.beats)
        paintBeat (g, mark);
    for (const auto& mark : layout.flags)
        paintFlag (g, mark);
}

void MarkPainter::paintBeat (juce::Graphics& g, const Mark& mark) const
{
    const auto top = y (pictureTop);
    if (mark.kind == MarkKind::beat)
    {
        g.setOpacity (beatOpacity);
        blit (g, Sprite::thinLine, 0, mark.x, top);
        g.setOpacity (1.0f);
        return;
    }

    const auto isBar = mark.kind == MarkKind::bar;
    const auto frame = mark.kind == MarkKind::downbeat ? 1 : 0;
    const auto& head = sprites.get (isBar ? Sprite::beat : Sprite::bigBeat, frame);
    g.setOpacity (1.0f);
    g.drawImageAt (head, mark.x - (head.getWidth() - std::max (1, track.length (1))) / 2, top);
    blit (g, isBar ? Sprite::line : Sprite::bigLine, frame, mark.x, top + head.getHeight());

    g.setColour (frame == 1 ? anchorNumberColour : numberColour);
    g.setFont (SMLookAndFeel::font (static_cast<float> (SMLookAndFeel::labelSize * track.scale)));
    g.drawText (juce::String (mark.number), mark.x + y (numberOffset), y (numberTop), y (40),
                y (numberHeight), juce::Justification::centredLeft, false);
    g.setOpacity (1.0f);
}

void MarkPainter::paintFlag (juce::Graphics& g, const Mark& mark) const
{
    const auto slot = mark.number - 1;
    const auto cue = [&] (Sprite flag, Sprite line)
    {
        // The cloth hangs before the pole, and above the peaks: what begins at the mark is free to be seen.
        const auto& cloth = sprites.get (flag, slot);
        blit (g, line, slot, mark.x, y (cueFlagTop) + cloth.getHeight());
        g.drawImageAt (cloth, mark.x + std::max (1, track.length (1)) - cloth.getWidth(), y (cueFlagTop));
    };
    const auto fromBelow = [&] (Sprite flag, bool before)
    {
        const auto& cloth = sprites.get (flag);
        blit (g, Sprite::loopLine, 0, mark.x, y (loopFlagTop - flagLine));
        g.drawImageAt (cloth, before ? mark.x + std::max (1, track.length (1)) - cloth.getWidth() : mark.x,
                       y (loopFlagTop));
    };
    g.setOpacity (1.0f);
    switch (mark.kind)
    {
    case MarkKind::hotCue:
        return cue (Sprite::hotCue, Sprite::hotCueLine);
    case MarkKind::currentCue:
        return cue (Sprite::currentCue, Sprite::currentCueLine);
    case MarkKind::startPoint:
        return fromBelow (Sprite::startPoint, false);
    case MarkKind::loopIn:
        return fromBelow (Sprite::loopIn, false);
    case MarkKind::loopOut:
        return fromBelow (Sprite::loopOut, true);
    default:
        return;
    }
}

void MarkPainter::paintPlayhead (juce::Graphics& g, int centre) const
{
    const auto& image = sprites.get (Sprite::playhead);
    g.setOpacity (1.0f);
    g.drawImageAt (image, centre - image.getWidth() / 2, y (pictureTop));
}
