#pragma once

#include "support/AudioThread.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

/** The latest stretch of a long signal of several channels, addressed by position; positions may be negative. */
class SampleRing
{
public:
    SampleRing (int channels, int leastFrames)
        : size (static_cast<int> (std::bit_ceil (static_cast<unsigned> (leastFrames)))),
          data (static_cast<size_t> (channels), std::vector<float> (static_cast<size_t> (size)))
    {
    }

    PX_AUDIO_THREAD int capacity() const noexcept { return size; }

    /** Calls use (samples, offset, count) for each contiguous piece of a channel's frames; at most two. */
    template <typename Use>
    PX_AUDIO_THREAD void forPieces (int channel, int64_t position, int count, Use&& use) noexcept
    {
        auto* const samples = data[static_cast<size_t> (channel)].data();
        const auto start = static_cast<int> (position & (size - 1));
        const auto first = std::min (count, size - start);
        use (samples + start, 0, first);
        if (count > first)
            use (samples, first, count - first);
    }

    PX_AUDIO_THREAD void clear (int64_t position, int count) noexcept
    {
        for (int channel = 0; channel < static_cast<int> (data.size()); ++channel)
            forPieces (channel, position, std::min (count, size),
                       [] (float* samples, int, int n) { std::fill_n (samples, n, 0.0f); });
    }

private:
    const int size;
    std::vector<std::vector<float>> data;
};
