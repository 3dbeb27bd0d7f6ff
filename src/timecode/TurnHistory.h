#pragma once

#include "timecode/filter/TickLanes.h"

#include <array>

/** Path of the carrier over the last 16 ms, in turns, one mean every quarter of a millisecond or less (a
    tick), and its slopes.
    Audio thread; allocates nothing. */
class TurnHistory
{
public:
    static constexpr int windows = 3; // 3, 6.5 and 16 ms

    /** @param bitsAreFine  several bits lie in a cycle: ticks are shorter, and the shortest window longer */
    void prepare (double sampleRate, bool bitsAreFine) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

    PX_AUDIO_THREAD int samplesPerTick() const noexcept { return tickLength; }
    PX_AUDIO_THREAD double ticksPerSecond() const noexcept { return tickRate; }

    /** Ticks between the newest and the middle of the shortest window. */
    PX_AUDIO_THREAD int ticksToMiddle() const noexcept { return lengths[0] / 2; }

    PX_AUDIO_THREAD void push (double turnsOfTick) noexcept;

    /** Replaces a tick; 0 is the newest. */
    PX_AUDIO_THREAD void replace (int ticksBack, double turnsOfTick) noexcept;

    /** Moves all that was measured by some turns. */
    PX_AUDIO_THREAD void shift (double turns) noexcept;

    /** Turns a sample over a window: least squares, which is the mean speed under a parabola. */
    PX_AUDIO_THREAD double slope (int window) const noexcept;

    /** Turns in the middle of a window. */
    PX_AUDIO_THREAD double mean (int window) const noexcept;

    /** Turns in the middle of the shortest window, its bend taken out. */
    PX_AUDIO_THREAD double middle() const noexcept;

    PX_AUDIO_THREAD int lengthInTicks (int window) const noexcept
    {
        return lengths[static_cast<std::size_t> (window)];
    }

private:
    /** Sums over a window that a new tick only changes at its ends. */
    struct Sums
    {
        double plain = 0;
        double weighted = 0; ///< weights n - 1, n - 3 ... 1 - n from the newest tick back
        double toSlope = 0;  ///< from the weighted sum to turns a sample
    };

    static constexpr int capacity = 128;

    PX_AUDIO_THREAD void sumAnew() noexcept;
    PX_AUDIO_THREAD double at (int ticksBack) const noexcept
    {
        return ring[static_cast<std::size_t> ((next - 1 - ticksBack) & (capacity - 1))];
    }

    int tickLength = 6, next = 0;
    double tickRate = 7350;
    std::array<int, windows> lengths { 21, 48, 118 };
    std::array<double, capacity> ring {};
    std::array<Sums, windows> sums {};
    double newestThird = 0, oldestThird = 0, bendToMiddle = 0; // of the shortest window
    int pushesUntilSummedAnew = 0;
};
