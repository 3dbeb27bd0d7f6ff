#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

class CPlatterdex;
class DeckWatch;

/** Undo and redo of a deck's cues and grid, and the ways to read the grid. */
namespace EditMenu
{
void addTo (juce::PopupMenu&, CPlatterdex&, const DeckWatch&);

/** The ways to read the grid alone. */
void addReadingsTo (juce::PopupMenu&, CPlatterdex&, const DeckWatch&);

/** Opens a menu of nothing else. @param owner   the menu does nothing once it has gone */
void show (CPlatterdex&, const DeckWatch&, juce::Component& owner);
}
