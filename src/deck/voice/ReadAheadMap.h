#pragma once

#include "deck/state/ReadHead.h"
#include "support/AudioThread.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

/** The way from a frame that a deck's stretcher was given back to its place in the track, and to the head that read it.

    A straight line for each piece of frames. Places are frames of the file; frames given count from the last restart.
    Audio thread, or a command under the callback lock. */
class ReadAheadMap
{
public:
    struct Piece
    {
        int64_t firstFrame = 0;
        int frames = 0;
        ReadHead head;           ///< before its first frame
        double step = 0.0;       ///< frames of the file per frame given
        double linearStep = 0.0; ///< the same, but never led round a loop
        bool led = false;        ///< the region that it was read in has led it, or led it away at its end

        double positionAt (double frame) const noexcept
        {
            return head.position + (frame - static_cast<double> (firstFrame)) * step;
        }
        double end() const noexcept { return head.position + frames * step; }
        double linearAt (double frame) const noexcept
        {
            return head.linear + (frame - static_cast<double> (firstFrame)) * linearStep;
        }
    };

    PX_AUDIO_THREAD void clear() noexcept { count = oldestKept = 0; }
    bool isEmpty() const noexcept { return count == 0; }

    PX_AUDIO_THREAD void add (const Piece& piece) noexcept
    {
        pieces[static_cast<size_t> (count++ & mask)] = piece;
        oldestKept = std::max (oldestKept, count - size);
    }

    /** True if a piece has a property, from the one on that holds a frame. Not on an empty map. */
    template <typename Property>
    PX_AUDIO_THREAD bool hasFrom (double frame, Property&& property) const noexcept
    {
        auto index = count - 1;
        while (index > oldestKept && static_cast<double> (at (index).firstFrame) > frame)
            --index;
        for (; index < count; ++index)
            if (property (at (index)))
                return true;
        return false;
    }

    /** The piece that holds a frame; the oldest or newest one for a frame beyond them. Not on an empty map. */
    PX_AUDIO_THREAD const Piece& holding (double frame) const noexcept
    {
        return find ([frame] (const Piece& p) { return static_cast<double> (p.firstFrame) <= frame; });
    }

private:
    static constexpr int64_t size = 2048, mask = size - 1;

    const Piece& at (int64_t index) const noexcept { return pieces[static_cast<size_t> (index & mask)]; }

    /** The newest piece that has begun, by a condition that holds for the older ones. */
    template <typename Begun>
    const Piece& find (Begun&& hasBegun) const noexcept
    {
        // Questions are seldom about frames far back: steps that double from the newest piece on stay in the cache.
        const auto limit = oldestKept;
        auto beyond = count, oldest = std::max (limit, count - 1);
        for (int64_t step = 1; oldest > limit && !hasBegun (at (oldest)); step *= 2)
        {
            beyond = oldest;
            oldest = std::max (limit, oldest - step);
        }
        while (beyond - oldest > 1)
        {
            const auto middle = oldest + (beyond - oldest) / 2;
            (hasBegun (at (middle)) ? oldest : beyond) = middle;
        }
        return at (oldest);
    }

    std::array<Piece, size> pieces {};
    int64_t count = 0, oldestKept = 0;
};
