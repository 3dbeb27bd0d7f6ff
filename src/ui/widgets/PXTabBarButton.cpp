#include "ui/widgets/PXTabBarButton.h"

#include "skin/Palette.h"
#include "ui/look/SMLookAndFeel.h"

namespace
{
constexpr int margin = 8;
}

PXTabBarButton::PXTabBarButton (const juce::String& name, juce::TabbedButtonBar& bar)
    : TabBarButton (name, bar),
      picture ("tab")
{
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
    setTriggeredOnMouseDown (true);
}

void PXTabBarButton::paintButton (juce::Graphics& g, bool over, bool down)
{
    const auto front = isFrontTab();
    picture.drawWide (g, getLocalBounds(),
                      (front ? skin::normalOn : skin::normalOff) + (down ? 2 : (over ? 1 : 0)));
    g.setFont (SMLookAndFeel::labelFont());
    g.setColour (front || over ? palette::value : palette::label);
    g.drawFittedText (juce::translate (getButtonText()), getLocalBounds(), juce::Justification::centred, 1,
                      0.8f);
}

int PXTabBarButton::getBestTabLength (int)
{
    return SMLookAndFeel::labelFont().getStringWidth (juce::translate (getButtonText())) + 2 * margin;
}
