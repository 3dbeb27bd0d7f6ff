#pragma once

#include "deck/DeckWorld.h"
#include "deck/state/SongPosition.h"

/** Phase of synced decks: a jump into it on request, and the tempo that keeps it from then on.

    Decks are compared by what is heard of them. One that a hand holds is left alone; it asks for its phase when it is let
    go. Audio thread, under the callback lock. */
namespace PhaseAlignment
{
/** The phase pass of a block, decks in order: aligns those with Sync on that were asked to, or whose reference was, and
    holds the phase of the locked ones. The reference is the master deck, or the host's song. */
PX_AUDIO_THREAD void run (DeckWorld&, const SongPosition& host) noexcept;

/** Jumps to the master's phase, near to where the deck is heard. Needs both decks playing and a beat of each grid
    within one beat's length. @returns false if that fails and nothing was done */
PX_AUDIO_THREAD bool alignToMaster (DeckWorld&, DeckPlayer&) noexcept;

/** Jumps to the phase of the host's beats, which are counted from time 0 at the present tempo. Needs deck and host
    playing and a beat within one beat's length. @returns false if that fails and nothing was done */
PX_AUDIO_THREAD bool alignToHost (DeckWorld&, DeckPlayer&, const SongPosition&) noexcept;
}
