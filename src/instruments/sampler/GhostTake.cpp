#include "instruments/sampler/GhostTake.h"

#include "instruments/sampler/sample/SampleBuffer.h"

#include <algorithm>
#include <cmath>

namespace
{
/** A thirty-second of a beat in seconds at 1 BPM. */
constexpr double thirtySecond = 1.875;

double startOf (const DeckPlayer& deck) noexcept
{
    if (deck.loops.mode == beatLoop)
        return deck.loops.start;
    if (deck.loops.mode == manualLoop)
        return deck.loops.in;
    const auto heard = std::trunc (deck.heardPosition());
    return deck.grid().nearestEvenBeat (heard).value_or (heard);
}
}

std::optional<GhostTake> GhostTake::of (const DeckPlayer& deck, int lengthIndex) noexcept
{
    const double rate = deck.track.sampleRate, bpm = deck.marks.bpm;
    if (deck.isEmpty() || !(bpm > 0.0) || !(rate > 0.0))
        return {};
    GhostTake take;
    take.deck = deck.index;
    take.sampleRate = rate;
    take.bpm = bpm;
    take.start = static_cast<int64_t> (std::max (0.0, startOf (deck)));
    for (take.lengthIndex = std::clamp (lengthIndex, 0, lengthCount - 1); take.lengthIndex >= 0;
         --take.lengthIndex)
    {
        const auto frames = std::trunc ((1 << take.lengthIndex) * rate * thirtySecond / bpm);
        if (!(frames >= 1.0 && frames <= SampleBuffer::capacity))
            continue;
        take.frames = static_cast<int32_t> (frames);
        return take;
    }
    return {};
}
