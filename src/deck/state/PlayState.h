#pragma once

#include "support/Relaxed.h"

#include <cstdint>

/** The transport of a deck. Flags are 0 or 1. Written under the callback lock, read anywhere. */
struct PlayState
{
    Relaxed<int8_t> on;             ///< plays, or is to play
    Relaxed<int8_t> cueHold;        ///< plays only because Cue is held
    Relaxed<int8_t> currentCue;     ///< selected slot, 0 to 15
    Relaxed<int8_t> reverse;        ///< plays backwards
    Relaxed<int8_t> nudge;          ///< -1, 0 or 1
    Relaxed<int8_t> loadNext;       ///< automix asks for the next track
    Relaxed<int32_t> elapsedOutput; ///< output frames in play
    Relaxed<int8_t> followsRecord;  ///< a control record moves the deck: `on` follows its speed
    bool cuePlayArmed = false;      ///< a press of Cue/Play on the stopped deck waits for its release

    bool operator== (const PlayState&) const noexcept = default;
};

/** The hand on a deck's jog wheel. Written under the callback lock, read anywhere. */
struct JogState
{
    Relaxed<int8_t> scratchOn;    ///< nothing but the jog moves the deck
    Relaxed<int8_t> scratchEnded; ///< the hand is off, and the jog not yet at rest
    Relaxed<int8_t> scratchArmed; ///< the scratch ends by itself when the wheel stands still
    Relaxed<int8_t> scratchKeep;  ///< not so: a hand is there
    Relaxed<int8_t> touched;      ///< the hand is on the wheel
    uint32_t lastTime = 0;        ///< of a jog message, in ms of the engine's clock

    bool operator== (const JogState&) const noexcept = default;
};
