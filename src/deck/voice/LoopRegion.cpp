#include "deck/voice/LoopRegion.h"

#include <algorithm>
#include <cmath>

LoopRegion::LoopRegion (const Loops& loops, double beatLoopFrames, const TrackMarks& marks,
                        const PlayState& play, int32_t trackFrames) noexcept
    : isReverse (play.reverse != 0),
      floor (marks.startPointOn != 0 ? marks.startPoint.get() : 0.0)
{
    if ((play.on == 0 && play.followsRecord == 0) || loops.mode == noLoop)
        return;
    keepsBeat = loops.mode == beatLoop;
    loopStart = keepsBeat ? loops.start : loops.in;
    length = std::min (keepsBeat ? beatLoopFrames : loops.out - loops.in, trackFrames - loopStart);
    if (!(length >= shortestLoop) || !std::isfinite (length))
        return;

    end = loopStart + length;
    if (isReverse)
    {
        begin = loopStart;
        // A reading that was put on the end comes from there, and is not sent back at once.
        end = std::nextafter (end, std::numeric_limits<double>::infinity());
    }
}

double LoopRegion::turned (double position, double rate) const noexcept
{
    const auto past = position >= end ? position - (loopStart + length) : loopStart - position;
    const auto direction = position >= end ? -1.0 : 1.0;
    if (keepsBeat)
    {
        const auto rounds = position >= end ? std::max (1.0, std::floor ((position - loopStart) / length))
                                            : 1.0 + std::floor (past / length);
        return position + direction * rounds * length;
    }
    const auto kept = past < std::abs (rate) ? past : 0.0;
    return position >= end ? loopStart + kept : loopStart + length - kept;
}
