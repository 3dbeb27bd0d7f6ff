#include "Sheet.h"

#include "instruments/envelope/Envelope.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace
{
constexpr int columns = 9, cellWidth = 196, cellHeight = 96, heading = 34, margin = 14;
constexpr double window = 4.0, reach = 8.0;

const juce::Colour ground (0xff16181b), cellColour (0xff202429), gridColour (0xff343a41),
    textColour (0xffd5dade), ownColour (0xff5c656f), timeColour (0xff2db5ed), volumeColour (0xffe8a33d);

Envelope envelopeOf (const PatternCurve& curve)
{
    std::vector<EnvelopePoint> points;
    for (const auto& p : curve)
    {
        EnvelopePoint point;
        point.delta = p.delta;
        point.value = static_cast<float> (p.value);
        point.tension = static_cast<float> (p.tension);
        point.type = static_cast<uint8_t> (p.type);
        points.push_back (point);
    }
    Envelope made;
    made.setPoints (points);
    return made;
}

bool isSilentOrNeutral (const PatternCurve& curve)
{
    return std::all_of (curve.begin(), curve.end(), [] (const auto& p) { return p.value == 1.0; });
}

class Cell
{
public:
    Cell (juce::Graphics& graphics, juce::Rectangle<int> area) : g (graphics), frame (area)
    {
        plot = area.reduced (6).withTrimmedTop (16).toFloat();
    }

    void draw (const Pattern& pattern)
    {
        g.setColour (cellColour);
        g.fillRoundedRectangle (frame.toFloat(), 3.0f);
        g.setColour (textColour);
        g.drawText (juce::String (pattern.id) + "  " + pattern.name, frame.reduced (6, 3).withHeight (16),
                    juce::Justification::centredLeft);
        g.setColour (gridColour);
        for (int beat = 0; beat <= 4; ++beat)
            g.drawVerticalLine (juce::roundToInt (x (beat)), plot.getY(), plot.getBottom());

        if (!isSilentOrNeutral (pattern.volume))
            drawCurve (pattern.volume, volumeColour, 1.6f,
                       [this] (double, double level)
                       { return plot.getBottom() - static_cast<float> (level) * plot.getHeight(); });
        if (isSilentOrNeutral (pattern.time))
            return;
        const auto furthest = lowestPlace (pattern.time);
        const auto y = [this, furthest] (double place)
        {
            const auto part = (place - furthest) / (window - furthest);
            return plot.getBottom() - static_cast<float> (part) * plot.getHeight();
        };
        g.setColour (ownColour);
        g.drawLine (x (0.0), y (0.0), x (window), y (window), 0.8f);
        drawCurve (pattern.time, timeColour, 1.4f,
                   [&y] (double time, double value) { return y (time - (1.0 - value) * reach); });
    }

private:
    float x (double time) const { return plot.getX() + static_cast<float> (time / window) * plot.getWidth(); }

    static double lowestPlace (const PatternCurve& curve)
    {
        const auto envelope = envelopeOf (curve);
        auto lowest = 0.0;
        for (double t = 0.0; t < window; t += 1.0 / 128.0)
            lowest = std::min (lowest, t - (1.0 - envelope.evaluate (t)) * reach);
        return lowest;
    }

    template <typename Height>
    void drawCurve (const PatternCurve& curve, juce::Colour colour, float thickness, Height&& height)
    {
        const auto envelope = envelopeOf (curve);
        constexpr int steps = 4096;
        juce::Path path;
        auto before = 0.0f;
        for (int i = 0; i < steps; ++i)
        {
            const auto time = window * (i + 0.5) / steps;
            const auto y = height (time, envelope.evaluate (time));
            if (i == 0 || std::abs (y - before) > 0.2f * plot.getHeight())
                path.startNewSubPath (x (time), y);
            else
                path.lineTo (x (time), y);
            before = y;
        }
        g.setColour (colour);
        g.strokePath (path, juce::PathStrokeType (thickness));
    }

    juce::Graphics& g;
    juce::Rectangle<int> frame;
    juce::Rectangle<float> plot;
};

int rowsOf (const PatternGroup& group)
{
    return (static_cast<int> (group.patterns.size()) + columns - 1) / columns;
}
}

bool drawSheet (const std::vector<PatternGroup>& groups, const juce::File& png)
{
    auto height = 2 * margin;
    for (const auto& group : groups)
        height += heading + rowsOf (group) * cellHeight;
    juce::Image image (juce::Image::RGB, 2 * margin + columns * cellWidth, height, true,
                       juce::SoftwareImageType());
    juce::Graphics g (image);
    g.fillAll (ground);
    auto top = margin;
    for (const auto& group : groups)
    {
        g.setColour (textColour);
        g.setFont (juce::Font (17.0f, juce::Font::bold));
        g.drawText (group.name, margin, top, 600, heading, juce::Justification::centredLeft);
        top += heading;
        g.setFont (juce::Font (12.5f));
        for (size_t i = 0; i < group.patterns.size(); ++i)
        {
            const auto column = static_cast<int> (i) % columns, row = static_cast<int> (i) / columns;
            Cell (g, juce::Rectangle<int> (margin + column * cellWidth, top + row * cellHeight, cellWidth,
                                           cellHeight)
                         .reduced (3))
                .draw (group.patterns[i]);
        }
        top += rowsOf (group) * cellHeight;
    }
    juce::MemoryOutputStream bytes;
    return juce::PNGImageFormat().writeImageToStream (image, bytes)
           && png.replaceWithData (bytes.getData(), bytes.getDataSize());
}
