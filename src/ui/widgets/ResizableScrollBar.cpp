#include "ui/widgets/ResizableScrollBar.h"

#include "skin/Palette.h"

ResizableScrollBar::ResizableScrollBar (bool vertical) : ScrollBar (vertical)
{
    setAutoHide (false); // a view that is shown whole is zoomed into here
    setWantsKeyboardFocus (false);
}

juce::Rectangle<int> ResizableScrollBar::thumbBounds() const
{
    const auto limits = getRangeLimit(), range = getCurrentRange();
    const auto track = trackLength();
    auto size = track, start = 0;
    if (limits.getLength() > range.getLength())
    {
        size = juce::jlimit (juce::jmin (smallestThumb, track), track,
                             juce::roundToInt (track * range.getLength() / limits.getLength()));
        start = juce::roundToInt ((track - size) * (range.getStart() - limits.getStart())
                                  / (limits.getLength() - range.getLength()));
    }
    return isVertical() ? juce::Rectangle<int> (0, start, getWidth(), size)
                        : juce::Rectangle<int> (start, 0, size, getHeight());
}

ResizableScrollBar::Part ResizableScrollBar::partAt (juce::Point<int> place) const
{
    const auto thumb = thumbBounds();
    if (!thumb.contains (place))
        return Part::none;
    if (along (place) < along (thumb.getPosition()) + endLength)
        return Part::start;
    return along (place) >= along (thumb.getBottomRight()) - endLength ? Part::end : Part::middle;
}

void ResizableScrollBar::paint (juce::Graphics& g)
{
    const auto thumb = thumbBounds();
    const auto first = along (thumb.getPosition());
    const auto length = along (thumb.getBottomRight()) - first;
    getLookAndFeel().drawScrollbar (g, *this, 0, 0, getWidth(), getHeight(), isVertical(), first, length,
                                    isMouseOver(), isMouseButtonDown());

    const auto grip = [&] (int at, bool lit)
    {
        g.setColour (lit ? palette::accent : palette::label);
        for (const auto line : { at - 1, at + 1 })
            if (isVertical())
                g.fillRect (thumb.reduced (3, 0).withY (line).withHeight (1));
            else
                g.fillRect (thumb.reduced (0, 3).withX (line).withWidth (1));
    };
    const auto hand =
        held != Part::none ? held : (isMouseOver() ? partAt (getMouseXYRelative()) : Part::none);
    grip (first + endLength / 2, hand == Part::start);
    grip (first + length - endLength / 2 - 1, hand == Part::end);
}

void ResizableScrollBar::mouseMove (const juce::MouseEvent& event)
{
    const auto part = partAt (event.getPosition());
    const auto isEnd = part == Part::start || part == Part::end;
    setMouseCursor (!isEnd ? juce::MouseCursor::NormalCursor
                           : (isVertical() ? juce::MouseCursor::UpDownResizeCursor
                                           : juce::MouseCursor::LeftRightResizeCursor));
    repaint();
}

void ResizableScrollBar::mouseDown (const juce::MouseEvent& event)
{
    held = partAt (event.getPosition());
    rangeAtDown = getCurrentRange();
    if (held == Part::middle || held == Part::none)
        ScrollBar::mouseDown (event);
    repaint();
}

void ResizableScrollBar::mouseDrag (const juce::MouseEvent& event)
{
    if (held == Part::middle || held == Part::none)
        return ScrollBar::mouseDrag (event);

    const auto limits = getRangeLimit();
    const auto moved = along (event.getPosition()) - along (event.getMouseDownPosition());
    const auto distance = moved * limits.getLength() / juce::jmax (1, trackLength());
    auto range = rangeAtDown;
    if (held == Part::start)
        range.setStart (juce::jlimit (limits.getStart(),
                                      juce::jmax (limits.getStart(), range.getEnd() - smallestRange),
                                      range.getStart() + distance));
    else
        range.setEnd (juce::jlimit (juce::jmin (limits.getEnd(), range.getStart() + smallestRange),
                                    limits.getEnd(), range.getEnd() + distance));
    setCurrentRange (range, juce::sendNotificationSync);
    repaint();
}

void ResizableScrollBar::mouseUp (const juce::MouseEvent& event)
{
    held = Part::none;
    ScrollBar::mouseUp (event);
    repaint();
}

void ResizableScrollBar::mouseDoubleClick (const juce::MouseEvent&)
{
    setCurrentRange (getRangeLimit(), juce::sendNotificationSync);
}
