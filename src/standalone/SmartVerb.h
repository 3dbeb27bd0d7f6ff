#pragma once

#include <juce_core/juce_core.h>

/** The verb "smart": makes, changes and shows smart playlists. */
int runSmart (const juce::StringArray& arguments);
