#pragma once

#include "deck/DeckWorld.h"

#include <optional>

/** A loop that is to be taken from a deck: so many beats of its track, from the beat that is heard. A value, so that the
    moment of the press counts, whenever the frames are copied. */
struct GhostTake
{
    /** Lengths by index, 0 to 9. @returns beats, 1/32 to 16 */
    static constexpr int lengthCount = 10;
    static constexpr double beatsOf (int lengthIndex) noexcept { return (1 << lengthIndex) / 32.0; }

    /** The loop of a deck as it plays now. A length that is longer than a sample may be gives way to the longest that is
        not. @param lengthIndex   limited to 0 to 9
        @returns nothing for a deck without a track or tempo. Under the callback lock. */
    static std::optional<GhostTake> of (const DeckPlayer&, int lengthIndex) noexcept;

    int deck = 0;
    int lengthIndex = 0;
    int64_t start = 0;  ///< in frames of the track
    int32_t frames = 0; ///< what lies past the end of the track is silence
    double sampleRate = 44100.0, bpm = 120.0;
};
