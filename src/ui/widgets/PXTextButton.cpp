#include "ui/widgets/PXTextButton.h"

#include "skin/Palette.h"
#include "ui/look/ButtonSkin.h"
#include "ui/look/SMLookAndFeel.h"

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
    setHue (deckHue (deck));
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
    picture = buttonPicture (getHeight(), hue);
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
        setToggleState (command().isOn() != litWhenOff, juce::dontSendNotification);
}

int PXTextButton::shownFrame() const
{
    return buttonFrame (getToggleState(), isOver(), isDown() || press.isDown(), isEnabled());
}

juce::Rectangle<int> PXTextButton::textArea() const
{
    return getLocalBounds().reduced (2, 0);
}

void PXTextButton::paintButton (juce::Graphics& g, bool, bool)
{
    picture.drawWide (g, getLocalBounds(), shownFrame(), isEnabled() ? 1.0f : palette::disabledAlpha);
    g.setColour (!isEnabled()       ? textOfDisabled (getToggleState())
                 : getToggleState() ? palette::textOn (skin::fillOf (hue))
                                    : palette::value);
    g.setFont (SMLookAndFeel::buttonFont (getHeight()));
    g.drawFittedText (juce::translate (getButtonText()), textArea(), juce::Justification::centred, 1, 0.8f);
}

void PXTextButton::clicked()
{
    if (!command().isHeld())
        command().press();
}

void PXTextButton::pressRight()
{
    if (isEnabled() && alternative.isBound())
        alternative.press();
    if (isEnabled() && onRightClick)
        onRightClick();
}

bool PXTextButton::keyPressed (const juce::KeyPress& key)
{
    if (KeyFinger::isMenu (key))
        return pressRight(), true;
    if (!KeyFinger::isPress (key))
        return false;
    if (finger.goesDown (key) && isEnabled())
    {
        press.setDown (true);
        triggerClick();
    }
    return true;
}

bool PXTextButton::keyStateChanged (bool isKeyDown)
{
    if (finger.comesUp())
        press.setDown (false);
    return TextButton::keyStateChanged (isKeyDown);
}

void PXTextButton::focusLost (FocusChangeType cause)
{
    finger = {};
    press.setDown (false);
    TextButton::focusLost (cause);
}

void PXTextButton::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
    {
        pressRight();
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
