#include "ui/look/ColumnFileBrowserLookAndFeel.h"

#include "skin/Palette.h"

namespace
{
constexpr int margin = 8, arrowArea = 16;
}

ColumnFileBrowserLookAndFeel::ColumnFileBrowserLookAndFeel()
{
    setColour (juce::ListBox::backgroundColourId, palette::ground);
    setColour (juce::ScrollBar::trackColourId, palette::ground);
}

void ColumnFileBrowserLookAndFeel::drawFileBrowserRow (juce::Graphics& g, int width, int height,
                                                       const juce::File&, const juce::String& name,
                                                       juce::Image*, const juce::String&, const juce::String&,
                                                       bool isFolder, bool selected, int row,
                                                       juce::DirectoryContentsDisplayComponent&)
{
    juce::Rectangle<int> area (width, height);
    fillRow (g, area, row, selected);
    area.removeFromLeft (margin);
    const auto arrow = area.removeFromRight (arrowArea);
    if (isFolder)
        drawArrow (g, arrow, selected ? palette::value : palette::label,
                   -0.5f * juce::MathConstants<float>::pi);
    g.setFont (font (valueSize));
    g.setColour (selected ? palette::value : palette::tableText);
    g.drawFittedText (name, area, juce::Justification::centredLeft, 1, 0.9f);
}
