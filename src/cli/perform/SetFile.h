#pragma once

#include "offline/SetScript.h"

#include <juce_core/juce_core.h>

#include <optional>

/** Reads a set from its file. @returns nothing after a report of what is wrong */
std::optional<SetScript> readSetFile (const juce::File&);
