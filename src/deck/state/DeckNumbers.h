#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/** The decks A to D by index. */
inline constexpr int deckCount = 4;

/** Cue slots of a deck; the first eight are the hot cues. A slot that holds -1 or less is empty. */
inline constexpr int cueSlotCount = 16;
inline constexpr int hotCueCount = 8;
inline constexpr double emptyCue = -1.0;

/** Loop and move sizes go by their index, 0 to 10. @returns beats, 1/32 to 32 */
inline constexpr int loopSizeCount = 11;
constexpr double loopBeats (int sizeIndex) noexcept
{
    return static_cast<double> (1 << sizeIndex) / 32.0;
}

/** ms without a tap after which tapping the tempo begins anew. */
inline constexpr uint32_t tapPauseMs = 3000;

/** Output frames of a deck's time stretcher per call. */
inline constexpr int stretcherBlock = 128;

/** The reach of the pitch fader: the play speed is 1 + (pitch - 0.5) * range.
    @param index   of the setting; any other than 0 to 12 means 0.16 */
constexpr double pitchRangeOf (int index) noexcept
{
    constexpr std::array ranges { 0.04, 0.08, 0.12, 0.16, 0.2, 0.24, 0.28, 0.32, 0.36, 0.4, 0.5, 0.7, 1.0 };
    return index >= 0 && index < static_cast<int> (ranges.size()) ? ranges[static_cast<size_t> (index)]
                                                                  : 0.16;
}
