#pragma once

#include "support/AudioThread.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

/** A ring of messages of any length for one writer and one reader on two threads, neither of which ever waits.
    A message that finds no room is refused as a whole. */
class MessageRing
{
public:
    /** @param bytes   a power of two; a message takes 4 more than it is long */
    explicit MessageRing (uint32_t bytes) : storage (bytes) {}

    /** @param tag   any number below 256, kept with the message. @returns false if there is no room */
    PX_AUDIO_THREAD bool write (uint8_t tag, std::span<const uint8_t> message) noexcept
    {
        const auto size = static_cast<uint32_t> (message.size());
        const auto from = written.load (std::memory_order_relaxed);
        const auto room =
            static_cast<uint32_t> (storage.size()) - (from - taken.load (std::memory_order_acquire));
        if (size > 0xffffffu || size + 4 > room)
            return false;
        const uint32_t head = size | static_cast<uint32_t> (tag) << 24;
        copyIn (from, { reinterpret_cast<const uint8_t*> (&head), 4 });
        copyIn (from + 4, message);
        written.store (from + 4 + size, std::memory_order_release);
        return true;
    }

    /** True if all that was written has been taken. Any thread. */
    bool isEmpty() const noexcept
    {
        return written.load (std::memory_order_acquire) == taken.load (std::memory_order_acquire);
    }

    /** Length of the message at the front, or 0 if there is none. A message without bytes is never written. */
    PX_AUDIO_THREAD uint32_t nextSize() const noexcept
    {
        const auto at = taken.load (std::memory_order_relaxed);
        return written.load (std::memory_order_acquire) == at ? 0 : headAt (at) & 0xffffffu;
    }

    /** Takes the message at the front away; there must be one. @param target   of nextSize() bytes at least
        @returns its tag */
    PX_AUDIO_THREAD uint8_t take (uint8_t* target) noexcept
    {
        const auto at = taken.load (std::memory_order_relaxed);
        const auto head = headAt (at);
        const auto size = head & 0xffffffu;
        copyOut (at + 4, target, size);
        taken.store (at + 4 + size, std::memory_order_release);
        return static_cast<uint8_t> (head >> 24);
    }

private:
    uint32_t headAt (uint32_t at) const noexcept
    {
        uint32_t head = 0;
        copyOut (at, reinterpret_cast<uint8_t*> (&head), 4);
        return head;
    }

    uint32_t placeOf (uint32_t at) const noexcept
    {
        return at & (static_cast<uint32_t> (storage.size()) - 1);
    }

    void copyIn (uint32_t at, std::span<const uint8_t> bytes) noexcept
    {
        const auto place = placeOf (at);
        const auto first = std::min<size_t> (bytes.size(), storage.size() - place);
        std::memcpy (storage.data() + place, bytes.data(), first);
        std::memcpy (storage.data(), bytes.data() + first, bytes.size() - first);
    }

    void copyOut (uint32_t at, uint8_t* target, size_t size) const noexcept
    {
        const auto place = placeOf (at);
        const auto first = std::min (size, storage.size() - place);
        std::memcpy (target, storage.data() + place, first);
        std::memcpy (target + first, storage.data(), size - first);
    }

    std::vector<uint8_t> storage;
    std::atomic<uint32_t> written { 0 }, taken { 0 }; ///< counted on without end
};
