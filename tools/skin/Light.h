#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cmath>

/** The place that a picture is being drawn on: logical coordinates, and the scale that turns them into pixels. */
struct Pen
{
    juce::Graphics& g;
    float scale;
    float width, height; ///< of the frame, in logical pixels

    juce::Rectangle<float> all() const { return { width, height }; }

    /** The border between pixels nearest to a coordinate. */
    float snap (float at) const { return std::round (at * scale) / scale; }

    juce::Rectangle<float> snap (juce::Rectangle<float> area) const
    {
        return juce::Rectangle<float>::leftTopRightBottom (snap (area.getX()), snap (area.getY()),
                                                           snap (area.getRight()), snap (area.getBottom()));
    }

    /** The width of a fine line: a whole number of pixels, never more than one logical pixel. */
    float hair() const { return std::floor (scale) / scale; }

    void fill (juce::Colour, juce::Rectangle<float>) const;
    void fill (juce::Colour, const juce::Path&) const;
};

/** The one light, from above: what lies on a panel is lighter along its top edge and darker along its bottom one. */
struct Surface
{
    juce::Colour body, top, bottom;
};

/** A flat body that lies up in the light. */
Surface lying (juce::Colour body);

/** A flat body let into the panel: the light reaches its lower edge. */
Surface sunk (juce::Colour body);

/** The corners of a surface that are round; at the others it runs on into its neighbour. */
struct Corners
{
    bool left = true, right = true, onlyTop = false;
};

/** Fills a rounded area with a surface. */
void drawSurface (const Pen&, juce::Rectangle<float>, float radius, const Surface&, Corners = {});
