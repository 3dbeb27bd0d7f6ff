#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

/** A ring of floats for one writer and one reader on the same thread, or under one lock.

    Both indexes run over twice the size, so that a full ring and an empty one differ.
    @tparam Size   of the ring, a power of two */
template <int32_t Size>
class BasicRingBuffer
{
public:
    static constexpr int32_t bufferSize = Size;

    /** Frames that can be read, 0 to bufferSize. */
    int32_t available() const noexcept { return (writeIndex - readIndex) & bigMask; }

    /** Frames that can be written, 0 to bufferSize. */
    int32_t space() const noexcept { return bufferSize - available(); }

    /** Copies up to `count` frames in. @returns how many fitted. */
    int32_t write (const float* source, int32_t count) noexcept
    {
        count = std::clamp (count, 0, space());
        copyRegions (writeIndex, count,
                     [&] (int32_t at, int32_t done, int32_t frames)
                     { std::memcpy (buffer.get() + at, source + done, bytes (frames)); });
        writeIndex = (writeIndex + count) & bigMask;
        return count;
    }

    /** Copies up to `count` frames out. @returns how many there were. */
    int32_t read (float* target, int32_t count) noexcept
    {
        count = std::clamp (count, 0, available());
        copyRegions (readIndex, count,
                     [&] (int32_t at, int32_t done, int32_t frames)
                     { std::memcpy (target + done, buffer.get() + at, bytes (frames)); });
        readIndex = (readIndex + count) & bigMask;
        return count;
    }

    /** Takes back up to `count` of the frames that were written last and not read yet. */
    void takeBack (int32_t count) noexcept
    {
        writeIndex = (writeIndex - std::clamp (count, 0, available())) & bigMask;
    }

    void clear() noexcept { writeIndex = readIndex = 0; }

private:
    static constexpr int32_t smallMask = bufferSize - 1;
    static constexpr int32_t bigMask = 2 * bufferSize - 1;

    static size_t bytes (int32_t frames) noexcept { return static_cast<size_t> (frames) * sizeof (float); }

    /** Calls `copy` for the one or two runs of storage that `count` frames from `index` on lie in. */
    template <typename Copy>
    static void copyRegions (int32_t index, int32_t count, Copy&& copy) noexcept
    {
        const auto at = index & smallMask;
        const auto first = std::min (count, bufferSize - at);
        copy (at, 0, first);
        if (count > first)
            copy (0, first, count - first);
    }

    int32_t writeIndex = 0;
    int32_t readIndex = 0;
    std::unique_ptr<float[]> buffer = std::make_unique<float[]> (bufferSize);
};

/** The ring between a deck's reader or stretcher and its channel. */
using RingBuffer = BasicRingBuffer<8192>;
