#include "ui/timecode/TimecodeCalibrationScope.h"

#include "skin/Palette.h"

TimecodeCalibrationScope::TimecodeCalibrationScope()
{
    setComponentID ("_calibrationScope");
    setSize (ScopeImage::side, ScopeImage::side);
    setOpaque (true);
}

void TimecodeCalibrationScope::show (const ScopeImage& next)
{
    if (next == shown)
        return;
    shown = next;
    repaint();
}

void TimecodeCalibrationScope::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    constexpr auto side = ScopeImage::side, centre = ScopeImage::centre;
    g.setColour (palette::well);
    g.fillRect (centre, 0, 1, side);
    g.fillRect (0, centre, side, 1);

    juce::Image picture (juce::Image::ARGB, side, side, true);
    {
        const juce::Image::BitmapData pixels (picture, juce::Image::BitmapData::writeOnly);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                if (const auto level = shown.at (x, y); level >= ScopeImage::leastSeen)
                    pixels.setPixelColour (x, y, juce::Colour (level, level, level));
    }
    g.drawImageAt (picture, 0, 0);
    g.setColour (palette::accent);
    g.fillRect (centre - 2, centre, 5, 1);
    g.fillRect (centre, centre - 2, 1, 5);
}
