#include "support/ListenerList.h"

#include "support/AudioThread.h"

#include <algorithm>

ListenerList::ListenerList() noexcept
{
    for (uint32_t i = 0; i < capacity; ++i)
        slots[i].turn.store (i, std::memory_order_relaxed);
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
    push ({ event, nullptr, index });
}

void ListenerList::postMessage (const char* text, int deck) noexcept
{
    push ({ {}, text, deck });
}

void ListenerList::push (const Entry& entry) noexcept
{
    auto turn = writeTurn.load (std::memory_order_relaxed);
    for (;;)
    {
        auto& slot = slots[turn % capacity];
        const auto ahead = static_cast<int32_t> (slot.turn.load (std::memory_order_acquire) - turn);
        if (ahead < 0)
            return; // full
        if (ahead > 0)
        {
            turn = writeTurn.load (std::memory_order_relaxed);
            continue;
        }
        if (writeTurn.compare_exchange_weak (turn, turn + 1, std::memory_order_relaxed))
        {
            slot.entry = entry;
            slot.turn.store (turn + 1, std::memory_order_release);
            return;
        }
    }
}

bool ListenerList::pop (Entry& entry) noexcept
{
    auto& slot = slots[readTurn % capacity];
    if (slot.turn.load (std::memory_order_acquire) != readTurn + 1)
        return false;
    entry = slot.entry;
    slot.turn.store (readTurn + capacity, std::memory_order_release);
    ++readTurn;
    return true;
}

void ListenerList::deliver()
{
    assertMayBlock();
    Entry entry;
    while (pop (entry))
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
            if (std::find (listeners.begin(), listeners.end(), listener) == listeners.end())
                continue;
            if (entry.text != nullptr)
                listener->engineMessage (entry.text, entry.index);
            else
                listener->engineEvent (entry.event, entry.index);
        }
    }
}
