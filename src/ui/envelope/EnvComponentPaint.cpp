// The picture: grid, curves, handles, the time that sounds.

#include "skin/Palette.h"
#include "skin/Skin.h"
#include "ui/envelope/EnvComponent.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr double gridTime = 0.25, gridLevel = 0.125;
constexpr float pointRadius = 4.0f, tensionRadius = 3.0f;
constexpr float otherAlpha = 0.55f;

/** A hairline on whole pixels, so that it is equally sharp at every scale. */
void verticalLine (juce::Graphics& g, float x, juce::Rectangle<float> plot)
{
    g.fillRect (std::round (x), plot.getY(), 1.0f, plot.getHeight());
}

void horizontalLine (juce::Graphics& g, float y, juce::Rectangle<float> plot)
{
    g.fillRect (plot.getX(), std::round (y), plot.getWidth(), 1.0f);
}

bool isWhole (double number, double of)
{
    return std::abs (number / of - std::round (number / of)) < 1e-6;
}
}

void EnvComponent::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    const auto place = geometry();
    paintGrid (g, place);
    for (size_t i = 0; i < lanes.size(); ++i)
        if (static_cast<int> (i) != selected && lanes[i].isVisible)
            paintCurve (g, place, lanes[i], false);
    if (lanes.empty())
        return;
    paintCurve (g, place, lanes[static_cast<size_t> (selected)], true);
    paintHandles (g, place);
    if (shownTime)
    {
        g.setColour (playColour);
        verticalLine (g, place.x (*shownTime), getLocalBounds().toFloat());
        for (const auto& each : lanes)
            if (each.isVisible || &each == &lanes[static_cast<size_t> (selected)])
            {
                const juce::Point<float> dot (place.x (*shownTime),
                                              place.y (each.shown.evaluate (*shownTime)));
                g.setColour (each.lane.colour);
                g.fillEllipse (juce::Rectangle<float> (5.0f, 5.0f).withCentre (dot));
            }
    }
    if (hasKeyboardFocus (false))
    {
        g.setColour (palette::accent.withAlpha (0.6f));
        g.drawRect (getLocalBounds());
    }
}

void EnvComponent::paintGrid (juce::Graphics& g, const EnvGeometry& place) const
{
    const auto plot = place.plot();
    for (auto time = std::ceil (shownView.time.getStart() / gridTime) * gridTime;
         time <= shownView.time.getEnd() + 1e-9; time += gridTime)
    {
        g.setColour (isWhole (time, 1.0) ? palette::line : palette::well);
        verticalLine (g, place.x (time), plot);
        if (isWhole (time, 1.0))
        {
            g.setColour (palette::label);
            g.setFont (SMLookAndFeel::labelFont());
            const auto text =
                timeWords != nullptr ? timeWords (time) : juce::String (juce::roundToInt (time));
            const auto right = time >= shownView.time.getEnd() - 1e-9;
            g.drawText (text,
                        juce::Rectangle<float> (place.x (time) + (right ? -44.0f : 4.0f),
                                                plot.getBottom() - 14.0f, 40.0f, 14.0f),
                        right ? juce::Justification::centredRight : juce::Justification::centredLeft, false);
        }
    }
    for (auto level = std::ceil (shownView.level.getStart() / gridLevel) * gridLevel;
         level <= shownView.level.getEnd() + 1e-9; level += gridLevel)
    {
        g.setColour (isWhole (level, 0.5) ? palette::line : palette::well);
        horizontalLine (g, place.y (level), plot);
    }
}

void EnvComponent::paintCurve (juce::Graphics& g, const EnvGeometry& place, const Lane& each,
                               bool isSelected) const
{
    const juce::Graphics::ScopedSaveState state (g);
    const auto scale = skin::scaleOf (g);
    g.reduceClipRegion (getLocalBounds());
    const auto isFew = lanes.size() < 3;
    g.setColour (each.lane.colour.withAlpha (isSelected ? 1.0f : otherAlpha));
    const auto line = place.path (each.shown, 1.0f / scale);
    if (isSelected && isFew)
    {
        auto filled = line;
        filled.lineTo (place.x (each.shown.absoluteTime (Envelope::maxPoints)), place.plot().getBottom());
        filled.lineTo (place.x (each.shown.absoluteTime (0)), place.plot().getBottom());
        filled.closeSubPath();
        const juce::Graphics::ScopedSaveState faint (g);
        g.setColour (each.lane.colour.withAlpha (0.08f));
        g.fillPath (filled);
    }
    g.strokePath (line, juce::PathStrokeType (isSelected ? 2.0f : 1.25f, juce::PathStrokeType::mitered));
}

void EnvComponent::paintHandles (juce::Graphics& g, const EnvGeometry& place) const
{
    const auto& curve = envelope();
    const auto colour = lanes[static_cast<size_t> (selected)].lane.colour;
    const auto touched = [this] (EnvGeometry::Hit::Kind kind, Hold hold, int i) {
        return (under == EnvGeometry::Hit { kind, i }) || (drag.hold == hold && drag.index == i);
    };

    for (int i = 1; i < curve.pointCount(); ++i)
    {
        const auto circle = juce::Rectangle<float> (2.0f * tensionRadius, 2.0f * tensionRadius)
                                .withCentre (place.tensionPlace (curve, i));
        const auto isTouched = touched (EnvGeometry::Hit::tension, Hold::tension, i);
        g.setColour (palette::ground);
        g.fillEllipse (circle);
        g.setColour (isTouched ? palette::accent : colour);
        g.drawEllipse (circle.reduced (0.5f), isTouched ? 2.0f : 1.0f);
    }
    for (int i = 0; i < curve.pointCount(); ++i)
    {
        const auto square = juce::Rectangle<float> (2.0f * pointRadius, 2.0f * pointRadius)
                                .withCentre (place.pointPlace (curve, i));
        const auto isTouched = touched (EnvGeometry::Hit::point, Hold::point, i);
        g.setColour (isTouched ? palette::accent : colour);
        g.fillRect (square);
        g.setColour (palette::ground);
        g.drawRect (square, 1.0f);
        if (i == chosenPoint && hasKeyboardFocus (false))
        {
            g.setColour (palette::accent);
            g.drawRect (square.expanded (2.0f), 1.0f);
        }
    }
}
