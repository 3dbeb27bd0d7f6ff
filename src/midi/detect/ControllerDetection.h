#pragma once

#include "midi/detect/DetectionRules.h"
#include "midi/system/MidiSystem.h"

/** A run over the names of the MIDI ports: offers the user the native driver of each controller that is known, opens the
    ports of those that are accepted and selects the last of them. On a first run nobody is asked. The run is logged in
    "auto-detect-controllers.log". Message thread. */
void autoDetectControllers (MidiSystem&);

/** Offers a single port's controllers in the same way, without a log: for one that was plugged in. */
void offerControllers (MidiSystem&, const juce::String& port);
