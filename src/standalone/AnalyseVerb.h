#pragma once

#include <juce_core/juce_core.h>

/** The verb "analyse": analyses files and folders and prints what was found. */
int runAnalyse (const juce::StringArray& arguments);
