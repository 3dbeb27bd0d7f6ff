#include "deck/EditHistory.h"

#include "deck/DeckWorld.h"

#include <algorithm>

namespace
{
/** ms within which an edit goes on with the one before it; 0 for kinds that never do. */
constexpr uint32_t runPause (EditHistory::Kind kind) noexcept
{
    switch (kind)
    {
    case EditHistory::Kind::gridMove:
        return 1000;
    case EditHistory::Kind::tap:
        return tapPauseMs;
    case EditHistory::Kind::single:
        break;
    }
    return 0;
}
}

TrackMarks::TrackMarks (const DeckPlayer& deck) noexcept
    : startPoint (deck.startPoint),
      bpm (deck.bpm),
      bpmAverage (deck.bpmAverage),
      downbeatIndex (deck.downbeatIndex),
      downbeatPosition (deck.downbeatPosition),
      startPointOn (deck.startPointOn),
      fixedGrid (deck.fixedGrid)
{
    std::copy (deck.cues.begin(), deck.cues.end(), cues.begin());
}

void TrackMarks::applyWhereNot (const TrackMarks& other, DeckPlayer& deck) const noexcept
{
    const auto apply = [] (const auto& mine, const auto& theirs, auto& field)
    {
        if (mine != theirs)
            field = mine;
    };
    for (size_t slot = 0; slot < cues.size(); ++slot)
        apply (cues[slot], other.cues[slot], deck.cues[slot]);
    apply (startPoint, other.startPoint, deck.startPoint);
    apply (startPointOn, other.startPointOn, deck.startPointOn);
    apply (bpm, other.bpm, deck.bpm);
    apply (bpmAverage, other.bpmAverage, deck.bpmAverage);
    apply (downbeatIndex, other.downbeatIndex, deck.downbeatIndex);
    apply (downbeatPosition, other.downbeatPosition, deck.downbeatPosition);
    apply (fixedGrid, other.fixedGrid, deck.fixedGrid);
}

void EditHistory::record (Kind kind, const TrackMarks& before, const TrackMarks& after, uint32_t now) noexcept
{
    undone = 0;
    auto& last = edit (1);
    const auto goesOn =
        !runEnded && done > 0 && last.kind == kind && millisecondsBetween (last.time, now) < runPause (kind);
    if (goesOn)
    {
        last.after = after;
        last.time = now;
        return;
    }
    edit (0) = { kind, now, before, after };
    next = (next + 1) % capacity;
    done = std::min (done + 1, capacity);
    runEnded = false;
}

bool EditHistory::undo (DeckPlayer& deck) noexcept
{
    if (done == 0)
        return false;
    const auto& last = edit (1);
    last.before.applyWhereNot (last.after, deck);
    next = (next + capacity - 1) % capacity;
    done -= 1;
    undone += 1;
    runEnded = true;
    return true;
}

bool EditHistory::redo (DeckPlayer& deck) noexcept
{
    if (undone == 0)
        return false;
    const auto& again = edit (0);
    again.after.applyWhereNot (again.before, deck);
    next = (next + 1) % capacity;
    done += 1;
    undone -= 1;
    runEnded = true;
    return true;
}

void EditHistory::forget() noexcept
{
    done = undone = 0;
    runEnded = true;
}

MarkEdit::MarkEdit (DeckPlayer& d, EditHistory::Kind k) noexcept : deck (d), kind (k), before (d) {}

MarkEdit::~MarkEdit()
{
    if (const TrackMarks after (deck); after != before)
        deck.edits.record (kind, before, after, deck.world.clock());
}
