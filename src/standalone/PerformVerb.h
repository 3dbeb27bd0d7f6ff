#pragma once

#include <juce_core/juce_core.h>

/** The verb "perform": plays a set of timed lines through the engine into WAV files, faster than real time. */
int runPerform (const juce::StringArray& arguments);
