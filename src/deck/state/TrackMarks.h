#pragma once

#include "deck/state/DeckNumbers.h"
#include "support/Relaxed.h"

#include <array>
#include <cstdint>

/** All that a hand sets on a track and can take back: cue slots, start point, tempo and grid. Positions are frames of the
    file. Written under the callback lock, read anywhere. */
struct TrackMarks
{
    std::array<Relaxed<double>, cueSlotCount> cues = noCues();
    Relaxed<double> startPoint; ///< play never goes below it while startPointOn
    Relaxed<int8_t> startPointOn;
    Relaxed<double> bpm { 120.0 };
    Relaxed<double> bpmAverage { 120.0 };           ///< of the analysis
    Relaxed<int32_t> downbeatIndex;                 ///< entry of the beat table, as it is read
    Relaxed<int32_t> downbeatPosition;              ///< anchor of a fixed grid
    Relaxed<int8_t> fixedGrid;                      ///< the grid is tempo and downbeat alone, not the table
    Relaxed<double> tableStep { 1.0 }, tableOffset; ///< how the beat table is read, see BeatGrid
    Relaxed<int8_t> confidence { -1 };              ///< in the grid, see TrackAnalysis

    bool operator== (const TrackMarks&) const noexcept = default;

    /** A new track's: none, at a tempo in BPM. */
    static TrackMarks atTempo (double bpm) noexcept
    {
        TrackMarks marks;
        marks.bpm = marks.bpmAverage = bpm;
        return marks;
    }

    /** Takes over the fields in which `after` differs from `before`, and keeps the rest. */
    void takeChange (const TrackMarks& before, const TrackMarks& after) noexcept;

private:
    static std::array<Relaxed<double>, cueSlotCount> noCues() noexcept
    {
        std::array<Relaxed<double>, cueSlotCount> slots;
        slots.fill (emptyCue);
        return slots;
    }
};
