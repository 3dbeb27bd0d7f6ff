#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The room for a component on its screen, less the frame of its window and what else stands in that. Empty without a screen. Message
    thread. */
juce::Rectangle<int> screenRoomOf (const juce::Component&);
