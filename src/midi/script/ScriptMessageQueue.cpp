#include "midi/script/ScriptMessageQueue.h"

#include "support/AudioThread.h"

bool ScriptMessageQueue::push (ScriptMidiMessage message)
{
    assertMayBlock();
    {
        std::unique_lock guard (lock);
        const auto hasRoom = [this] { return !isOpen || count < capacity; };
        if (!hasRoom() && !isStuck)
            isStuck = !notFull.wait_for (guard, patience, hasRoom);
        if (!isOpen)
            return true;
        if (count == capacity)
            return false;
        ring[(first + count++) % capacity] = std::move (message);
    }
    notEmpty.notify_one();
    return true;
}

std::optional<ScriptMidiMessage> ScriptMessageQueue::pop()
{
    std::optional<ScriptMidiMessage> message;
    {
        std::unique_lock guard (lock);
        notEmpty.wait (guard, [this] { return !isOpen || count > 0; });
        if (!isOpen)
            return message;
        message = std::move (ring[first]);
        first = (first + 1) % capacity;
        --count;
        isStuck = false;
    }
    notFull.notify_one();
    return message;
}

bool ScriptMessageQueue::hasMessage() const
{
    const std::lock_guard guard (lock);
    return count > 0;
}

void ScriptMessageQueue::open()
{
    const std::lock_guard guard (lock);
    first = count = 0;
    isOpen = true;
    isStuck = false;
}

void ScriptMessageQueue::close()
{
    {
        const std::lock_guard guard (lock);
        isOpen = false;
    }
    notFull.notify_all();
    notEmpty.notify_all();
}
