#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Windows that fill their screen without a frame. Message thread. */
namespace FullScreen
{
/** Asks the window manager, who answers by another size. @returns false for a window that is on no screen */
bool ask (juce::Component& window, bool full);

/** True while a window covers all of its screen. */
bool covers (const juce::Component& window);
}
