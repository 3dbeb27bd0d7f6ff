#include "deck/state/EditHistory.h"

#include "deck/state/DeckNumbers.h"
#include "support/Clock.h"

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

bool EditHistory::undo (TrackMarks& marks) noexcept
{
    if (done == 0)
        return false;
    const auto& last = edit (1);
    marks.takeChange (last.after, last.before);
    next = (next + capacity - 1) % capacity;
    done -= 1;
    undone += 1;
    runEnded = true;
    return true;
}

bool EditHistory::redo (TrackMarks& marks) noexcept
{
    if (undone == 0)
        return false;
    const auto& again = edit (0);
    marks.takeChange (again.before, again.after);
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
