#include "deck/Course.h"

#include "deck/DeckPlayer.h"

#include <algorithm>
#include <cmath>

Course::Course (const DeckPlayer& deck) noexcept
    : floor (deck.marks.startPointOn != 0 ? deck.marks.startPoint.get() : 0.0)
{
    if (deck.play.on == 0 || deck.loops.mode == noLoop)
        return;
    keepsBeat = deck.loops.mode == beatLoop;
    loopStart = keepsBeat ? deck.loops.start : deck.loops.in;
    length = keepsBeat ? deck.beatLoopFrames() : deck.loops.out - deck.loops.in;
    if (!(length >= shortestLoop) || !std::isfinite (length))
        return;

    end = loopStart + length;
    if (deck.play.reverse != 0)
    {
        begin = loopStart;
        // A reading that was put on the end comes from there, and is not sent back at once.
        end = std::nextafter (end, std::numeric_limits<double>::infinity());
    }
}

double Course::turned (double position, double rate) const noexcept
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
