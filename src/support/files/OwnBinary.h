#pragma once

#include <juce_core/juce_core.h>

/** The file that this code was loaded from: the program's, however it was started, with links followed, or the plug-in's as
    its host names it. Any thread that may block. */
juce::File ownBinary();
