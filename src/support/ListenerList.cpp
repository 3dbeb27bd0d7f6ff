#include "support/ListenerList.h"

#include "support/AudioThread.h"

#include <algorithm>

void ListenerList::add (EngineListener& listener)
{
    const juce::ScopedLock sl (listenerLock);
    listeners.push_back (&listener);
}

void ListenerList::remove (EngineListener& listener)
{
    const juce::ScopedLock sl (listenerLock);
    std::erase (listeners, &listener);
}

void ListenerList::post (EngineEvent event, int index) noexcept
{
    queue.push ({ event, nullptr, index });
}

void ListenerList::postMessage (const char* text, int deck) noexcept
{
    queue.push ({ {}, text, deck });
}

void ListenerList::postTempo (const juce::String& path, double bpm)
{
    assertMayBlock();
    const juce::ScopedLock sl (tempoLock);
    tempos.push_back ({ path, bpm });
}

void ListenerList::call (const std::function<void (EngineListener&)>& tell)
{
    // A listener may leave while it is called: work on a copy and look each one up again.
    std::vector<EngineListener*> called;
    {
        const juce::ScopedLock sl (listenerLock);
        called = listeners;
    }
    for (auto* listener : called)
    {
        const juce::ScopedLock sl (listenerLock);
        if (std::find (listeners.begin(), listeners.end(), listener) != listeners.end())
            tell (*listener);
    }
}

void ListenerList::deliver()
{
    assertMayBlock();
    Entry entry;
    while (queue.pop (entry))
        call (
            [&entry] (EngineListener& listener)
            {
                if (entry.text != nullptr)
                    listener.engineMessage (entry.text, entry.index);
                else
                    listener.engineEvent (entry.event, entry.index);
            });

    std::vector<Tempo> found;
    {
        const juce::ScopedLock sl (tempoLock);
        found.swap (tempos);
    }
    for (const auto& tempo : found)
        call ([&tempo] (EngineListener& listener) { listener.tempoFound (tempo.path, tempo.bpm); });
}
