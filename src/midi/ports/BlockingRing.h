#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <vector>

/** A bounded queue for many writers and one reader, in which nothing is lost: a writer waits while it is full, the reader
    while it is empty. Never on the audio thread.
    @tparam Item   default constructible and movable */
template <typename Item, size_t capacity>
class BlockingRing
{
public:
    /** Waits while the queue is full. After close() the item is dropped at once. */
    void push (Item item)
    {
        std::unique_lock sl (lock);
        notFull.wait (sl, [this] { return count < capacity || isClosed; });
        if (isClosed)
            return;
        items[(first + count) % capacity] = std::move (item);
        if (++count == 1)
            notEmpty.notify_one();
    }

    /** Waits for an item. @returns false once the queue is closed */
    bool pop (Item& item)
    {
        std::unique_lock sl (lock);
        notEmpty.wait (sl, [this] { return count > 0 || isClosed; });
        if (isClosed)
            return false;
        item = takeFirst();
        notFull.notify_all();
        return true;
    }

    /** Waits for items and takes all that are there. @param target   is emptied first. @returns false once the queue is closed */
    bool takeAll (std::vector<Item>& target)
    {
        target.clear();
        std::unique_lock sl (lock);
        notEmpty.wait (sl, [this] { return count > 0 || isClosed; });
        if (isClosed)
            return false;
        while (count > 0)
            target.push_back (takeFirst());
        notFull.notify_all();
        return true;
    }

    /** Lets everybody who waits go, and drops what is in the queue and what comes, until open(). */
    void close()
    {
        const std::scoped_lock sl (lock);
        isClosed = true;
        notFull.notify_all();
        notEmpty.notify_all();
    }

    /** Takes items again, from an empty queue on. */
    void open()
    {
        const std::scoped_lock sl (lock);
        isClosed = false;
        first = count = 0;
    }

private:
    Item takeFirst()
    {
        auto item = std::move (items[first]);
        first = (first + 1) % capacity;
        --count;
        return item;
    }

    std::mutex lock;
    std::condition_variable notFull, notEmpty;
    std::array<Item, capacity> items {};
    size_t first = 0, count = 0;
    bool isClosed = false;
};
