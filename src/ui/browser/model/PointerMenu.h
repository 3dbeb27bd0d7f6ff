#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace PointerMenu
{
/** Opens a menu that a press of the right button asks for below the pointer, not under it: a button that is held a moment comes up
    over no entry then, and chooses none. Message thread. */
inline juce::PopupMenu::Options options()
{
    constexpr int away = 4; ///< pixels
    // An empty area would count as a point, over which the menu opens.
    return juce::PopupMenu::Options().withTargetScreenArea (
        juce::Rectangle<int> (1, 2 * away).withCentre (juce::Desktop::getMousePosition()));
}
}
