#pragma once

#include <juce_core/juce_core.h>

/** The verb "commands": prints the table of commands. */
int runCommands (const juce::StringArray& arguments);
