#include "ui/deckviews/BeatWindow.h"

BeatWindow::BeatWindow()
{
    held.reserve (DeckWatch::mostBeats);
    fresh.reserve (DeckWatch::mostBeats);
}

bool BeatWindow::update (const DeckWatch& deck, double first, double last)
{
    const auto reaches = first >= heldFrom && last <= heldTo;
    if (reaches && deck->grid == grid)
        return false;

    // A screen to either side, so that it lasts.
    if (!reaches)
    {
        heldFrom = first - (last - first);
        heldTo = last + (last - first);
    }
    grid = deck->grid;
    deck.readBeats (heldFrom, heldTo, fresh);
    const auto changed = fresh != held;
    held.swap (fresh);
    return changed;
}
