#pragma once

#include "deck/state/TrackMarks.h"

#include <array>
#include <cstdint>

/** The last edits of a track's marks, to be taken back and done again. Of a full history the oldest edit is forgotten.
    Fixed memory; under the callback lock, but for the two counts. */
class EditHistory
{
public:
    static constexpr int capacity = 32;

    /** Edits that come as a run of small moves count as one edit for as long as each follows the last soon enough. */
    enum class Kind : int8_t
    {
        single,
        gridMove, ///< within a second
        tap       ///< within the pause that begins taps anew
    };

    /** Takes up an edit that has been made. It ends what could have been done again.
        @param now   ms of the engine's clock */
    void record (Kind, const TrackMarks& before, const TrackMarks& after, uint32_t now) noexcept;

    /** @returns false if there is nothing to take back */
    bool undo (TrackMarks&) noexcept;

    /** @returns false if nothing was taken back since the last edit */
    bool redo (TrackMarks&) noexcept;

    void forget() noexcept;

    /** Counts of edits that can be taken back, and done again. Any thread. */
    int undoCount() const noexcept { return done; }
    int redoCount() const noexcept { return undone; }

private:
    struct Edit
    {
        Kind kind = Kind::single;
        uint32_t time = 0;
        TrackMarks before, after;
    };

    /** The edit `back` places before the one that is done next. */
    Edit& edit (int back) noexcept
    {
        return edits[static_cast<size_t> ((next - back + capacity) % capacity)];
    }

    std::array<Edit, capacity> edits;
    int next = 0; ///< where the next edit goes
    bool runEnded = true;
    Relaxed<int> done, undone;
};
