#pragma once

#include "midi/mapping/MidiMapping.h"
#include "support/language/Translate.h"

#include <juce_core/juce_core.h>

#include <array>

/** The parts of the mapping table, and its texts. */
namespace MappingAreas
{
inline constexpr std::array names { N_ ("Deck A"),       N_ ("Deck B"),    N_ ("Deck C"),
                                    N_ ("Deck D"),       N_ ("Mixer"),     N_ ("Effects"),
                                    N_ ("Loop Sampler"), N_ ("Slicegate"), N_ ("Song Manager"),
                                    N_ ("Global") };

/** The area of a row, an index into names. @param row   1 to 465 */
int areaOf (int row);

/** The rows of an area whose name holds each word of a text, in order. @param area   -1 for all */
std::vector<int> rowsOf (int area, const juce::String& search);

/** A control as the table shows it: "CH 1 - NN 60", with the name that its controller has for it; nothing for a row without
    one. @param model   the selected controller's, in the list of models */
juce::String controlText (const MidiMappingRow&, int model = 0);

/** The names of the other commands that share a row's control, with commas between. */
juce::String sharedWith (const MidiMapping&, int row);
}
