#include "ui/drag/DragImage.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int height = 24, margin = 8, mostWidth = 240, besidePointer = 12;
}

juce::ScaledImage DragImage::make (const juce::Component& source, const juce::String& text, int& x, int& y)
{
    const auto font = SMLookAndFeel::font (SMLookAndFeel::valueSize);
    const auto width = std::min (mostWidth, font.getStringWidth (text) + 2 * margin);
    const auto scale = 2.0f * juce::Component::getApproximateScaleFactorForComponent (&source);
    const juce::Rectangle<int> area (width, height);
    const auto pixels = (area.toFloat() * scale).getSmallestIntegerContainer();
    juce::Image image (juce::Image::ARGB, pixels.getWidth(), pixels.getHeight(), true);
    juce::Graphics g (image);
    g.addTransform (juce::AffineTransform::scale (scale));
    g.setColour (palette::line);
    g.fillRect (area);
    g.setColour (palette::accent);
    g.drawRect (area, 1);
    g.setColour (palette::value);
    g.setFont (font);
    g.drawText (text, area.reduced (margin, 0), juce::Justification::centredLeft, true);
    const auto pointer = source.getMouseXYRelative();
    x = pointer.x + besidePointer;
    y = pointer.y + besidePointer / 2;
    return { image, 2.0 };
}
