#include "ui/deckviews/BeatWindow.h"

#include "deck/DeckWorld.h"

namespace
{
bool sameNumbers (const BeatGrid& a, const BeatGrid& b)
{
    return a.numBeats == b.numBeats && a.downbeatIndex == b.downbeatIndex
           && a.downbeatPosition == b.downbeatPosition && a.fixedGrid == b.fixedGrid
           && a.sampleRate == b.sampleRate && a.bpm == b.bpm && a.loadedFrames == b.loadedFrames;
}

/** What can be read without the lock: everything but the table. */
BeatGrid numbersOf (const DeckPlayer& deck)
{
    return { nullptr,
             deck.track.numBeats,
             deck.marks.downbeatIndex,
             deck.marks.downbeatPosition,
             deck.marks.fixedGrid != 0,
             deck.track.sampleRate,
             deck.marks.bpm,
             deck.marks.fixedGrid != 0 ? deck.track.loadedFrames.get() : 0 };
}
}

BeatWindow::BeatWindow()
{
    held.reserve (mostBeats);
    fresh.reserve (mostBeats);
}

bool BeatWindow::update (const DeckPlayer& deck, double first, double last, Copy when)
{
    const auto numbers = numbersOf (deck);
    const auto reaches = first >= heldFrom && last <= heldTo;
    if (when == Copy::ifNeeded && reaches && sameNumbers (numbers, grid))
        return false;

    // A screen to either side, so that it lasts.
    if (!reaches)
    {
        heldFrom = first - (last - first);
        heldTo = last + (last - first);
    }
    grid = numbers;
    {
        const CallbackLock lock (deck.world.callbackLock, "beat marks");
        copy (deck.grid(), heldFrom, heldTo);
    }
    const auto changed = fresh != held;
    held.swap (fresh);
    return changed;
}

void BeatWindow::copy (const BeatGrid& from, double first, double last)
{
    fresh.clear();
    const auto count = from.beatCount(), anchor = from.downbeatEntry();
    int32_t low = 0, high = count;
    while (low < high)
    {
        const auto middle = low + (high - low) / 2;
        if (from.beatAt (middle) < first)
            low = middle + 1;
        else
            high = middle;
    }
    for (auto entry = low; entry < count && fresh.size() < mostBeats; ++entry)
    {
        const auto frame = from.beatAt (entry);
        if (frame > last)
            break;
        if ((entry - anchor) % 2 == 0)
            fresh.push_back ({ frame, entry - anchor });
    }
}
