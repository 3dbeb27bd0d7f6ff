#pragma once

#include "support/AudioThread.h"
#include "support/Relaxed.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <span>

/** The last second of a deck's input, for all who look at it off the audio thread: scope, diagnosis, recognition.

    The audio thread writes round and round; a reader copies what it has not seen yet and learns what was overwritten
    before it came. Samples are as they arrive, before gain. */
class InputTap
{
public:
    static constexpr int64_t size = 65536; // frames, a power of two: 0.34 s at 192 kHz, 1.5 s at 44.1

    struct Frame
    {
        float left = 0, right = 0;
    };

    /** Audio thread. */
    PX_AUDIO_THREAD void write (const float* left, const float* right, int frames) noexcept
    {
        const auto begin = written.get();
        for (int i = 0; i < frames; ++i)
        {
            auto& slot = (*ring)[static_cast<size_t> (begin + i) & (size - 1)];
            slot.left = left[i];
            slot.right = right[i];
        }
        written = begin + frames;
    }

    /** Frames written since the engine was made. Any thread. */
    int64_t end() const noexcept { return written; }

    /** Copies frames from a number on, or from the oldest that is whole. Any thread but the audio thread.
        @param from   moved past the last frame copied
        @returns how many were copied; a reader that lags by more than half the ring misses the oldest */
    int read (int64_t& from, std::span<Frame> into) const noexcept
    {
        const auto last = written.get();
        if (last - from > size / 2)
            from = last - size / 2;
        const auto count =
            static_cast<int> (std::min<int64_t> (last - from, static_cast<int64_t> (into.size())));
        for (int i = 0; i < count; ++i)
        {
            const auto& slot = (*ring)[static_cast<size_t> (from + i) & (size - 1)];
            into[static_cast<size_t> (i)] = { slot.left, slot.right };
        }
        from += count;
        return count;
    }

private:
    struct Slot
    {
        Relaxed<float> left, right;
    };

    std::unique_ptr<std::array<Slot, size>> ring = std::make_unique<std::array<Slot, size>>();
    Published<int64_t> written;
};
