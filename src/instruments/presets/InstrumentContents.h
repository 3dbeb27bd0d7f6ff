#pragma once

#include "instruments/preset/ContentStore.h"

class SmartKnobs;

/** The contents of the instruments as they are kept for the user: a file a knob, in the format of its presets. */
namespace InstrumentContents
{
/** @param folder   of the files; need not be there */
ContentStore makeStore (const juce::File& folder, SmartKnobs&);
}
