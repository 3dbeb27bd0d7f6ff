#pragma once

#include <juce_core/juce_core.h>

/** A command's name in the language in use, as the editor shows it. Empty for a number without a command. Not on the audio
    thread; hosts get the English name, which they keep. */
juce::String commandTitle (int number);
