#pragma once

#include <array>
#include <atomic>
#include <cstdint>

/** A bounded queue for many writers and one reader, in which nobody waits for anybody: an item that finds the queue
    full is dropped. Writers may be on any thread, the audio thread included.
    @tparam Item       small and trivially copyable
    @tparam capacity   a power of two */
template <typename Item, uint32_t capacity>
class PostQueue
{
    static_assert (capacity > 0 && (capacity & (capacity - 1)) == 0);

public:
    PostQueue() noexcept
    {
        for (uint32_t i = 0; i < capacity; ++i)
            slots[i].turn.store (i, std::memory_order_relaxed);
    }

    /** @returns false if the queue was full */
    bool push (const Item& item) noexcept
    {
        auto turn = writeTurn.load (std::memory_order_relaxed);
        for (;;)
        {
            auto& slot = slots[turn % capacity];
            const auto ahead = static_cast<int32_t> (slot.turn.load (std::memory_order_acquire) - turn);
            if (ahead < 0)
                return false;
            if (ahead > 0)
            {
                turn = writeTurn.load (std::memory_order_relaxed);
                continue;
            }
            if (writeTurn.compare_exchange_weak (turn, turn + 1, std::memory_order_relaxed))
            {
                slot.item = item;
                slot.turn.store (turn + 1, std::memory_order_release);
                return true;
            }
        }
    }

    /** One reader at a time. @returns false if the queue was empty */
    bool pop (Item& item) noexcept
    {
        auto& slot = slots[readTurn % capacity];
        if (slot.turn.load (std::memory_order_acquire) != readTurn + 1)
            return false;
        item = slot.item;
        slot.turn.store (readTurn + capacity, std::memory_order_release);
        ++readTurn;
        return true;
    }

private:
    /** A slot is free for the writer of turn t when its own turn is t, and full for the reader when it is t + 1. */
    struct Slot
    {
        std::atomic<uint32_t> turn { 0 };
        Item item {};
    };

    std::array<Slot, capacity> slots;
    std::atomic<uint32_t> writeTurn { 0 };
    uint32_t readTurn = 0;
};
