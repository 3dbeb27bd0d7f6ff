#pragma once

#include <juce_core/juce_core.h>

/** The verb "export": writes a playlist or another list of songs for other programs. */
int runExport (const juce::StringArray& arguments);
