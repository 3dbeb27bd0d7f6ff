#pragma once

#include <juce_core/juce_core.h>

/** The verb "list": prints songs of the library, or the albums, artists and genres that there are. */
int runList (const juce::StringArray& arguments);
