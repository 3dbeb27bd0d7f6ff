#pragma once

#include "midi/ports/MidiPort.h"

/** The name of a device behind the names that bridges give it: "a2j:Pad [20] (capture): Pad MIDI 1" and
    "Midi-Bridge:Pad 1:(capture_0) Pad MIDI 1" both are "Pad MIDI 1". A name without a bridge stays as it is. */
juce::String deviceBehindBridge (const juce::String& jackName);

/** The ports of both systems, each device once: a port of JACK that only bridges a port of the sequencer is left out. Two
    devices of one name are two in both lists. */
std::vector<MidiPortInfo> mergePorts (std::vector<MidiPortInfo> sequencer,
                                      const std::vector<MidiPortInfo>& jack);
