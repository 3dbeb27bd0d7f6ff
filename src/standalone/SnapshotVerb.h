#pragma once

#include <juce_core/juce_core.h>

/** The verb "snapshot". @returns the exit code */
int runSnapshot (const juce::StringArray& arguments);
