#include "ui/widgets/PXTabBarButton.h"

#include "ui/walk/WalkStop.h"

PXTabBarButton::PXTabBarButton (const juce::String& name, juce::TabbedButtonBar& bar)
    : TabBarButton (name, bar)
{
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
    setTriggeredOnMouseDown (true);
}

bool PXTabBarButton::keyPressed (const juce::KeyPress& key)
{
    if (!KeyFinger::isPress (key))
        return false;
    clicked (juce::ModifierKeys());
    return true;
}
