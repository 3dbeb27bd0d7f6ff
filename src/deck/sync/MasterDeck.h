#pragma once

#include "deck/DeckWorld.h"

/** The deck that the others follow. */
namespace MasterDeck
{
/** Chooses the master deck anew after a deck has started or stopped; inside a host the host leads and nothing changes.
    The caller holds the callback lock or is the audio thread. */
PX_AUDIO_THREAD void choose (DeckWorld&, const DeckPlayer& changed) noexcept;
}
