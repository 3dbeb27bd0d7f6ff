#include "Materials.h"

namespace
{
constexpr float radius = 3;

void drawBody (const Pen& pen, juce::Rectangle<float> area, const ButtonLook& look)
{
    drawSurface (pen, area, radius, look.surface);
    auto ring = [&] (juce::Colour colour, float inset)
    {
        const auto outside = area.reduced (inset * pen.hair());
        juce::Path path;
        path.addRoundedRectangle (outside, radius - inset * pen.hair());
        path.addRoundedRectangle (outside.reduced (pen.hair()), radius - (inset + 1) * pen.hair());
        path.setUsingNonZeroWinding (false);
        pen.fill (colour, path);
    };
    if (!look.ring.isTransparent())
        ring (look.ring, 0);
    if (!look.innerRing.isTransparent())
        ring (look.innerRing, 1);
}

/** The square that a sign fills on a button. */
juce::Rectangle<float> signSquare (const Pen& pen)
{
    const float size = pen.height < 22 ? 12.0f : pen.height < 28 ? 16.0f : 20.0f;
    return juce::Rectangle<float> (size, size).withCentre (pen.all().getCentre());
}
}

ButtonLook lookOf (skin::Hue hue, int frame)
{
    const auto lit = skin::fillOf (hue);
    const auto sign = palette::textOn (lit);
    // A light hue may become lighter under the pointer; under a white sign it may not.
    const float lift = sign == palette::ink ? 0.25f : 0.06f;
    switch (frame)
    {
    case skin::overOff:
        return { lying (palette::line), palette::value, palette::label, {} };
    case skin::downOff:
        return { sunk (palette::label.withMultipliedBrightness (0.65f)), juce::Colours::white, {}, {} };
    case skin::normalOn:
        return { lying (lit), sign, {}, {} };
    case skin::overOn:
        return { lying (lit.interpolatedWith (juce::Colours::white, lift)), sign, juce::Colours::white,
                 palette::ink };
    case skin::downOn:
        return { sunk (lit.interpolatedWith (juce::Colours::black, 0.25f)), sign, {}, {} };
    default:
        return { lying (palette::well), palette::value, {}, {} };
    }
}

void paintButton (const Pen& pen, const skin::Row& row, int frame)
{
    drawBody (pen, pen.all(), lookOf (row.hue, frame));
}

void paintSignButton (const Pen& pen, const skin::Row& row, int frame)
{
    const auto look = lookOf (row.hue, frame);
    drawBody (pen, pen.all(), look);
    const bool wide = pen.width > pen.height + 8;
    if (row.sign == skin::Sign::cue || (row.sign == skin::Sign::sync && wide))
    {
        auto word =
            wordPath (row.sign == skin::Sign::cue ? "CUE" : "SYNC", pen.height < 28 ? 8.0f : 9.0f, 0.03f);
        const auto place = word.getBounds();
        word.applyTransform (juce::AffineTransform::translation (
            pen.snap (pen.width / 2 - place.getCentreX()), pen.snap (pen.height / 2 - place.getCentreY())));
        pen.fill (look.sign, word);
        return;
    }
    pen.fill (look.sign, signPath (row.sign, signSquare (pen), frame >= skin::normalOn));
}

void paintTickBox (const Pen& pen, const skin::Row& row, int frame)
{
    auto look = lookOf (row.hue, frame);
    const auto box = pen.snap (pen.all().reduced (2));
    drawBody (pen, box, look);
    if (frame >= skin::normalOn)
    {
        juce::Path tick;
        tick.startNewSubPath (6, 10.5f);
        tick.lineTo (9, 13.5f);
        tick.lineTo (14.5f, 6.5f);
        pen.g.setColour (look.sign);
        pen.g.strokePath (tick, juce::PathStrokeType (2.4f));
    }
}

void paintWindowButton (const Pen& pen, const skin::Row& row, int frame)
{
    if (frame != skin::normalOff)
    {
        const bool closes = row.sign == skin::Sign::close;
        const auto body = closes ? palette::danger : palette::line.brighter (0.2f);
        drawSurface (
            pen, pen.all().reduced (2), radius,
            lying (frame == skin::overOff ? body : body.interpolatedWith (juce::Colours::black, 0.3f)));
    }
    pen.fill (frame == skin::normalOff ? palette::label : juce::Colours::white,
              signPath (row.sign, juce::Rectangle<float> (12, 12).withCentre (pen.all().getCentre()), false));
}

void paintTab (const Pen& pen, const skin::Row& row, int frame)
{
    const bool on = frame >= skin::normalOn;
    const auto body = on                       ? palette::panel
                      : frame == skin::overOff ? palette::well
                      : frame == skin::downOff ? palette::line
                                               : palette::ground;
    drawSurface (pen, pen.all(), radius, { body, body, body }, { true, true, true });
    if (!on)
        return;
    const auto hue = skin::colourOf (row.hue);
    const auto bar = frame == skin::downOn ? hue.interpolatedWith (juce::Colours::black, 0.35f) : hue;
    pen.fill (bar, { 0, 0, pen.width, pen.snap (frame == skin::overOn ? 5 : 3) });
}
