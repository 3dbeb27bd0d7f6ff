#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A scroll bar whose thumb can be dragged at its ends, which zooms the view. A double click shows everything. */
class ResizableScrollBar : public juce::ScrollBar
{
public:
    explicit ResizableScrollBar (bool isVertical);

    /** The smallest range that dragging the ends leaves, in the units of the range. */
    void setSmallestRange (double length) { smallestRange = length; }

    enum class Part
    {
        none,
        start,
        middle,
        end
    };

    /** The part of the thumb at a place. */
    Part partAt (juce::Point<int>) const;

    juce::Rectangle<int> thumbBounds() const;

    void paint (juce::Graphics&) override;
    void mouseMove (const juce::MouseEvent&) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void mouseDoubleClick (const juce::MouseEvent&) override;

private:
    static constexpr int endLength = 8; ///< pixels that belong to each end of the thumb
    static constexpr int smallestThumb = 3 * endLength;

    int along (juce::Point<int> p) const noexcept { return isVertical() ? p.y : p.x; }
    int trackLength() const noexcept { return isVertical() ? getHeight() : getWidth(); }

    double smallestRange = 0.0;
    Part held = Part::none;
    juce::Range<double> rangeAtDown;
};
