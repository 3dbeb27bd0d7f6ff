#pragma once

#include "deck/DeckWorld.h"

/** The deck's part of an audio block. Audio thread, under the callback lock that the host holds. */
namespace DeckBlock
{
/** A deck whose scratch has ended and whose jog has come to rest asks for its phase. */
PX_AUDIO_THREAD void releaseScratch (DeckPlayer&) noexcept;

/** Computes tempo and pitch, drives reader and stretcher, and fills the deck's pair with `frames` frames at the
    engine's rate, before the channel strip. A deck without frames stays silent, and stops if it plays. */
PX_AUDIO_THREAD void render (DeckWorld&, DeckPlayer&, float* left, float* right, int frames) noexcept;

/** Keeps the deck's sound of this moment to fade out over whatever comes, so that its samples may go. Before the deck's
    track is reset, under the callback lock. */
void leaveTrack (DeckWorld&, DeckPlayer&) noexcept;

/** Ends a scratch whose jog messages have stopped coming. */
PX_AUDIO_THREAD void checkTimeOuts (DeckWorld&, DeckPlayer&) noexcept;
}
