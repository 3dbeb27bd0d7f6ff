// Lists, trees, tables and tabs.

#include "skin/Palette.h"
#include "ui/look/ButtonSkin.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int margin = 4, arrowArea = 12, iconArea = 20, tabMargin = 8;
constexpr int wideRow = 400, sizeColumn = 80, timeColumn = 140; ///< of a list of files
constexpr int skinBar = 12;
}

void SMLookAndFeel::drawScrollbar (juce::Graphics& g, juce::ScrollBar& bar, int x, int y, int width,
                                   int height, bool vertical, int thumbStart, int thumbSize, bool over,
                                   bool down)
{
    const juce::Rectangle<int> track (x, y, width, height);
    g.setColour (bar.findColour (juce::ScrollBar::trackColourId));
    g.fillRect (track);
    if (thumbSize <= 0)
        return;

    const auto thumb = vertical ? track.withY (thumbStart).withHeight (thumbSize)
                                : track.withX (thumbStart).withWidth (thumbSize);
    const auto frame = down ? 2 : (over ? 1 : 0);
    const auto across = vertical ? width : height;
    if (across < skinBar)
    {
        g.setColour (palette::line.brighter (0.2f * static_cast<float> (frame)));
        g.fillRoundedRectangle (thumb.toFloat().reduced (1.0f), 2.0f);
    }
    else if (vertical)
        SkinPicture ("scroll_upright").drawTall (g, thumb, frame);
    else
        SkinPicture ("scroll_level").drawWide (g, thumb, frame);
}

void SMLookAndFeel::drawTreeviewPlusMinusBox (juce::Graphics& g, const juce::Rectangle<float>& area,
                                              juce::Colour, bool isOpen, bool over)
{
    drawArrow (g, area.getSmallestIntegerContainer(), over ? palette::value : palette::label,
               isOpen ? 0.0f : -0.5f * juce::MathConstants<float>::pi);
}

void SMLookAndFeel::drawTableHeaderBackground (juce::Graphics& g, juce::TableHeaderComponent& header)
{
    fillRaised (g, header.getLocalBounds(),
                header.findColour (juce::TableHeaderComponent::backgroundColourId));
    g.setColour (header.findColour (juce::TableHeaderComponent::outlineColourId));
    for (int i = header.getNumColumns (true); --i >= 0;)
        g.fillRect (header.getColumnPosition (i).removeFromRight (1).reduced (0, margin));
}

void SMLookAndFeel::drawTableHeaderColumn (juce::Graphics& g, juce::TableHeaderComponent& header,
                                           const juce::String& name, int, int width, int height, bool over,
                                           bool down, int flags)
{
    using Header = juce::TableHeaderComponent;
    auto area = juce::Rectangle<int> (width, height).reduced (0, 1);
    if (over || down)
    {
        g.setColour (header.findColour (Header::highlightColourId));
        g.fillRect (area);
    }
    area.reduce (margin, 0);
    const auto sorted = (flags & (Header::sortedForwards | Header::sortedBackwards)) != 0;
    if (sorted)
        drawArrow (g, area.removeFromRight (arrowArea), palette::accent,
                   (flags & Header::sortedForwards) != 0 ? juce::MathConstants<float>::pi : 0.0f);
    g.setColour (sorted || over ? palette::value : header.findColour (Header::textColourId));
    g.setFont (labelFont());
    g.drawFittedText (name, area, juce::Justification::centredLeft, 1, 0.8f);
}

void SMLookAndFeel::drawTabButton (juce::TabBarButton& button, juce::Graphics& g, bool over, bool down)
{
    const auto front = button.isFrontTab();
    SkinPicture ("tab").drawWide (g, button.getLocalBounds(),
                                  buttonFrame (front, over, down, button.isEnabled()));
    g.setFont (labelFont());
    g.setColour (front || over ? palette::value : palette::label);
    g.drawFittedText (juce::translate (button.getButtonText()), button.getLocalBounds(),
                      juce::Justification::centred, 1, 0.8f);
}

void SMLookAndFeel::drawTabbedButtonBarBackground (juce::TabbedButtonBar&, juce::Graphics& g)
{
    g.fillAll (palette::ground);
}

void SMLookAndFeel::drawTabAreaBehindFrontButton (juce::TabbedButtonBar&, juce::Graphics&, int, int) {}

int SMLookAndFeel::getTabButtonBestWidth (juce::TabBarButton& button, int)
{
    return labelFont().getStringWidth (juce::translate (button.getButtonText())) + 2 * tabMargin;
}

void SMLookAndFeel::drawFileBrowserRow (juce::Graphics& g, int width, int height, const juce::File&,
                                        const juce::String& name, juce::Image* icon, const juce::String& size,
                                        const juce::String& time, bool isFolder, bool selected, int row,
                                        juce::DirectoryContentsDisplayComponent&)
{
    juce::Rectangle<int> area (width, height);
    fillRow (g, area, row, selected);
    area.reduce (margin, 0);

    const auto sign = area.removeFromLeft (iconArea);
    if (icon != nullptr && icon->isValid())
        g.drawImageWithin (*icon, sign.getX(), sign.getY() + 2, sign.getWidth() - margin,
                           sign.getHeight() - 4,
                           juce::RectanglePlacement::centred | juce::RectanglePlacement::onlyReduceInSize);
    else if (isFolder)
        drawArrow (g, sign.withTrimmedRight (margin), palette::label, -0.5f * juce::MathConstants<float>::pi);

    g.setFont (font (valueSize));
    g.setColour (palette::label);
    if (width > wideRow && !isFolder)
    {
        g.drawText (time, area.removeFromRight (timeColumn), juce::Justification::centredRight);
        g.drawText (size, area.removeFromRight (sizeColumn), juce::Justification::centredRight);
    }
    g.setColour (selected ? palette::value : palette::tableText);
    g.drawFittedText (name, area, juce::Justification::centredLeft, 1, 0.9f);
}
