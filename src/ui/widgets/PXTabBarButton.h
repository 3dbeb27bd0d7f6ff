#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A tab of the block between the decks: it comes to the front as the mouse goes down, and is drawn by the look. */
class PXTabBarButton : public juce::TabBarButton
{
public:
    PXTabBarButton (const juce::String& name, juce::TabbedButtonBar&);

    bool keyPressed (const juce::KeyPress&) override;
};
