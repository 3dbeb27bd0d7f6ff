#pragma once

#include "deck/DeckWorld.h"

/** The speed at which a deck is to play in a block. Audio thread. */
namespace TempoSync
{
/** The speed factor of the fader, or of the reference while Sync is on: the master deck, or the host. */
PX_AUDIO_THREAD double followed (DeckWorld&, const DeckPlayer&) noexcept;

/** A followed speed with what holds the phase, and with the hand on jog and nudge. */
PX_AUDIO_THREAD double withHand (const DeckPlayer&, double followedTempo) noexcept;

/** Frames of the file per output frame that the deck comes to play in this block, negative in reverse.
    Through the stretcher, tempos are limited. */
PX_AUDIO_THREAD double speed (DeckWorld&, const DeckPlayer&) noexcept;

/** Frames of the file that a deck is read less, until its rate has reached the speed, than if it had it at once.
    The rate approaches by a geometric series: this is its sum. */
PX_AUDIO_THREAD double lagOfRate (DeckWorld&, const DeckPlayer&, double rate) noexcept;
}
