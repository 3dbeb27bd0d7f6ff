#pragma once

#include "midi/script/ScriptMessageQueue.h"

#include <juce_core/juce_core.h>

#include <chrono>
#include <functional>

/** Takes back what AngelScript keeps for a thread: stands first in whatever a thread does with scripts. */
struct ScriptThreadCleanup
{
    ScriptThreadCleanup() = default;
    ~ScriptThreadCleanup();
    ScriptThreadCleanup (const ScriptThreadCleanup&) = delete;
    ScriptThreadCleanup& operator= (const ScriptThreadCleanup&) = delete;
};

/** Hands each message of a queue to a script. Ends when it is told to and the queue is closed. */
class InputControllerThread : public juce::Thread
{
public:
    /** Messages that are handed over in a row while more are waiting; then the thread rests for 1 ms. A lone message never
        waits, and a flood leaves the processor to others. */
    static constexpr int messagesInARow = 32;

    InputControllerThread (ScriptMessageQueue& q, std::function<void (const ScriptMidiMessage&)> h)
        : Thread ("InputControllerThread"),
          queue (q),
          handle (std::move (h))
    {
    }

private:
    void run() override;

    ScriptMessageQueue& queue;
    const std::function<void (const ScriptMidiMessage&)> handle;
};

/** Calls a script again and again, with a pause after each call. */
class TimerControllerThread : public juce::Thread
{
public:
    TimerControllerThread (std::chrono::milliseconds p, std::function<void()> t)
        : Thread ("TimerControllerThread"),
          pause (p),
          tick (std::move (t))
    {
    }

private:
    void run() override;

    const std::chrono::milliseconds pause;
    const std::function<void()> tick;
};
