#pragma once

#include "support/EngineListener.h"

#include <array>
#include <atomic>
#include <vector>

/** Carries events and messages from any thread to the engine's listeners.

    post() is wait-free and may be called on the audio thread; deliver() calls the listeners. An event that finds the
    queue of 1024 full is dropped: listeners poll state anyway, events only make them quick. */
class ListenerList
{
public:
    void add (EngineListener&);
    void remove (EngineListener&);

    /** Any thread, including the audio thread. */
    void post (EngineEvent, int index) noexcept;

    /** The same for a fixed message. @param text   a string literal */
    void postMessage (const char* text, int deck) noexcept;

    /** Hands everything posted so far to the listeners. One thread at a time, the message thread if there is one. */
    void deliver();

private:
    struct Entry
    {
        EngineEvent event{};
        const char* text = nullptr;
        int index = 0;
    };

    /** A slot is free for the writer of turn t when `turn` is t, and full for the reader when it is t + 1. */
    struct Slot
    {
        std::atomic<uint32_t> turn{ 0 };
        Entry entry;
    };

    static constexpr uint32_t capacity = 1024;

    void push (const Entry&) noexcept;
    bool pop (Entry&) noexcept;

    std::array<Slot, capacity> slots;
    std::atomic<uint32_t> writeTurn{ 0 };
    uint32_t readTurn = 0;

    juce::CriticalSection listenerLock;
    std::vector<EngineListener*> listeners;

public:
    ListenerList() noexcept;
};
