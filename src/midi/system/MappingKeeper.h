#pragma once

#include "midi/mapping/MidiMapping.h"

#include <juce_core/juce_core.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

/** Writes a mapping to its file within a second of each change, whoever made it, so that the end of the process loses nothing
    that was learnt. */
class MappingKeeper
{
public:
    /** @param mayWrite   asked before each writing, on the keeper's thread or that of save()
        @param period     between two looks at the table */
    MappingKeeper (const MidiMapping&, const juce::File&, std::function<bool()> mayWrite,
                   std::chrono::milliseconds period = std::chrono::seconds (1));

    /** Begins to watch. The table is taken to be as the file has it. */
    void start();

    /** Ends the watching; a change since the last look is left to save(). */
    void stop() { thread = {}; }

    /** Writes now. Any thread that may block. @returns false if the file can't be written */
    bool save();

private:
    /** All that tells one state of the table from another. */
    struct State
    {
        uint32_t revision = 0;
        bool showsLamps = false;
        bool operator== (const State&) const = default;
    };

    State current() const { return { mapping.revision(), mapping.showsLamps }; }
    void run (const std::stop_token&);

    const MidiMapping& mapping;
    const juce::File file;
    const std::function<bool()> mayWrite;
    const std::chrono::milliseconds period;
    std::mutex lock; ///< of the file, and of `kept`
    State kept;      ///< is in the file, or could not be written
    std::condition_variable_any wake;
    std::jthread thread;
};
