#pragma once

#include <juce_core/juce_core.h>

/** The length that a file's headers state, in seconds; 0 where they state none or the file is no audio. Any thread that may
    block. */
double statedSeconds (const juce::File&);
