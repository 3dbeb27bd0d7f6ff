#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

/** A message on its way to a script. */
struct ScriptMidiMessage
{
    int status = 0, data = 0, value = 0;
    std::string port; ///< "NoDeviceName" where the source has no name
};

/** A bounded ring of messages from the threads of ports to the thread of a script.

    Whoever pushes into a full ring waits for room, so a script that is slow for a while loses nothing. A script that takes no
    message for as long as `patience` is not waited for again until it takes one: its port must go on for others. */
class ScriptMessageQueue
{
public:
    static constexpr size_t capacity = 512;
    static constexpr std::chrono::milliseconds patience { 250 };

    /** A closed ring takes nothing, and nobody misses it.
        @returns false if the message was dropped because the ring is full. Any thread that may block */
    bool push (ScriptMidiMessage);

    /** Waits for a message. @returns nothing once the ring is closed */
    std::optional<ScriptMidiMessage> pop();

    /** True if pop() would not wait. */
    bool hasMessage() const;

    /** Empties the ring, and lets push and pop do their work. */
    void open();

    /** Wakes up those who wait; from now on messages go nowhere. */
    void close();

private:
    mutable std::mutex lock;
    std::condition_variable notFull, notEmpty;
    std::array<ScriptMidiMessage, capacity> ring;
    size_t first = 0, count = 0;
    bool isOpen = false, isStuck = false;
};
