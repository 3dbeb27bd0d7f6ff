#pragma once

#include "support/AudioThread.h"

#include <algorithm>
#include <array>
#include <vector>

/** Delays a stereo pair by a few frames. Memory is taken at construction. Audio thread. */
class PairDelay
{
public:
    static constexpr int mostFrames = 1024;

    /** @param frames   0 to 1024. Another one than before empties the delay. */
    PX_AUDIO_THREAD void setFrames (int frames) noexcept
    {
        if (frames == length)
            return;
        length = std::clamp (frames, 0, mostFrames);
        position = 0;
        for (auto& line : lines)
            std::fill (line.begin(), line.end(), 0.0f);
    }

    PX_AUDIO_THREAD int frames() const noexcept { return length; }

    /** In place. */
    PX_AUDIO_THREAD void process (float* left, float* right, int frames) noexcept
    {
        for (int done = 0; length > 0 && done < frames;)
        {
            const auto piece = std::min (frames - done, length - position);
            std::swap_ranges (left + done, left + done + piece, lines[0].begin() + position);
            std::swap_ranges (right + done, right + done + piece, lines[1].begin() + position);
            position = (position + piece) % length;
            done += piece;
        }
    }

private:
    std::array<std::vector<float>, 2> lines { std::vector<float> (mostFrames),
                                              std::vector<float> (mostFrames) };
    int length = 0, position = 0;
};
