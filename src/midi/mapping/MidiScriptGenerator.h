#pragma once

#include "midi/mapping/MidiMapping.h"

#include <juce_core/juce_core.h>

/** The line of a script that acts as a row does. @returns "{}" for a row that is no command */
juce::String controlSnippet (MidiControlType, int row);

/** The lines of the script that acts as a table does, save that of a control's rows only the first acts. What only this
    program's tables hold (14-bit controls, soft takeover) is written as its plain control type. */
juce::StringArray midiScriptLines (const MidiMapping&);

/** Writes the script of a table. @returns false if the file can't be written */
bool generateMidiScript (const MidiMapping&, const juce::File&);
