#pragma once

#include "instruments/preset/ContentStore.h"
#include "instruments/slicegate/SlicegateDeckState.h"

#include <span>

class SmartKnobs;

/** The contents of the instruments as they are kept for the user: a file a knob and a file a deck's pads, in the formats of
    presets and banks. */
namespace InstrumentContents
{
/** @param folder   of the files; need not be there */
ContentStore makeStore (const juce::File& folder, SmartKnobs&, std::span<SlicegateDeckState> padsOfDecks);
}
