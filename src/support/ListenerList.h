#pragma once

#include "support/EngineListener.h"
#include "support/PostQueue.h"

#include <functional>
#include <vector>

/** Carries events and messages from any thread to the engine's listeners.

    post() never waits and may be called on the audio thread; deliver() calls the listeners. An event that finds the
    queue of 1024 full is dropped: listeners poll state anyway, events only make them quick. */
class ListenerList
{
public:
    ListenerList() = default;
    ~ListenerList();
    ListenerList (const ListenerList&) = delete;
    ListenerList& operator= (const ListenerList&) = delete;

    void add (EngineListener&);
    void remove (EngineListener&);

    /** Any thread, including the audio thread. */
    void post (EngineEvent, int index) noexcept;

    /** The same for a fixed message. @param text   a string literal */
    void postMessage (const char* text, int deck) noexcept;

    /** The same for a text that was made, in order with the events. Any thread that may block. */
    void postText (const juce::String& text, int deck);

    /** Tells the grid of a track. Any thread that may block; nothing is dropped. */
    void postGrid (const FoundGrid&);

    /** Hands everything posted so far to the listeners. One thread at a time, the message thread if there is one. */
    void deliver();

private:
    struct Entry
    {
        EngineEvent event {};
        const char* literal = nullptr;      ///< a fixed message
        const juce::String* text = nullptr; ///< a made one, owned; without both the entry is an event
        int index = 0;
    };

    void call (const std::function<void (EngineListener&)>&);

    PostQueue<Entry, 1024> queue;
    juce::CriticalSection gridLock;
    std::vector<FoundGrid> grids;
    juce::CriticalSection listenerLock;
    std::vector<EngineListener*> listeners;
};
