#pragma once

#include "support/language/Translate.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <memory>

class CPlatterdex;
struct EngineSettings;

/** The advanced panels that a seat beside the waveform can show; the numbers stand in the settings. */
namespace UtilityPanels
{
enum Index
{
    loop,
    cue,
    grid,
    dvs,
    key,
    smartKnob,
    tempo,
    empty,
    count
};

inline constexpr std::array<const char*, count> names { N_ ("Loop"),  N_ ("Cue"),  N_ ("Grid"),
                                                        N_ ("DVS"),   N_ ("Key"),  N_ ("SmartKnob"),
                                                        N_ ("Tempo"), N_ ("Empty") };

/** True if a panel's function exists: only such panels are offered. */
bool isOffered (int index);

/** Gives a new user's decks two seats a side: loops and tempo outside, then hot cues, and the grid where there is room. */
void layOutForNewUser (EngineSettings&);

/** @returns null for the empty panel and for one that isn't offered */
std::unique_ptr<juce::Component> make (int index, CPlatterdex&, int deck);
}
