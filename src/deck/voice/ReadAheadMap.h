#pragma once

#include "deck/state/ReadHead.h"
#include "support/AudioThread.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

/** What a deck has read ahead of what is heard: for each piece of frames that went towards the stretcher, where in the
    track it was read and when it is due at the output.

    Both are straight lines within a piece. Places are frames of the file, frames and times count from the last restart.
    Audio thread, or a command under the callback lock. */
class ReadAheadMap
{
public:
    struct Piece
    {
        int64_t firstFrame = 0;
        int frames = 0;
        ReadHead head;                   ///< before its first frame
        double step = 0.0;               ///< frames of the file per frame read
        double due = 0.0, dueStep = 1.0; ///< output frames, and per frame read: the stretch
        double linearStep = 0.0;         ///< the same as the step, but never led round a loop
        bool led = false; ///< the region that it was read on has led it, or led it away at its end

        double positionAt (double frame) const noexcept
        {
            return head.position + (frame - static_cast<double> (firstFrame)) * step;
        }
        double end() const noexcept { return head.position + frames * step; }
        double linearAt (double frame) const noexcept
        {
            return head.linear + (frame - static_cast<double> (firstFrame)) * linearStep;
        }
        double dueAt (double frame) const noexcept
        {
            return due + (frame - static_cast<double> (firstFrame)) * dueStep;
        }
        double frameDueAt (double time) const noexcept
        {
            return static_cast<double> (firstFrame) + (time - due) / dueStep;
        }
    };

    PX_AUDIO_THREAD void clear() noexcept { count = oldestKept = 0; }
    bool isEmpty() const noexcept { return count == 0; }

    PX_AUDIO_THREAD void add (const Piece& piece) noexcept
    {
        pieces[static_cast<size_t> (count++ & mask)] = piece;
        oldestKept = std::max (oldestKept, count - size);
    }

    /** The oldest piece with a property, from the one on that holds a frame; or null. Not on an empty log. */
    template <typename Property>
    PX_AUDIO_THREAD const Piece* firstFrom (double frame, Property&& has) const noexcept
    {
        auto index = count - 1;
        while (index > oldestKept && static_cast<double> (at (index).firstFrame) > frame)
            --index;
        for (; index < count; ++index)
            if (has (at (index)))
                return &at (index);
        return nullptr;
    }

    /** Forgets the pieces from a frame on. */
    PX_AUDIO_THREAD void forgetFrom (int64_t frame) noexcept
    {
        while (count > oldestKept && at (count - 1).firstFrame >= frame)
            --count;
    }

    /** The piece that holds a frame read; the oldest or newest one for a frame beyond them. Not on an empty log. */
    PX_AUDIO_THREAD const Piece& holding (double frame) const noexcept
    {
        return find ([frame] (const Piece& p) { return static_cast<double> (p.firstFrame) <= frame; });
    }

    /** The piece that is due at an output time. */
    PX_AUDIO_THREAD const Piece& dueAt (double time) const noexcept
    {
        return find ([time] (const Piece& p) { return p.due <= time; });
    }

private:
    static constexpr int64_t size = 2048, mask = size - 1;

    const Piece& at (int64_t index) const noexcept { return pieces[static_cast<size_t> (index & mask)]; }

    /** The newest piece that has begun, by a condition that holds for the older ones. */
    template <typename Begun>
    const Piece& find (Begun&& hasBegun) const noexcept
    {
        // What is asked for is seldom far back: steps that double from the newest piece on stay in the cache.
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
