#pragma once

#include "plugins/formats/PluginFormats.h"

/** The scanner process's work with a plug-in. The thread of PluginFormats. */
namespace PluginProbe
{
/** Loads each plug-in of a file, asks it for its properties and prepares it once.
    @returns an entry each; one that failed, with the reason, if there is none */
std::vector<KnownPluginEntry> examine (PluginFormats&, const juce::File&);

/** Plays a plug-in for ten blocks of noise, as a slot would, after giving it a state.
    @param state   as it has once given; empty for none
    @returns one sentence on why it should not come into the program, or nothing */
juce::String tryOut (PluginFormats&, const KnownPluginEntry&, double rate, int block,
                     const juce::MemoryBlock& state);

/** The entry of a file that could not be scanned. */
KnownPluginEntry unusable (const juce::File&, VerifiedState, const juce::String& reason);
}
