#pragma once

#include <juce_core/juce_core.h>

/** The verb "demo-tracks": writes the demo tracks into a folder and lists them. */
int runDemoTracks (const juce::StringArray& arguments);
