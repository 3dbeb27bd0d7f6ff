#include "Materials.h"

namespace
{
/** The measures of a knob of one diameter. */
struct Measures
{
    float ring, gap;                ///< the arc's thickness, and what parts it from the disc
    float pointerFrom, pointerWide; ///< the pointer's inner end as a part of the disc's radius, and its width
};

Measures measuresOf (float diameter)
{
    return diameter < 32 ? Measures { 3.0f, 1.5f, 0.12f, 2.5f } : Measures { 4.0f, 2.0f, 0.25f, 3.0f };
}
}

void paintKnob (const Pen& pen, const skin::Row& row, int frame)
{
    const auto m = measuresOf (pen.width);
    const auto centre = pen.all().getCentre();
    const float outer = pen.width / 2 - 0.5f, middle = outer - m.ring / 2, disc = outer - m.ring - m.gap;
    const float position = static_cast<float> (frame) / static_cast<float> (row.frames - 1);
    const float angle = (2 * position - 1) * skin::knobSweep;
    const float from = row.material == skin::Material::centredKnob ? 0.0f : -skin::knobSweep;

    auto arc = [&] (float start, float end, juce::Colour colour, float thickness)
    {
        juce::Path line;
        line.addCentredArc (centre.x, centre.y, middle, middle, 0, start, end, true);
        pen.g.setColour (colour);
        pen.g.strokePath (
            line, juce::PathStrokeType (thickness, juce::PathStrokeType::curved, juce::PathStrokeType::butt));
    };

    arc (-skin::knobSweep, skin::knobSweep, palette::line.withMultipliedBrightness (0.82f), m.ring);
    if (std::abs (angle - from) > 0.001f)
        arc (from, angle, skin::colourOf (row.hue), m.ring);
    else if (row.material == skin::Material::centredKnob)
        arc (-0.08f, 0.08f, palette::value, m.ring); // at rest: the neutral point itself

    const auto body = juce::Rectangle<float> (2 * disc, 2 * disc).withCentre (centre);
    juce::Path shape;
    shape.addEllipse (body);
    // The edges of a disc are crescents: the same disc moved by a hair.
    const auto surface = lying (palette::line.withMultipliedBrightness (0.92f));
    pen.fill (surface.bottom, shape);
    juce::Path lit (shape);
    {
        juce::Graphics::ScopedSaveState state (pen.g);
        pen.g.reduceClipRegion (shape);
        lit.applyTransform (juce::AffineTransform::translation (0, -pen.hair()));
        pen.fill (surface.top, lit);
        pen.g.reduceClipRegion (lit);
        juce::Path inner;
        inner.addEllipse (body.translated (0, pen.hair() * 0.5f).reduced (pen.hair() * 0.5f));
        pen.fill (surface.body, inner);
    }

    juce::Path pointer;
    pointer.addRoundedRectangle (-m.pointerWide / 2, -disc, m.pointerWide, disc * (1 - m.pointerFrom),
                                 m.pointerWide / 2 - 0.5f);
    pointer.applyTransform (juce::AffineTransform::rotation (angle).translated (centre));
    pen.fill (juce::Colours::white, pointer);
}
