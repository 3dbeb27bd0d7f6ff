#include "timecode/TurnHistory.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr std::array windowSeconds { 0.0029, 0.0065, 0.016 };
constexpr int pushesBetweenSums = 512; // rounding can't gather for longer
}

void TurnHistory::prepare (double sampleRate) noexcept
{
    tickLength = std::max (1, static_cast<int> (std::lround (sampleRate / ticksPerSecond)));
    for (std::size_t i = 0; i < lengths.size(); ++i)
        lengths[i] = std::clamp (static_cast<int> (std::lround (windowSeconds[i] * sampleRate / tickLength)),
                                 9, capacity);
    lengths[0] = 3 * (2 * (lengths[0] / 6) + 1); // three thirds, and the middle is a tick
    reset();
}

void TurnHistory::reset() noexcept
{
    ring.fill (0);
    sums.fill ({});
    next = pushesUntilSummedAnew = 0;
}

void TurnHistory::push (double turnsOfTick) noexcept
{
    for (int window = 0; window < windows; ++window)
    {
        const auto n = lengthInTicks (window);
        const auto leaving = at (n - 1);
        auto& [plain, weighted] = sums[static_cast<std::size_t> (window)];
        weighted += (n - 1) * (turnsOfTick + leaving) - 2 * (plain - leaving);
        plain += turnsOfTick - leaving;
    }
    ring[static_cast<std::size_t> (next)] = turnsOfTick;
    next = (next + 1) & (capacity - 1);
    if (--pushesUntilSummedAnew <= 0)
        sumAnew();
}

void TurnHistory::sumAnew() noexcept
{
    pushesUntilSummedAnew = pushesBetweenSums;
    for (int window = 0; window < windows; ++window)
    {
        Sums fresh;
        const auto n = lengthInTicks (window);
        for (int i = 0; i < n; ++i)
        {
            fresh.plain += at (i);
            fresh.weighted += (n - 1 - 2 * i) * at (i);
        }
        sums[static_cast<std::size_t> (window)] = fresh;
    }
}

void TurnHistory::replace (int ticksBack, double turnsOfTick) noexcept
{
    if (ticksBack < capacity)
        ring[static_cast<std::size_t> ((next - 1 - ticksBack) & (capacity - 1))] = turnsOfTick;
    pushesUntilSummedAnew = 0;
}

void TurnHistory::shift (double turns) noexcept
{
    for (auto& tick : ring)
        tick += turns;
    pushesUntilSummedAnew = 0;
}

double TurnHistory::slope (int window) const noexcept
{
    const auto n = lengthInTicks (window);
    return sums[static_cast<std::size_t> (window)].weighted * 6
           / (static_cast<double> (n) * (static_cast<double> (n) * n - 1)) / tickLength;
}

double TurnHistory::mean (int window) const noexcept
{
    return sums[static_cast<std::size_t> (window)].plain / lengthInTicks (window);
}

double TurnHistory::middle() const noexcept
{
    const auto third = lengths[0] / 3;
    std::array<double, 3> sums {};
    for (int i = 0; i < lengths[0]; ++i)
        sums[static_cast<std::size_t> (i / third)] += at (i);
    // Of a parabola the mean lies 9/24 of the thirds' second difference beside the middle.
    return (sums[0] + sums[1] + sums[2]) / lengths[0]
           - (sums[0] - 2 * sums[1] + sums[2]) / third * (9.0 / 24);
}
