#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

/** The state of a plug-in, from which another instance is made like it. Message thread. */
struct PluginState
{
    static constexpr int noProgram = -1;

    juce::MemoryBlock bytes;
    int program = noProgram; ///< the one that the bytes belong to; none if they hold it

    /** Asks a plug-in, which may be playing: nothing of it changes meanwhile.

        JUCE reads the bank of a VST 2 plug-in without a state of its own by switching it through all its programs, which
        would be heard: of such a one it is the current program alone. */
    static PluginState of (juce::AudioProcessor&);

    /** Gives it to a plug-in that does not play yet. */
    void giveTo (juce::AudioProcessor&) const;
};
