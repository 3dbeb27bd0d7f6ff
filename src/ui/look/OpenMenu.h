#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** Opens a menu in its owner's look. A click that closes it without a choice acts on nothing that lies there.
    @param onChoice   called with the id of the choice, not for items with actions of their own, and not once the owner
                      has gone */
void openMenu (juce::PopupMenu&, juce::Component& owner, juce::PopupMenu::Options,
               std::function<void (int id)> onChoice = {});
