#pragma once

#include "plugins/formats/PluginState.h"

#include <array>
#include <string>
#include <string_view>

/** A slot as it is kept: its plug-in with its state, and the user's choices. */
struct SavedSlot
{
    juce::String plugin; ///< JUCE's identifier of a known plug-in; empty for none
    juce::String name;   ///< to be shown when the plug-in is missing
    PluginState state;
    bool isLeftOut = false; ///< it is not loaded at the start, since the program once died of loading
    bool isOn = true, isInsert = false;
    double dryWet = 0.5;                        ///< 0 to 1
    std::array<int, 2> paramIndices { -1, -1 }; ///< -1 not assigned
};

using SavedSlots = std::array<SavedSlot, 4>;

/** The file "vst_slots.xml". */
namespace SlotsFile
{
struct Read
{
    SavedSlots slots;
    bool isDamaged = false; ///< the root is another one, or the file breaks off
};

/** Reads the slots. Takes any bytes; what is missing or out of its range has its default. */
Read read (std::string_view bytes);

std::string write (const SavedSlots&);
}
