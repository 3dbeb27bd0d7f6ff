#pragma once

#include "midi/system/MidiSystem.h"

#include <juce_events/juce_events.h>

#include <set>

/** Watches for controllers that come while the program runs, and offers each that is known once; on a first run it detects
    those that are there when the ports have been looked at first. Message thread. */
class ControllerWatch : private MidiPortListener, private juce::AsyncUpdater
{
public:
    explicit ControllerWatch (MidiSystem&);
    ~ControllerWatch() override;

    /** Carries out at once what waits for the message loop; for those who drive without one. */
    void serve() { handleUpdateNowIfNeeded(); }

private:
    void portsChanged() override { triggerAsyncUpdate(); }
    void handleAsyncUpdate() override;

    MidiSystem& midi;
    std::set<juce::String> known; ///< the ports that are or were there
    bool hasLooked = false;
};
