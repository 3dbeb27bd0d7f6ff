#pragma once

#include "deck/state/Loops.h"
#include "deck/state/PlayState.h"
#include "deck/state/TrackMarks.h"
#include "support/AudioThread.h"

#include <limits>

/** The part of a track that a deck's reading stays in: between the ends of the loop that runs, and not before the start
    point.

    A value, made once a block. Two regions that are equal lead the same reading to the same places. Places are frames of
    the file. A deck in no loop has ends at infinity, so that a sample costs the same two comparisons as in a loop. */
struct LoopRegion
{
    /** A loop of fewer frames than this is passed over: it would hold the deck in one place. */
    static constexpr double shortestLoop = 16.0;

    LoopRegion() noexcept = default;

    /** @param beatLoopFrames   the length of the beat loop; one whose end lies behind the track turns at the track's end
        @param trackFrames      that are loaded
        Audio thread, or a command under the callback lock. */
    PX_AUDIO_THREAD LoopRegion (const Loops&, double beatLoopFrames, const TrackMarks&, const PlayState&,
                                int32_t trackFrames) noexcept;

    bool operator== (const LoopRegion&) const noexcept = default;

    bool isTurnedAt (double position) const noexcept { return position >= end || position <= begin; }

    /** True where a reading can't stay. */
    bool isLeftAt (double position) const noexcept { return isTurnedAt (position) || position < floor; }

    /** The place at which a reading that has come to an end of the loop goes on. What it has gone past the end is kept, so that a
        thousand rounds last a thousand times the loop; from further outside a manual loop it goes to the loop's very end.
        @param rate   frames of the last step */
    PX_AUDIO_THREAD double turned (double position, double rate) const noexcept;

    /** A loop that runs; one that is passed over is none. */
    bool hasLoop() const noexcept { return end < std::numeric_limits<double>::infinity(); }
    double startOfLoop() const noexcept { return loopStart; }
    double lengthOfLoop() const noexcept { return length; }

    /** True if a reading that goes straight from one place to another would not do so on this region. */
    bool changes (double from, double to) const noexcept { return isLeftAt (from) || isLeftAt (to); }

    double end = std::numeric_limits<double>::infinity(); ///< at or past it the loop begins anew
    double begin =
        -std::numeric_limits<double>::infinity(); ///< in reverse, at or below it the loop ends anew
    bool isReverse = false;                       ///< the reading goes backwards
    double floor = 0.0;                           ///< the start point: nothing is read before it

private:
    double loopStart = 0.0, length = 0.0;
    bool keepsBeat = false; ///< a beat loop: from anywhere outside, whole rounds lead back in
};
