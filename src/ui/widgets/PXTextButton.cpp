#include "ui/widgets/PXTextButton.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
juce::Colour colourOf (skin::Hue hue)
{
    switch (hue)
    {
    case skin::Hue::neutral:
        return palette::label;
    case skin::Hue::lime:
        return palette::selected;
    case skin::Hue::red:
        return palette::danger;
    case skin::Hue::accent:
        return palette::accent;
    default:
        return palette::decks[static_cast<size_t> (hue) - static_cast<size_t> (skin::Hue::deckA)];
    }
}

/** The heights of the skin's plain buttons, from the highest down. */
constexpr int heights[] { 32, 24, 20 };

std::string pictureName (int height, skin::Hue hue)
{
    auto fitting = heights[std::size (heights) - 1];
    for (const auto h : heights)
        if (h <= height)
        {
            fitting = h;
            break;
        }
    auto name = "button_" + std::to_string (fitting);
    if (hue != skin::Hue::accent && hue != skin::Hue::neutral)
        name += skin::hueSuffixes[static_cast<size_t> (hue)];
    return name;
}
}

PXTextButton::PXTextButton (const juce::String& text) : TextButton (text)
{
    // The keyboard plays the decks; a button that kept the space bar to itself would be in the way.
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
    choosePicture();
}

PXTextButton::~PXTextButton() = default;

void PXTextButton::setHue (skin::Hue h)
{
    hue = h;
    choosePicture();
}

void PXTextButton::setDeckHue (int deck)
{
    setHue (static_cast<skin::Hue> (static_cast<int> (skin::Hue::deckA) + juce::jlimit (0, 3, deck)));
}

void PXTextButton::setPicture (const SkinPicture& own)
{
    picture = own;
    hasOwnPicture = true;
    repaint();
}

void PXTextButton::choosePicture()
{
    if (hasOwnPicture)
        return;
    picture = pictureName (getHeight(), hue);
    repaint();
}

void PXTextButton::resized()
{
    TextButton::resized();
    choosePicture();
}

void PXTextButton::setAlternative (CPlatterdex& engine, int number)
{
    alternative = { engine, number };
}

void PXTextButton::bound()
{
    setTriggeredOnMouseDown (true);
    if (command().isHeld())
        press.setCommand (command());
}

void PXTextButton::poll()
{
    if (command().isBound())
        setToggleState (command().isOn(), juce::dontSendNotification);
}

int PXTextButton::shownFrame() const
{
    const auto lit = getToggleState() ? skin::normalOn : skin::normalOff;
    if (!isEnabled())
        return lit;
    return lit + (isDown() || press.isDown() ? 2 : (isOver() ? 1 : 0));
}

juce::Rectangle<int> PXTextButton::textArea() const
{
    return getLocalBounds().reduced (4, 0);
}

void PXTextButton::paintButton (juce::Graphics& g, bool, bool)
{
    const auto alpha = isEnabled() ? 1.0f : palette::disabledAlpha;
    picture.drawWide (g, getLocalBounds(), shownFrame(), alpha);
    g.setColour ((getToggleState() ? palette::textOn (colourOf (hue)) : palette::value).withAlpha (alpha));
    g.setFont (SMLookAndFeel::font (getHeight() < heights[1] ? SMLookAndFeel::labelSize
                                                             : SMLookAndFeel::valueSize));
    g.drawFittedText (juce::translate (getButtonText()), textArea(), juce::Justification::centred, 1, 0.8f);
}

void PXTextButton::clicked()
{
    if (!command().isHeld())
        command().press();
}

void PXTextButton::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
    {
        if (isEnabled() && alternative.isBound())
            alternative.press();
        if (isEnabled() && onRightClick)
            onRightClick();
        return;
    }
    press.setDown (isEnabled());
    TextButton::mouseDown (event);
}

void PXTextButton::mouseDrag (const juce::MouseEvent& event)
{
    if (!event.mods.isPopupMenu())
        TextButton::mouseDrag (event);
}

void PXTextButton::mouseUp (const juce::MouseEvent& event)
{
    press.setDown (false);
    if (!event.mods.isPopupMenu())
        TextButton::mouseUp (event);
}

void PXTextButton::enablementChanged()
{
    if (!isEnabled())
        press.setDown (false);
    TextButton::enablementChanged();
}
