#include "ui/decks/EditMenu.h"

#include "engine/CPlatterdex.h"

namespace EditMenu
{
void addTo (juce::PopupMenu& menu, CPlatterdex& engine, int deck)
{
    const auto& edits = engine.decks.deck (deck)->edits;
    menu.addItem ("Undo (Ctrl+Z)", edits.undoCount() > 0, false,
                  [&engine, deck] { engine.grids.undo (deck); });
    menu.addItem ("Redo (Ctrl+Shift+Z)", edits.redoCount() > 0, false,
                  [&engine, deck] { engine.grids.redo (deck); });
}

void show (CPlatterdex& engine, int deck, juce::Component& owner)
{
    juce::PopupMenu menu;
    menu.setLookAndFeel (&owner.getLookAndFeel());
    addTo (menu, engine, deck);
    menu.showMenuAsync (juce::PopupMenu::Options().withDeletionCheck (owner));
}
}
