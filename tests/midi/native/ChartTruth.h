#pragma once

#include "ChartFixture.h"

#include <optional>

/** The truth about a chart's rows, told by the names of their functions and the engine alone: no table of a model is asked. */
namespace ChartTruth
{
/** The readings of which an input of a name must change one; empty for a name that says nothing ("pad 3", "knob 2"). */
std::vector<juce::String> effectsOf (const ChartRow&);

/** True if nothing but the row's own deck may change by it. */
bool isOfItsDeckAlone (const ChartRow&);

/** The state that a lamp's name tells of. */
struct Shown
{
    double share = 0.0; ///< 0 dark, 1 lit
    bool blinks = false;
};

/** @returns nothing for a name that says nothing, which its button's press has to tell */
std::optional<Shown> shownBy (ChartFixture&, const ChartRow&);

/** The values that a lamp may have for a state. */
bool shows (const ChartRow& lamp, int value, const Shown&);
}
