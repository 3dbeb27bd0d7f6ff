#pragma once

#include <juce_core/juce_core.h>

#include <span>
#include <string>
#include <string_view>

class SmartKnobs;

/** The presets of the SmartKnobs: the program's own, by their ids, and the user's, by their files.

    What loads or saves returns a sentence for the user, "" if all is well; a preset that can't be read leaves the knob as it
    is. Any thread but the audio thread. Indices as in SmartKnobs. */
namespace SmartKnobLibrary
{
struct Entry
{
    int id;
    const char* name;
    std::string_view text; ///< of the preset file, without a name
};

/** A submenu. */
struct Group
{
    const char* name;
    std::span<const Entry> entries;
};

/** The program's own, in the order of the menu. */
std::span<const Group> groups();

/** @returns null for an id that no preset has */
const Entry* find (int id);

/** Rows that a preset chosen on the deck loads: those of the plug-in slot stay. */
inline constexpr int rowsOfChannel = 16;

/** Rows that an editor loads. */
inline constexpr int allRows = 20;

std::string loadFactory (SmartKnobs&, int deck, int knob, int id);
std::string loadFile (SmartKnobs&, int deck, int knob, const juce::File&, int rows = rowsOfChannel);

/** Saves all rows. The file's name is the preset's. */
std::string saveFile (const SmartKnobs&, int deck, int knob, const juce::File&);
}
