#pragma once

#include "deck/DeckWorld.h"

/** The speed at which a deck is to play in a block. Audio thread. */
namespace TempoSync
{
/** The tempo that a deck follows. */
struct Followed
{
    double tempo;           ///< speed factor
    double beatRatio = 1.0; ///< see SyncState::beatRatio
};

/** The speed factor of the fader, or of the reference while Sync is on: the master deck, or the host. A factor beyond what
    key lock can play, 0.5 to 1.5, is halved or doubled, whether key lock is on or not, so that its switch leaves the tempo
    alone; where that does not help either it is the fader's. A reference that moves around such a border does not
    make the deck change to and fro. With the stretcher bypassed every factor is followed. */
PX_AUDIO_THREAD Followed followed (DeckWorld&, const DeckPlayer&) noexcept;

/** The speed factor that is played: a followed one with what holds the phase, and with the hand on jog and nudge, as far as the
    stretcher can play it. */
PX_AUDIO_THREAD double withHand (const DeckWorld&, const DeckPlayer&, double followedTempo) noexcept;

/** Frames of the file per output frame that the deck comes to play in this block, negative in reverse. */
PX_AUDIO_THREAD double speed (DeckWorld&, const DeckPlayer&) noexcept;

/** Frames of the file that a deck is read less, until its rate has reached the speed, than if it had it at once.
    The rate approaches by a geometric series: this is its sum. */
PX_AUDIO_THREAD double lagOfRate (DeckWorld&, const DeckPlayer&, double rate) noexcept;
}
