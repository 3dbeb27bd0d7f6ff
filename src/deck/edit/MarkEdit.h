#pragma once

#include "deck/state/EditHistory.h"

/** Makes all that happens to a deck's marks in its scope an edit of the deck's history, if anything changes. Under the
    callback lock. */
class MarkEdit
{
public:
    /** @param now   ms of the engine's clock */
    MarkEdit (const TrackMarks& m, EditHistory& h, uint32_t now,
              EditHistory::Kind k = EditHistory::Kind::single) noexcept
        : marks (m),
          history (h),
          time (now),
          kind (k),
          before (m)
    {
    }

    ~MarkEdit()
    {
        if (marks != before)
            history.record (kind, before, marks, time);
    }

    MarkEdit (const MarkEdit&) = delete;
    MarkEdit& operator= (const MarkEdit&) = delete;

private:
    const TrackMarks& marks;
    EditHistory& history;
    const uint32_t time;
    const EditHistory::Kind kind;
    const TrackMarks before;
};
