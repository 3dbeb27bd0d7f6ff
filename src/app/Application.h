#pragma once

#include <juce_core/juce_core.h>

/** Runs the application with its window until the user closes it.
    @param arguments   the command line without the program's name
    @returns the exit code of the process */
int runApplication (const juce::StringArray& arguments);
