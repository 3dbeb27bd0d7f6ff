#include "ui/deckviews/MarkPainter.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr float beatOpacity = 0.3f;
constexpr int flagLine = 104;
constexpr float runningFill = 0.2f, runningEdge = 0.7f, waitingFill = 0.1f, waitingEdge = 0.3f;
constexpr float unreachableAlpha = 0.6f;
}

void MarkPainter::prepare (TrackScale t, int deck)
{
    track = t;
    sprites.prepare (t, deck);
}

void MarkPainter::paintLoop (juce::Graphics& g, const MarkLayout::Region& loop, juce::Range<int> rows) const
{
    const auto area =
        juce::Rectangle<int>::leftTopRightBottom (loop.left, rows.getStart(), loop.right, rows.getEnd());
    const auto colour = loop.running ? palette::selected : palette::label;
    g.setColour (colour.withAlpha (loop.running ? runningFill : waitingFill));
    g.fillRect (area);
    g.setColour (colour.withAlpha (loop.running ? runningEdge : waitingEdge));
    const auto edge = track.length (1);
    g.fillRect (area.withHeight (edge));
    g.fillRect (area.withTop (area.getBottom() - edge));
}

void MarkPainter::paintUnreachable (juce::Graphics& g, int right, juce::Range<int> rows) const
{
    g.setColour (palette::panel.withAlpha (unreachableAlpha));
    g.fillRect (juce::Rectangle<int>::leftTopRightBottom (0, rows.getStart(), right, rows.getEnd()));
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
        g.drawImageAt (sprites.get (Sprite::beatLine), mark.x, top);
        return;
    }

    const auto isBar = mark.kind == MarkKind::bar;
    const auto frame = mark.kind == MarkKind::downbeat ? 1 : 0;
    const auto& head = sprites.get (isBar ? Sprite::barMark : Sprite::phraseMark, frame);
    g.setOpacity (1.0f);
    g.drawImageAt (head, mark.x - (head.getWidth() - track.length (1)) / 2, top);
    g.drawImageAt (sprites.get (isBar ? Sprite::barLine : Sprite::phraseLine, frame), mark.x,
                   top + head.getHeight());

    g.setColour (frame == 1 ? palette::anchorNumber : palette::barNumber);
    g.setFont (SMLookAndFeel::font (static_cast<float> (SMLookAndFeel::labelSize * track.scale)));
    g.drawText (juce::String (mark.number), mark.x + y (numberOffset), y (numberTop), y (40),
                y (numberHeight), juce::Justification::centredLeft, false);
}

int MarkPainter::clothX (int pole, int width, Cloth side) const
{
    return side == Cloth::beforePole ? pole + track.length (1) - width : pole;
}

/** A flag above the peaks, its line below it. */
void MarkPainter::hang (juce::Graphics& g, Sprite flag, Sprite line, int frame, int x, Cloth side) const
{
    const auto& cloth = sprites.get (flag, frame);
    g.drawImageAt (sprites.get (line, frame), x - track.length (1), y (cueFlagTop) + cloth.getHeight());
    g.drawImageAt (cloth, clothX (x, cloth.getWidth(), side), y (cueFlagTop));
}

/** A flag below the peaks, its line above it. */
void MarkPainter::stand (juce::Graphics& g, Sprite flag, Sprite line, int frame, int x, Cloth side) const
{
    const auto& cloth = sprites.get (flag, frame);
    g.drawImageAt (sprites.get (line, frame), x - track.length (1), y (lowFlagTop - flagLine));
    g.drawImageAt (cloth, clothX (x, cloth.getWidth(), side), y (lowFlagTop));
}

void MarkPainter::paintFlag (juce::Graphics& g, const Mark& mark) const
{
    g.setOpacity (1.0f);
    const auto running = mark.running ? 1 : 0;
    switch (mark.kind)
    {
    // A cue's cloth hangs before its pole: what begins at the mark is free to be seen.
    case MarkKind::hotCue:
        return hang (g, Sprite::hotCue, Sprite::hotCueLine, mark.number - 1, mark.x, Cloth::beforePole);
    case MarkKind::cuePoint:
        return stand (g, Sprite::cuePoint, Sprite::cuePointLine, 0, mark.x, Cloth::behindPole);
    case MarkKind::startPoint:
        return hang (g, Sprite::loopIn, Sprite::loopLine, 0, mark.x, Cloth::behindPole);
    case MarkKind::loopIn:
        return stand (g, Sprite::loopIn, Sprite::loopLine, running, mark.x, Cloth::behindPole);
    case MarkKind::loopOut:
        return stand (g, Sprite::loopOut, Sprite::loopLine, running, mark.x, Cloth::beforePole);
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
