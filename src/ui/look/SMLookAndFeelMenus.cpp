// Combo boxes and menus.

#include "skin/Palette.h"
#include "ui/look/ButtonSkin.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int arrowArea = 18, margin = 8, markColumn = 16, rowHeight = 24, separatorHeight = 9;
constexpr int mark = 6;

bool isGhost (const juce::Component& box)
{
    return box.getName() == SMLookAndFeel::ghostName;
}

const float toTheRight = -0.5f * juce::MathConstants<float>::pi;
}

void SMLookAndFeel::drawComboBox (juce::Graphics& g, int width, int height, bool down, int, int, int, int,
                                  juce::ComboBox& box)
{
    const juce::Rectangle<int> area (width, height);
    const auto alpha = box.isEnabled() ? 1.0f : palette::disabledAlpha;
    if (!isGhost (box))
    {
        buttonPicture (height, skin::Hue::accent)
            .drawWide (g, area, buttonFrame (false, box.isMouseOver (true), down, box.isEnabled()), alpha);
        if (box.hasKeyboardFocus (true))
        {
            g.setColour (palette::accent);
            g.drawRect (area);
        }
    }
    drawArrow (g, area.withTrimmedLeft (width - arrowArea),
               (box.isMouseOver (true) ? palette::value : box.findColour (juce::ComboBox::arrowColourId))
                   .withMultipliedAlpha (box.isEnabled() ? 1.0f : palette::disabledSign));
}

juce::Font SMLookAndFeel::getComboBoxFont (juce::ComboBox& box)
{
    return buttonFont (box.getHeight());
}

void SMLookAndFeel::positionComboBoxText (juce::ComboBox& box, juce::Label& label)
{
    label.setBounds (isGhost (box) ? juce::Rectangle<int>()
                                   : box.getLocalBounds().withTrimmedRight (arrowArea));
    label.setFont (getComboBoxFont (box));
}

void SMLookAndFeel::drawComboBoxTextWhenNothingSelected (juce::Graphics& g, juce::ComboBox& box,
                                                         juce::Label& label)
{
    if (isGhost (box))
        return;
    g.setColour (box.isEnabled() ? palette::label : palette::disabledText);
    g.setFont (getComboBoxFont (box));
    g.drawFittedText (box.getTextWhenNothingSelected(),
                      getLabelBorderSize (label).subtractedFrom (label.getLocalBounds()),
                      label.getJustificationType(), 1);
}

juce::Font SMLookAndFeel::getPopupMenuFont()
{
    return font (valueSize);
}

void SMLookAndFeel::drawPopupMenuBackground (juce::Graphics& g, int width, int height)
{
    g.fillAll (findColour (juce::PopupMenu::backgroundColourId));
    g.setColour (palette::line);
    g.drawRect (0, 0, width, height);
}

void SMLookAndFeel::drawPopupMenuItem (juce::Graphics& g, const juce::Rectangle<int>& area, bool separator,
                                       bool active, bool highlighted, bool ticked, bool hasSubMenu,
                                       const juce::String& text, const juce::String& shortcut,
                                       const juce::Drawable* icon, const juce::Colour* textColour)
{
    if (separator)
    {
        g.setColour (palette::line);
        g.fillRect (area.reduced (margin, 0).withSizeKeepingCentre (area.getWidth() - 2 * margin, 1));
        return;
    }
    if (highlighted && active)
    {
        g.setColour (findColour (juce::PopupMenu::highlightedBackgroundColourId));
        g.fillRect (area.reduced (1, 0));
    }

    const auto alpha = active ? 1.0f : palette::disabledSign;
    auto row = area.reduced (margin, 0);
    const auto sign = row.removeFromLeft (markColumn);
    if (icon != nullptr)
        icon->drawWithin (g, sign.withSizeKeepingCentre (markColumn, markColumn).toFloat(),
                          juce::RectanglePlacement::centred | juce::RectanglePlacement::onlyReduceInSize,
                          alpha);
    else if (ticked)
    {
        g.setColour (palette::selected.withMultipliedAlpha (alpha));
        g.fillRect (sign.withWidth (mark).withSizeKeepingCentre (mark, mark));
    }
    if (hasSubMenu)
        drawArrow (g, row.removeFromRight (markColumn), palette::label.withMultipliedAlpha (alpha),
                   toTheRight);

    g.setFont (getPopupMenuFont());
    if (shortcut.isNotEmpty())
    {
        g.setColour (active ? palette::label : palette::disabledText);
        g.drawText (shortcut, row, juce::Justification::centredRight);
        row.removeFromRight (getPopupMenuFont().getStringWidth (shortcut) + margin);
    }
    g.setColour (!active                 ? palette::disabledText
                 : textColour != nullptr ? *textColour
                                         : findColour (juce::PopupMenu::textColourId));
    g.drawFittedText (text, row, juce::Justification::centredLeft, 1, 0.8f);
}

void SMLookAndFeel::drawPopupMenuSectionHeader (juce::Graphics& g, const juce::Rectangle<int>& area,
                                                const juce::String& name)
{
    g.setFont (labelFont());
    g.setColour (findColour (juce::PopupMenu::headerTextColourId));
    g.drawText (name.toUpperCase(), area.reduced (margin, 0), juce::Justification::centredLeft);
}

void SMLookAndFeel::drawPopupMenuUpDownArrow (juce::Graphics& g, int width, int height, bool isUp)
{
    g.fillAll (findColour (juce::PopupMenu::backgroundColourId));
    drawArrow (g, { width, height }, palette::label, isUp ? juce::MathConstants<float>::pi : 0.0f);
}

void SMLookAndFeel::getIdealPopupMenuItemSize (const juce::String& text, bool separator, int standardHeight,
                                               int& width, int& height)
{
    height = separator ? separatorHeight : juce::jmax (rowHeight, standardHeight);
    width = separator ? 50 : getPopupMenuFont().getStringWidth (text) + 2 * margin + 2 * markColumn;
}
