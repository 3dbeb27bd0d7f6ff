#pragma once

#include "deck/DeckWorld.h"
#include "deck/state/SongPosition.h"

/** The beats that synced pads follow, as they pass in one block: the master deck's as they are heard or, inside a host, the
    host's. Phases count entries of a grid, two to a beat, from the grid's anchor. */
struct SamplerClock
{
    /** Reads the reference after the decks have played a block of so many frames. */
    PX_AUDIO_THREAD static SamplerClock of (DeckWorld&, const SongPosition& host, int frames) noexcept;

    /** @param frame   of the block; its end is at `frames` */
    double phaseAt (double frame) const noexcept { return phaseAtEnd - (frames - frame) * perFrame; }

    double bpm = SongPosition::defaultBpm; ///< as heard

    /** The phase is known and moves with the tempo alone: no hand holds the master, no loop takes it off the beat. */
    bool isRunning = false;

    /** A master that plays backwards lends its beats, but not their numbers. */
    bool isNumbered = true;

    double phaseAtEnd = 0.0; ///< of the block
    double perFrame = 0.0;   ///< output frame; above 0
    int frames = 0;
};
