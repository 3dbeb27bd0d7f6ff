#include "ui/widgets/PXTabBarButton.h"

PXTabBarButton::PXTabBarButton (const juce::String& name, juce::TabbedButtonBar& bar)
    : TabBarButton (name, bar)
{
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
    setTriggeredOnMouseDown (true);
}
