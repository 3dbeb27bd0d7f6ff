#include "ui/deckviews/BeatWindow.h"

#include <algorithm>

namespace
{
std::span<const GridBeat> between (const std::vector<GridBeat>& beats, double first, double last)
{
    const auto begin = std::ranges::lower_bound (beats, first, {}, &GridBeat::frame);
    return { begin, std::ranges::upper_bound (begin, beats.end(), last, {}, &GridBeat::frame) };
}
}

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

    const auto formerFrom = heldFrom, formerTo = heldTo;

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
    const auto from = std::max (formerFrom, heldFrom), to = std::min (formerTo, heldTo);
    slid = from <= to && std::ranges::equal (between (held, from, to), between (fresh, from, to));
    return changed;
}
