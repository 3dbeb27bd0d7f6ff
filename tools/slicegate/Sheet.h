#pragma once

#include "PatternText.h"

#include <juce_core/juce_core.h>

/** Draws all patterns on one picture: for each the way through the track (blue; the deck's own way is the thin line) and the
    level (orange). @returns false if the file can't be written */
bool drawSheet (const std::vector<PatternGroup>&, const juce::File& png);
