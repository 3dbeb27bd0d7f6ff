#include "ui/widgets/PXSlider.h"

#include "support/language/Translate.h"
#include "ui/look/OpenMenu.h"
#include "ui/walk/WalkStop.h"

#include <cmath>

namespace
{
constexpr float wheelClick =
    0.2f; ///< what a wheel without clicks has turned when another's would have clicked

enum MenuItem : int
{
    resetItem = 1,
    enterItem
};
}

PXSlider::PXSlider (const juce::String& name, SliderStyle style) : Slider (style, NoTextBox)
{
    setName (name);
    setRange (0.0, 1.0);
    setDefault (0.0);
    setSliderSnapsToMousePosition (false);
    setRepaintsOnMouseActivity (true);
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
}

PXSlider::~PXSlider() = default;

void PXSlider::bound()
{
    setDefault (command().restValue());
    textFromValueFunction = [this] (double) { return command().text(); };
    if (getTooltip() == command().name())
        setTooltip (tr ("%1. Double click to reset.", command().name()));
}

void PXSlider::poll()
{
    if (command().isBound() && dragging == nullptr)
        setValue (command().value(), juce::dontSendNotification);
}

void PXSlider::valueChanged()
{
    command().set (getValue());
    if (bubble == nullptr)
        bubble = std::make_unique<ValueBubble>();
    bubble->show (*this, valueWords());
}

juce::String PXSlider::valueWords() const
{
    const auto value = words.text (proportion());
    return command().isBound() ? command().name() + "  " + value : value;
}

void PXSlider::resetToDefault()
{
    const ScopedDragNotification drag (*this);
    setValue (getDoubleClickReturnValue(), juce::sendNotificationSync);
}

double PXSlider::proportion() const
{
    // JUCE's mapping asks for a slider that may be changed, and changes nothing.
    return const_cast<PXSlider*> (this)->valueToProportionOfLength (getValue());
}

void PXSlider::moveTo (double newProportion)
{
    setValue (proportionOfLengthToValue (juce::jlimit (0.0, 1.0, newProportion)), juce::sendNotificationSync);
}

int PXSlider::handState() const
{
    if (!isEnabled())
        return 0;
    return isBeingChanged() ? 2 : (isMouseOver (true) ? 1 : 0);
}

void PXSlider::mouseDown (const juce::MouseEvent& event)
{
    if (!isEnabled())
        return;
    if (event.mods.isPopupMenu())
        return showMenu();
    dragging = std::make_unique<ScopedDragNotification> (*this);
    lastDrag = event.position;
    if (getSliderSnapsToMousePosition())
        moveTo (proportionAt (event.position));
    dragProportion = proportion();
    repaint();
}

void PXSlider::mouseDrag (const juce::MouseEvent& event)
{
    if (dragging == nullptr)
        return;
    // Movement beyond an end is not remembered: turning back acts at once.
    dragProportion += proportionOf (event.position - lastDrag) * (event.mods.isShiftDown() ? fine : 1.0);
    dragProportion = juce::jlimit (0.0, 1.0, dragProportion);
    lastDrag = event.position;
    moveTo (dragProportion);
}

void PXSlider::mouseUp (const juce::MouseEvent&)
{
    dragging.reset();
    repaint();
}

void PXSlider::mouseDoubleClick (const juce::MouseEvent& event)
{
    if (isEnabled() && !event.mods.isPopupMenu())
        resetToDefault();
}

void PXSlider::mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    if (!isEnabled() || !isScrollWheelEnabled())
        return Component::mouseWheelMove (event, wheel);

    // Some systems turn the wheel sideways while shift is held.
    const auto sideways = std::abs (wheel.deltaX) > std::abs (wheel.deltaY);
    const auto turned = (sideways ? -wheel.deltaX : wheel.deltaY) * (wheel.isReversed ? -1.0f : 1.0f);
    if (dragging != nullptr || juce::approximatelyEqual (turned, 0.0f))
        return;
    const auto clicks = wheel.isSmooth ? turned / wheelClick : (turned > 0.0f ? 1.0f : -1.0f);
    turn (static_cast<double> (clicks), event.mods.isShiftDown());
}

bool PXSlider::keyPressed (const juce::KeyPress& key)
{
    using Key = juce::KeyPress;
    const auto code = key.getKeyCode();
    const auto isUp = code == Key::upKey || code == Key::rightKey;
    if (!isEnabled() || dragging != nullptr)
        return false;
    if (isUp || code == Key::downKey || code == Key::leftKey)
        turn (isUp ? 1.0 : -1.0, key.getModifiers().isShiftDown());
    else if (code == Key::deleteKey || code == Key::backspaceKey)
        resetToDefault();
    else if (code == Key::returnKey)
        enterValue();
    else if (KeyFinger::isMenu (key))
        showMenu();
    else
        return false;
    return true;
}

/** One or more clicks of the wheel, or of an arrow. */
void PXSlider::turn (double clicks, bool isFine)
{
    const auto step =
        juce::jmax (wheelStepOf != nullptr ? wheelStepOf (isFine) : wheelStep * (isFine ? fine : 1.0),
                    getInterval() / (getMaximum() - getMinimum()));
    const ScopedDragNotification drag (*this);
    wheelMoment.startTimer (wheelMomentMs);
    moveTo (proportion() + step * clicks);
    repaint();
}

void PXSlider::enablementChanged()
{
    if (!isEnabled())
        dragging.reset();
    Slider::enablementChanged();
}

void PXSlider::Moment::timerCallback()
{
    stopTimer();
    slider.repaint();
}

void PXSlider::showMenu()
{
    juce::PopupMenu menu;
    menu.addItem (resetItem, tr ("Reset"));
    menu.addItem (enterItem, tr ("Enter value..."));
    if (onFillMenu)
    {
        menu.addSeparator();
        onFillMenu (menu);
    }
    openMenu (menu, *this, juce::PopupMenu::Options().withTargetComponent (this),
              [this] (int chosen)
              {
                  if (chosen == resetItem)
                      resetToDefault();
                  else if (chosen == enterItem)
                      enterValue();
                  else if (onMenuChoice)
                      onMenuChoice (chosen);
              });
}

void PXSlider::enterValue()
{
    entry = ValueEntry::open (*this, getLocalBounds(), words.text (proportion()),
                              [this] (const juce::String& typed)
                              {
                                  const auto value = words.value (typed);
                                  if (!value.has_value())
                                      return false;
                                  const ScopedDragNotification drag (*this);
                                  moveTo (*value);
                                  return true;
                              });
}
