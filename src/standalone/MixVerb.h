#pragma once

#include <juce_core/juce_core.h>

/** "platterdex mix ...": renders a mix of tracks into a file. */
int runMix (const juce::StringArray& arguments);
