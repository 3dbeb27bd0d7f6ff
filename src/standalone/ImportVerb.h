#pragma once

#include <juce_core/juce_core.h>

/** The verb "import": brings files and folders into the library. */
int runImport (const juce::StringArray& arguments);
