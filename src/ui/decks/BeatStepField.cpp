#include "ui/decks/BeatStepField.h"

#include "skin/Palette.h"
#include "ui/look/OpenMenu.h"
#include "ui/panel/PanelPaint.h"
#include "ui/walk/WalkStop.h"

BeatStepField::BeatStepField (const juce::String& name)
{
    setComponentID (name);
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
}

juce::String BeatStepField::textOf (int step)
{
    return step >= oneBeat ? juce::String (1 << (step - oneBeat))
                           : "1/" + juce::String (1 << (oneBeat - step));
}

void BeatStepField::poll()
{
    const auto next = textOf (juce::jlimit (0, steps - 1, current()));
    if (next == shown)
        return;
    shown = next;
    repaint();
}

void BeatStepField::chooseStep (int wanted)
{
    onChoose (wanted);
    poll();
}

void BeatStepField::openList()
{
    juce::PopupMenu menu;
    for (int step = 0; step < steps; ++step)
        menu.addItem (textOf (step), true, step == current(), [this, step] { chooseStep (step); });
    openMenu (menu, *this, juce::PopupMenu::Options().withTargetComponent (this));
}

void BeatStepField::mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails& wheel)
{
    if (wheel.deltaY != 0.0f)
        stepBy (wheel.deltaY > 0.0f ? 1 : -1);
}

void BeatStepField::stepBy (int direction)
{
    chooseStep (juce::jlimit (0, steps - 1, current() + direction));
}

bool BeatStepField::keyPressed (const juce::KeyPress& key)
{
    using Key = juce::KeyPress;
    if (key == Key (Key::upKey) || key == Key (Key::rightKey))
        stepBy (1);
    else if (key == Key (Key::downKey) || key == Key (Key::leftKey))
        stepBy (-1);
    else if (KeyFinger::isPress (key))
        openList();
    else
        return false;
    return true;
}

std::unique_ptr<juce::AccessibilityHandler> BeatStepField::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler> (
        *this, juce::AccessibilityRole::comboBox,
        juce::AccessibilityActions().addAction (juce::AccessibilityActionType::press,
                                                [this] { openList(); }));
}

void BeatStepField::paint (juce::Graphics& g)
{
    g.setColour (palette::ground);
    g.fillRoundedRectangle (getLocalBounds().toFloat(), 2.0f);
    PanelPaint::value (g, shown, getLocalBounds());
}
