#pragma once

#include "deck/voice/LoopRegion.h"
#include "tracks/BeatGrid.h"

/** Waits for the next even beat on a deck's way: of the grid's entries one that lies an even number from the downbeat's.

    In a loop the way leads round its turn; a loop that holds no such beat has its start in place of one. Where no beat lies
    ahead there is nothing to wait for. Audio thread. */
class BeatWait
{
public:
    /** Asked again for each piece until it says 0, with the place that the deck has come to.
        @param place   that is heard, in frames of the file
        @param step    frames of the file per output frame
        @returns output frames until the beat is heard; 0 if that is now */
    PX_AUDIO_THREAD int framesLeft (const BeatGrid&, const LoopRegion&, double place, double step) noexcept;

    PX_AUDIO_THREAD void end() noexcept { isWaiting = false; }

private:
    /** Finds the beat. @returns frames of the file to it, nothing if there is none */
    PX_AUDIO_THREAD std::optional<double> aim (const BeatGrid&, const LoopRegion&, double place,
                                               double step) noexcept;
    PX_AUDIO_THREAD bool isPassed (const LoopRegion&, double place, double step) const noexcept;

    bool isWaiting = false;
    bool isAfterTurn = false;           ///< the beat comes when the loop has turned
    double beat = 0.0, lastPlace = 0.0; ///< frames of the file
};
