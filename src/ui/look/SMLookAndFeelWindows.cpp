// Window frames, dialogs and tooltips.

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"
#include "ui/look/SkinPicture.h"

namespace
{
constexpr int margin = 8, tooltipWidth = 320, fromMouseX = 12, fromMouseY = 20;
constexpr int alertIconSpace = 80, alertIcon = 40, alertTextTop = 30;

/** Close, minimise and maximise. */
class FrameButton : public juce::Button
{
public:
    FrameButton (const juce::String& name, const char* strip) : Button (name), picture (strip)
    {
        setWantsKeyboardFocus (false);
    }

    void paintButton (juce::Graphics& g, bool over, bool down) override
    {
        picture.draw (g, getLocalBounds(), down ? 2 : (over ? 1 : 0),
                      isEnabled() ? 1.0f : palette::disabledSign);
    }

private:
    SkinPicture picture;
};
}

void SMLookAndFeel::drawDocumentWindowTitleBar (juce::DocumentWindow& window, juce::Graphics& g, int width,
                                                int height, int titleX, int titleWidth,
                                                const juce::Image* icon, bool titleOnLeft)
{
    fillRaised (g, { width, height }, palette::panel);
    juce::Rectangle<int> title (titleX, 0, titleWidth, height);
    title.reduce (margin, 0);
    if (icon != nullptr)
    {
        const auto place = title.removeFromLeft (height).reduced (4);
        g.drawImageWithin (*icon, place.getX(), place.getY(), place.getWidth(), place.getHeight(),
                           juce::RectanglePlacement::centred);
    }
    g.setFont (font (titleSize));
    g.setColour (window.isActiveWindow() ? palette::value : palette::label);
    g.drawText (window.getName(), title,
                titleOnLeft ? juce::Justification::centredLeft : juce::Justification::centred);
}

juce::Button* SMLookAndFeel::createDocumentWindowButton (int type)
{
    switch (type)
    {
    case juce::DocumentWindow::closeButton:
        return new FrameButton ("close", "sm_close");
    case juce::DocumentWindow::minimiseButton:
        return new FrameButton ("minimise", "sm_minimise");
    case juce::DocumentWindow::maximiseButton:
        return new FrameButton ("maximise", "sm_maximise");
    default:
        jassertfalse;
        return nullptr;
    }
}

void SMLookAndFeel::positionDocumentWindowButtons (juce::DocumentWindow&, int x, int y, int width, int height,
                                                   juce::Button* minimise, juce::Button* maximise,
                                                   juce::Button* close, bool onLeft)
{
    juce::Rectangle<int> bar (x, y, width, height);
    if (onLeft)
        std::swap (minimise, maximise);
    for (auto* button : { close, maximise, minimise })
        if (button != nullptr)
            button->setBounds (onLeft ? bar.removeFromLeft (height) : bar.removeFromRight (height));
}

void SMLookAndFeel::drawResizableWindowBorder (juce::Graphics& g, int width, int height,
                                               const juce::BorderSize<int>& border, juce::ResizableWindow&)
{
    if (border.isEmpty())
        return;
    g.setColour (palette::line);
    g.drawRect (0, 0, width, height);
}

void SMLookAndFeel::drawCornerResizer (juce::Graphics& g, int width, int height, bool over, bool dragging)
{
    SkinPicture ("resizer").draw (g, { width, height }, dragging ? 2 : (over ? 1 : 0));
}

void SMLookAndFeel::drawAlertBox (juce::Graphics& g, juce::AlertWindow& alert, const juce::Rectangle<int>&,
                                  juce::TextLayout& text)
{
    fillRaised (g, alert.getLocalBounds(), alert.findColour (juce::AlertWindow::backgroundColourId));
    g.setColour (alert.findColour (juce::AlertWindow::outlineColourId));
    g.drawRect (alert.getLocalBounds());

    auto area = alert.getLocalBounds();
    area.removeFromTop (alertTextTop);
    area.removeFromBottom (getAlertWindowButtonHeight());
    if (const auto type = alert.getAlertType(); type != juce::MessageBoxIconType::NoIcon)
    {
        const auto isWarning = type == juce::MessageBoxIconType::WarningIcon;
        const auto ground = isWarning ? palette::danger : palette::accent;
        const auto sign = juce::Rectangle<int> (alertIcon, alertIcon)
                              .withPosition ((alertIconSpace - alertIcon) / 2, alertTextTop)
                              .toFloat();
        g.setColour (ground);
        g.fillEllipse (sign);
        g.setColour (palette::textOn (ground));
        g.setFont (font (0.7f * alertIcon));
        g.drawText (isWarning ? "!" : (type == juce::MessageBoxIconType::QuestionIcon ? "?" : "i"), sign,
                    juce::Justification::centred);
        area.removeFromLeft (alertIconSpace);
    }
    g.setColour (alert.findColour (juce::AlertWindow::textColourId));
    text.draw (g, area.toFloat());
}

juce::Font SMLookAndFeel::getAlertWindowTitleFont()
{
    return font (titleSize);
}

juce::Font SMLookAndFeel::getAlertWindowMessageFont()
{
    return font (valueSize);
}

juce::Font SMLookAndFeel::getAlertWindowFont()
{
    return font (valueSize);
}

juce::TextLayout SMLookAndFeel::tooltipLayout (const juce::String& text)
{
    juce::AttributedString string;
    string.setWordWrap (juce::AttributedString::WordWrap::byWord);
    string.append (text, font (valueSize), palette::value);
    juce::TextLayout layout;
    layout.createLayoutWithBalancedLineLengths (string, tooltipWidth);
    return layout;
}

juce::Rectangle<int> SMLookAndFeel::getTooltipBounds (const juce::String& text, juce::Point<int> position,
                                                      juce::Rectangle<int> parentArea)
{
    const auto layout = tooltipLayout (text);
    const juce::Rectangle<int> size (juce::roundToInt (std::ceil (layout.getWidth())) + 2 * margin,
                                     juce::roundToInt (std::ceil (layout.getHeight())) + margin);
    // On the side of the mouse that has room, so that it never lies under it.
    const auto x = position.x + fromMouseX + size.getWidth() <= parentArea.getRight()
                       ? position.x + fromMouseX
                       : position.x - fromMouseX - size.getWidth();
    const auto y = position.y + fromMouseY + size.getHeight() <= parentArea.getBottom()
                       ? position.y + fromMouseY
                       : position.y - margin - size.getHeight();
    return size.withPosition (x, y).constrainedWithin (parentArea);
}

void SMLookAndFeel::drawTooltip (juce::Graphics& g, const juce::String& text, int width, int height)
{
    const juce::Rectangle<int> area (width, height);
    g.setColour (findColour (juce::TooltipWindow::backgroundColourId));
    g.fillRect (area);
    g.setColour (findColour (juce::TooltipWindow::outlineColourId));
    g.drawRect (area);
    tooltipLayout (text).draw (g, area.reduced (margin, margin / 2).toFloat());
}
