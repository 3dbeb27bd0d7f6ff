#pragma once

#include "midi/mapping/MidiMapping.h"

#include <juce_core/juce_core.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

/** A mapping file's content. */
struct MidiMappingFile
{
    std::vector<std::pair<int, MidiMappingRow>> rows; ///< commands only, limited to their ranges
    std::optional<bool> showsLamps;                   ///< nothing in files of other programs
};

/** Reads a mapping. Takes any bytes. @returns nothing if they are no mapping as a whole */
std::optional<MidiMappingFile> parseMidiMapping (std::unique_ptr<juce::InputStream>);

/** The text of a mapping file: all rows, assigned or not. */
juce::String mappingText (const MidiMapping&);

/** Loads a file over a table: a row that it doesn't name keeps what it had.
    @returns false if the file is missing, can't be read or is no mapping; then the table is as before */
bool loadMidiMapping (const juce::File&, MidiMapping&);

/** @returns false if the file can't be written; then it is as before */
bool saveMidiMapping (const MidiMapping&, const juce::File&);
