#pragma once

#include <array>

/** Path of the carrier over the last 16 ms, in turns, one mean every 136 microseconds (a tick), and its slopes. Audio thread; allocates nothing. */
class TurnHistory
{
public:
    static constexpr double ticksPerSecond = 7350;
    static constexpr int windows = 3; // 3, 6.5 and 16 ms

    void prepare (double sampleRate) noexcept;
    void reset() noexcept;

    int samplesPerTick() const noexcept { return tickLength; }

    /** Samples between now and the middle of the shortest window. */
    int samplesToMiddle() const noexcept { return tickLength * (lengths[0] / 2 + 1); }

    void push (double turnsOfTick) noexcept;

    /** Replaces a tick; 0 is the newest. */
    void replace (int ticksBack, double turnsOfTick) noexcept;

    /** Moves all that was measured by some turns. */
    void shift (double turns) noexcept;

    /** Turns a sample over a window: least squares, which is the mean speed under a parabola. */
    double slope (int window) const noexcept;

    /** Turns in the middle of a window. */
    double mean (int window) const noexcept;

    /** Turns in the middle of the shortest window, its bend taken out. */
    double middle() const noexcept;

    int lengthInTicks (int window) const noexcept { return lengths[static_cast<std::size_t> (window)]; }

private:
    /** Sums over a window that a new tick only changes at its ends. */
    struct Sums
    {
        double plain = 0;
        double weighted = 0; ///< weights n - 1, n - 3 ... 1 - n from the newest tick back
    };

    static constexpr int capacity = 128;
    void sumAnew() noexcept;
    double at (int ticksBack) const noexcept
    {
        return ring[static_cast<std::size_t> ((next - 1 - ticksBack) & (capacity - 1))];
    }

    int tickLength = 6, next = 0;
    std::array<int, windows> lengths { 21, 48, 118 };
    std::array<double, capacity> ring {};
    std::array<Sums, windows> sums {};
    int pushesUntilSummedAnew = 0;
};
