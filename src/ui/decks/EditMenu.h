#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

class CPlatterdex;

/** The way back from an edit of a deck's cues or grid, and on again. */
namespace EditMenu
{
void addTo (juce::PopupMenu&, CPlatterdex&, int deck);

/** Opens a menu of nothing else. @param owner   the menu does nothing once it has gone */
void show (CPlatterdex&, int deck, juce::Component& owner);
}
