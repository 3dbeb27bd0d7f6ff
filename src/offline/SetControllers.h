#pragma once

#include "midi/system/MidiSystem.h"
#include "offline/OfflineHost.h"
#include "offline/set/SetScript.h"

#include <optional>

/** The controllers and scripts of a set. What they do happens on the calling thread at once, and the scripts' timer runs in
    rendered time, so that a set with scripts is twice the same. */
class SetControllers
{
public:
    explicit SetControllers (OfflineHost&);

    /** Plays a message into the mapping, then into the scripts in the order of their loading. */
    void play (const SetScript::Midi&);

    /** Builds and starts a script. @returns false if it does not run; takeTold() says why */
    bool loadScript (const juce::File&);

    /** The frame of the run before which tick() is due; nothing without scripts. */
    std::optional<int64_t> nextTick() const;

    /** Calls the timers of all scripts. */
    void tick();

    /** Stops all scripts. */
    void end() { midi.scripts.stopScripts(); }

    /** Takes what was sent to controllers since the last time, in hexadecimal digits. The lamps of the mapping are stated
        first. */
    juce::StringArray takeSent();

    /** Takes what scripts and their compiler have said since the last time. */
    std::vector<ScriptEntry> takeTold();

private:
    int64_t frameOfTick (int64_t number) const;

    OfflineHost& host;
    MidiSystem midi;
    juce::StringArray sent;
    int64_t ticks = 0; ///< the number of the next one; 0 before the first script
    uint64_t told = 0; ///< the journal's number of what was taken
};
