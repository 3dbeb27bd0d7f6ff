#pragma once

#include "deck/AdecSharedLibrary.h"
#include "deck/DeckWorld.h"

/** Decodes a whole file into the deck's memory, waveform data on the way, until its end, the end of the memory or the
    deck's cancelLoad. The decoder library is asked first; where it gives no frame, the toolkit's readers are.
    Frames, their rate and progress stand in the deck; a file that gives none leaves loadedFrames at 0. On the deck's
    loader thread. */
void decodeTrack (const juce::File&, const AdecSharedLibrary&, DeckPlayer&, DeckWorld&);
