#pragma once

#include "instruments/envelope/EnvelopeBank.h"

#include <juce_graphics/juce_graphics.h>

#include <functional>
#include <vector>

/** A curve that an editor works on: a row of a bank, and how it is shown. */
struct EnvLane
{
    EnvelopeBank* bank = nullptr; ///< outlives the editor
    int row = 0;
    juce::String name;
    juce::Colour colour;
    std::function<juce::String (double level)> words; ///< of a level; two decimals without it
};

using EnvLanes = std::vector<EnvLane>;
