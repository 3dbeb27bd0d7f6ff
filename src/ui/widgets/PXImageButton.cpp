#include "ui/widgets/PXImageButton.h"

#include "skin/Palette.h"
#include "ui/look/ButtonSkin.h"

namespace
{
bool isInActiveWindow (const juce::Component& component)
{
    // Inside a host's window there is none of ours to ask, and the host shows by itself which of its own is active.
    const auto* window = dynamic_cast<const juce::TopLevelWindow*> (component.getTopLevelComponent());
    return window == nullptr || window->isActiveWindow();
}
}

PXImageButton::PXImageButton (const juce::String& name)
{
    setName (name);
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
}

PXImageButton::~PXImageButton() = default;

void PXImageButton::setImages (const SkinPicture& normalOff, const SkinPicture& overOff,
                               const SkinPicture& downOff, const SkinPicture& normalOn,
                               const SkinPicture& overOn, const SkinPicture& downOn)
{
    pictures = { Shown { normalOff }, { overOff }, { downOff }, { normalOn }, { overOn }, { downOn } };
    repaint();
}

void PXImageButton::setStrip (const SkinPicture& strip)
{
    const auto lit = strip.frames() >= skin::buttonFrames ? skin::normalOn : 0;
    for (int i = 0; i < skin::buttonFrames; ++i)
        pictures[static_cast<size_t> (i)] = { strip, i < skin::normalOn ? i : lit + i - skin::normalOn };
    repaint();
}

void PXImageButton::setToggleState (bool on)
{
    if (isOn == on)
        return;
    isOn = on;
    repaint();
}

void PXImageButton::setAlternative (CPlatterdex& engine, int number)
{
    alternative = { engine, number };
}

void PXImageButton::bound()
{
    press.setCommand (command());
}

void PXImageButton::poll()
{
    if (command().isBound())
        isOn = command().isOn();
    if (painted >= 0 && painted != shownPicture())
        repaint();
}

int PXImageButton::shownPicture() const
{
    return buttonFrame (isOn, isOver, isDown(), isEnabled() && isInActiveWindow (*this));
}

juce::Rectangle<int> PXImageButton::pictureBounds() const
{
    const auto& picture = pictures[static_cast<size_t> (shownPicture())].picture;
    return juce::Rectangle<int> (picture.width(), picture.height()).withCentre (getLocalBounds().getCentre());
}

void PXImageButton::paint (juce::Graphics& g)
{
    painted = shownPicture();
    const auto& shown = pictures[static_cast<size_t> (painted)];
    shown.picture.draw (g, getLocalBounds(), shown.frame, isEnabled() ? 1.0f : palette::disabledSign);
}

bool PXImageButton::hitTest (int x, int y)
{
    const auto picture = pictureBounds();
    if (picture.getWidth() < smallestHit || picture.getHeight() < smallestHit)
        return hitArea (picture).contains (x, y);
    const auto& shown = pictures[static_cast<size_t> (shownPicture())];
    return !shown.picture.isClearAt (juce::Point<int> (x, y) - picture.getPosition(), shown.frame);
}

void PXImageButton::mouseEnter (const juce::MouseEvent&)
{
    setOver (true);
}

void PXImageButton::mouseExit (const juce::MouseEvent&)
{
    setOver (false);
}

void PXImageButton::mouseDown (const juce::MouseEvent& event)
{
    if (!isEnabled())
        return;
    if (!event.mods.isPopupMenu())
        return setDown (true);
    pressRight();
}

void PXImageButton::pressRight()
{
    const juce::Component::BailOutChecker gone (this);
    if (alternative.isBound())
        alternative.press();
    listeners.callChecked (gone, [this] (PXImageButtonListener& l) { l.rightClicked (*this); });
    if (!gone.shouldBailOut() && onRightClick)
        onRightClick();
}

void PXImageButton::mouseDrag (const juce::MouseEvent& event)
{
    setOver (hitTest (event.x, event.y));
}

void PXImageButton::mouseUp (const juce::MouseEvent& event)
{
    release (hitTest (event.x, event.y));
}

bool PXImageButton::keyPressed (const juce::KeyPress& key)
{
    if (KeyFinger::isMenu (key))
        return pressRight(), true;
    if (!KeyFinger::isPress (key))
        return false;
    if (finger.goesDown (key) && isEnabled())
        setDown (true);
    return true;
}

bool PXImageButton::keyStateChanged (bool)
{
    if (finger.comesUp())
        release (true);
    return false;
}

void PXImageButton::focusLost (FocusChangeType)
{
    finger = {};
    setDown (false);
}

std::unique_ptr<juce::AccessibilityHandler> PXImageButton::createAccessibilityHandler()
{
    const auto click = [this]
    {
        setDown (true);
        release (true);
    };
    if (getTitle().isEmpty())
        setTitle (getTooltip());
    return std::make_unique<juce::AccessibilityHandler> (
        *this, juce::AccessibilityRole::button,
        juce::AccessibilityActions().addAction (juce::AccessibilityActionType::press, click));
}

void PXImageButton::release (bool isInside)
{
    if (!isDown())
        return;
    const juce::Component::BailOutChecker gone (this);
    setDown (false);
    if (gone.shouldBailOut() || !isInside)
        return;
    listeners.callChecked (gone, [this] (PXImageButtonListener& l) { l.clicked (*this); });
    if (!gone.shouldBailOut() && onClick)
        onClick();
}

void PXImageButton::enablementChanged()
{
    if (!isEnabled())
        setDown (false);
    repaint();
}

void PXImageButton::visibilityChanged()
{
    if (!isVisible())
        setDown (false);
}

void PXImageButton::setDown (bool down)
{
    if (isDown() == down)
        return;
    press.setDown (down);
    repaint();
    if (onPress)
        onPress (down);
}

void PXImageButton::setOver (bool over)
{
    if (isOver == over)
        return;
    isOver = over;
    repaint();
}
