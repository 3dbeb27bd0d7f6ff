#pragma once

#include "support/PostQueue.h"

#include <juce_core/juce_core.h>

#include <atomic>
#include <cstdint>
#include <optional>

class CPlatterdex;

/** A queue of all that is done to an engine from outside: commands and loads, each with its time. One reader takes what any
    thread writes; nobody waits for it, and what finds no room is counted.

    An engine tells the log of the process, if there is one and it follows this engine. A log outlives the engine that it
    follows, and there is one at a time: an application has one engine. */
class HandLog
{
public:
    /** A command, or the load of a track. */
    struct Action
    {
        int64_t at = 0; ///< ns of a clock that never goes back
        int number = 0; ///< of a command; 0 for a load
        float value = 0.0f, arg1 = 1.0f, arg2 = 1.0f;
        int deck = 0;                        ///< of a load
        std::optional<juce::String> path {}; ///< of a load
    };

    HandLog();
    ~HandLog();
    HandLog (const HandLog&) = delete;
    HandLog& operator= (const HandLog&) = delete;

    /** From now on the actions of this engine are logged. */
    void follow (const CPlatterdex&) noexcept;

    /** The log that follows an engine, or null. Any thread, also one of real time. */
    static HandLog* of (const CPlatterdex&) noexcept;

    /** Any thread, also one of real time. */
    void command (int number, float value, float arg1, float arg2) noexcept;

    /** Any thread that may block. @param deck   0 to 3 */
    void load (const juce::String& path, int deck);

    /** The next action, or nothing. One thread at a time. */
    std::optional<Action> next();

    /** The number of actions that found no room. Any thread. */
    uint32_t lost() const noexcept { return lostCount.load (std::memory_order_relaxed); }

    /** The clock of Action::at. */
    static int64_t now() noexcept;

private:
    struct Entry
    {
        int64_t at = 0;
        int number = 0;
        float value = 0.0f, arg1 = 1.0f, arg2 = 1.0f;
        int deck = 0;
        const juce::String* path = nullptr; ///< owned
    };

    std::atomic<const CPlatterdex*> followed { nullptr };
    PostQueue<Entry, 8192> queue; ///< some seconds of four jog wheels
    std::atomic<uint32_t> lostCount { 0 };
};
