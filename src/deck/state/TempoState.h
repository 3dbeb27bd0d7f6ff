#pragma once

#include "deck/state/PhaseHold.h"
#include "support/Relaxed.h"

#include <cstdint>

/** The tempo and key of a deck as its faders stand. They stay with the deck when its track goes. Any thread. */
struct TempoState
{
    Relaxed<double> pitch { 0.5 };  ///< the fader, 0 to 1
    Relaxed<double> keyTuning;      ///< semitones, -12 to 12
    Relaxed<int8_t> keyLock { 1 };  ///< the key stays when the tempo moves
    Relaxed<double> factor { 1.0 }; ///< speed of the last block, out of fader, sync, bend and nudge

    bool operator== (const TempoState&) const noexcept = default;
};

/** A deck's request for the phase of its reference, and how it is held. Written under the callback lock. */
struct SyncState
{
    static constexpr int8_t besideGrid = 2; ///< a request that continues the grid where it has no beats

    Relaxed<int8_t> resync;  ///< asks for an alignment in the next block: 1, or besideGrid
    Relaxed<int8_t> oneShot; ///< Sync clears itself after the first tempo match

    /** Beats of the deck that pass with one of its reference: 1; a half or 2 where the tempos are too far apart for that;
        0 where they are too far apart for any, so that the deck plays by its fader. 1 without Sync. */
    Relaxed<double> beatRatio { 1.0 };
    PhaseHold hold;

    bool operator== (const SyncState&) const noexcept = default;
};

/** The taps of a tempo by hand. Times in ms of the engine's clock. Under the callback lock. */
struct TapTempo
{
    uint32_t taps = 0, first = 0, last = 0;

    bool operator== (const TapTempo&) const noexcept = default;
};
