#pragma once

#include "fx/reverb/Flushed.h"

#include "support/AudioThread.h"

#include <algorithm>
#include <span>

/** One of the reverb's all-pass filters: out = b - x, stored x + b / 2, where b was stored a line ago. */
class AllPass
{
public:
    /** Gives the line, which is taken to be silent. */
    PX_AUDIO_THREAD void setLine (std::span<float> memory) noexcept
    {
        buffer = memory;
        index = 0;
    }

    /** In place. @param frames   at most the line's length */
    PX_AUDIO_THREAD void process (float* samples, int frames) noexcept
    {
        const auto count = static_cast<size_t> (frames);
        const auto first = std::min (count, buffer.size() - index);
        run (buffer.data() + index, samples, first);
        run (buffer.data(), samples + first, count - first);
        index = (index + count) % buffer.size();
    }

private:
    static void run (float* __restrict line, float* __restrict samples, size_t count) noexcept
    {
        for (size_t i = 0; i < count; ++i)
        {
            const auto stored = line[i];
            line[i] = flushed (samples[i] + stored * 0.5f);
            samples[i] = stored - samples[i];
        }
    }

    std::span<float> buffer;
    size_t index = 0;
};
