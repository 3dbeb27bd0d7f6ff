#include "ui/decks/EditMenu.h"

#include "engine/CPlatterdex.h"
#include "support/language/Translate.h"
#include "ui/look/OpenMenu.h"
#include "ui/poll/DeckWatch.h"

namespace EditMenu
{
void addTo (juce::PopupMenu& menu, CPlatterdex& engine, const DeckWatch& watch)
{
    const auto deck = watch.deck();
    menu.addItem (tr ("Undo (Ctrl+Z)"), watch->canUndo, false, [&engine, deck] { engine.grids.undo (deck); });
    menu.addItem (tr ("Redo (Ctrl+Shift+Z)"), watch->canRedo, false,
                  [&engine, deck] { engine.grids.redo (deck); });
    juce::PopupMenu readings;
    addReadingsTo (readings, engine, watch);
    menu.addSubMenu (tr ("Read the Grid Anew"), readings, watch->loadedFrames > 0 && watch->grid.isKnown());
}

void addReadingsTo (juce::PopupMenu& menu, CPlatterdex& engine, const DeckWatch& watch)
{
    for (const auto& reading : GridReading::all())
        menu.addItem (tr (reading.label), watch->grid.isKnown(), false,
                      [&engine, deck = watch.deck(), &reading] { engine.grids.read (deck, reading); });
}

void show (CPlatterdex& engine, const DeckWatch& watch, juce::Component& owner)
{
    juce::PopupMenu menu;
    addTo (menu, engine, watch);
    openMenu (menu, owner, {});
}
}
