#include "Materials.h"

/** Four arcs in the decks' hues around one platter, its pointer up, and the name. */
void paintLogo (const Pen& pen, const skin::Row&, int)
{
    const float size = 24, ring = 4;
    const juce::Point<float> centre { 2 + size / 2, pen.height / 2 };
    const float quarter = juce::MathConstants<float>::halfPi, gap = 0.13f;
    for (int deck = 0; deck < 4; ++deck)
    {
        // A and B above, C and D below, as the strips stand.
        static constexpr float starts[] { 3, 0, 2, 1 };
        juce::Path arc;
        const float from = starts[deck] * quarter;
        arc.addCentredArc (centre.x, centre.y, (size - ring) / 2, (size - ring) / 2, 0, from + gap,
                           from + quarter - gap, true);
        pen.g.setColour (palette::decks[static_cast<size_t> (deck)]);
        pen.g.strokePath (arc, juce::PathStrokeType (ring));
    }
    juce::Path hub;
    hub.addCentredArc (centre.x, centre.y, 3, 3, 0, 0, juce::MathConstants<float>::twoPi, true);
    hub.closeSubPath();
    pen.fill (palette::value, hub);

    auto name = wordPath ("PLATTERDEX", 11, 0.06f);
    const auto bounds = name.getBounds();
    name.applyTransform (
        juce::AffineTransform::translation (34 - bounds.getX(), pen.snap (pen.height / 2 + 5.5f)));
    pen.fill (palette::value, name);
}
