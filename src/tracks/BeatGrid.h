#pragma once

#include "analysis/files/BeatMark.h"

#include <cstdint>
#include <optional>
#include <vector>

/** The places of a track's beats. Entries stand half a beat apart, so the full beats are every second entry, counted
    from the downbeat's. Either the table tells them (a tracked grid), or tempo and downbeat alone do (a fixed grid).
    A value: made by the caller from the deck's fields under the callback lock, or on the audio thread. */
struct BeatGrid
{
    const BeatMark* beats = nullptr;
    int32_t numBeats = 0;
    int32_t downbeatIndex = 0;
    int32_t downbeatPosition = 0; ///< frames of the file
    bool fixedGrid = false;
    double sampleRate = 44100.0; ///< of the file
    double bpm = 120.0;
    int32_t loadedFrames = 0;

    /** A grid of the table may be read in another ratio than the table's: its entry i lies at the place
        tableOffset + i * tableStep of the table, between whole ones on the straight line. */
    double tableStep = 1.0, tableOffset = 0.0;
    bool isReadAnew() const noexcept { return tableStep != 1.0 || tableOffset != 0.0; }

    /** The table as it is read, with the tempo of each entry. Not on the audio thread. */
    std::vector<BeatMark> readTable() const;

    /** Half a beat in frames; 0 if there is no tempo. */
    double period() const noexcept { return bpm > 0.0 ? sampleRate * 30.0 / bpm : 0.0; }

    int32_t beatCount() const noexcept;
    int32_t downbeatEntry() const noexcept;

    /** Position of an entry in frames; 0 past the end of a table. */
    double beatAt (int32_t index) const noexcept;

    /** The even beat nearest to a position: of the entries an even number away from the downbeat's.
        @param frame   position in frames of the file
        @returns its position, or nothing when none lies within 100,000 frames. Ties keep the earlier beat. */
    std::optional<double> nearestEvenBeat (double frame) const noexcept;

    /** The entry nearest to a position, full beat or half.
        @returns its index, or nothing when none lies within 100,000 frames. Ties keep the earlier one. */
    std::optional<int32_t> nearestEntry (double frame) const noexcept;

    /** Index of the first entry beyond a position; beatCount() if there is none. */
    int32_t firstEntryBeyond (double frame) const noexcept { return countUpTo (frame, 0, 1); }

private:
    int32_t tableCount() const noexcept;
    double tableAt (int32_t index) const noexcept;

    /** Counts those of the entries first, first + stride and so on that lie at or before a position. */
    int32_t countUpTo (double frame, int32_t first, int32_t stride) const noexcept;
    std::optional<int32_t> nearestOf (double frame, int32_t first, int32_t stride) const noexcept;
};
