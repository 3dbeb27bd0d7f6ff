#include "Light.h"

#include "skin/Palette.h"

void Pen::fill (juce::Colour colour, juce::Rectangle<float> area) const
{
    g.setColour (colour);
    g.fillRect (area);
}

void Pen::fill (juce::Colour colour, const juce::Path& path) const
{
    g.setColour (colour);
    g.fillPath (path);
}

Surface lying (juce::Colour body)
{
    return { body, body.interpolatedWith (juce::Colours::white, 0.13f),
             body.interpolatedWith (juce::Colours::black, 0.45f) };
}

Surface sunk (juce::Colour body)
{
    return { body, body.interpolatedWith (juce::Colours::black, 0.45f),
             body.interpolatedWith (juce::Colours::white, 0.08f) };
}

void drawSurface (const Pen& pen, juce::Rectangle<float> area, float radius, const Surface& surface,
                  Corners corners)
{
    juce::Path shape;
    shape.addRoundedRectangle (area.getX(), area.getY(), area.getWidth(), area.getHeight(), radius, radius,
                               corners.left, corners.right, corners.left && !corners.onlyTop,
                               corners.right && !corners.onlyTop);
    const auto middle = juce::Rectangle<float>::leftTopRightBottom (
        area.getX() + (corners.left ? radius : 0), area.getY(),
        area.getRight() - (corners.right ? radius : 0), area.getBottom());
    const auto top = area.withHeight (pen.hair()), bottom = area.withTop (area.getBottom() - pen.hair());

    // A path's straight sides come out a trace short of opaque; rectangles are exact.
    auto fill = [&] (juce::Colour colour, juce::Rectangle<float> part)
    {
        {
            juce::Graphics::ScopedSaveState state (pen.g);
            juce::Path clip;
            clip.addRectangle (part);
            pen.g.reduceClipRegion (clip);
            pen.fill (colour, shape);
        }
        pen.fill (colour, middle.getIntersection (part));
        pen.fill (colour, area.reduced (0, radius).getIntersection (part));
    };
    fill (surface.body, area);
    fill (surface.top, top);
    fill (surface.bottom, bottom);
}
