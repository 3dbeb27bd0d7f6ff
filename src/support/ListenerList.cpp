#include "support/ListenerList.h"

#include "support/AudioThread.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <memory>

ListenerList::~ListenerList()
{
    Entry entry;
    while (queue.pop (entry))
        delete entry.text;
}

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
    queue.push ({ .event = event, .index = index });
}

void ListenerList::postMessage (const char* text, int deck) noexcept
{
    queue.push ({ .literal = text, .index = deck });
}

void ListenerList::postText (const juce::String& text, int deck)
{
    assertMayBlock();
    auto owned = std::make_unique<const juce::String> (text);
    if (queue.push ({ .text = owned.get(), .index = deck }))
        juce::ignoreUnused (owned.release()); // the queue has it now
}

void ListenerList::postGrid (const FoundGrid& grid)
{
    assertMayBlock();
    const juce::ScopedLock sl (gridLock);
    grids.push_back (grid);
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
    {
        const std::unique_ptr<const juce::String> text (entry.text);
        call (
            [&] (EngineListener& listener)
            {
                if (entry.literal != nullptr)
                    listener.engineMessage (tr (entry.literal), entry.index);
                else if (text != nullptr)
                    listener.engineMessage (*text, entry.index);
                else
                    listener.engineEvent (entry.event, entry.index);
            });
    }

    std::vector<FoundGrid> found;
    {
        const juce::ScopedLock sl (gridLock);
        found.swap (grids);
    }
    for (const auto& grid : found)
        call ([&grid] (EngineListener& listener) { listener.gridFound (grid); });
}
