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
    tickLength =
        std::clamp (static_cast<int> (std::lround (sampleRate / ticksPerSecond)), 1, TickLanes::size);
    for (std::size_t i = 0; i < lengths.size(); ++i)
        lengths[i] = std::clamp (static_cast<int> (std::lround (windowSeconds[i] * sampleRate / tickLength)),
                                 9, capacity);
    lengths[0] = 3 * (2 * (lengths[0] / 6) + 1); // three thirds, and the middle is a tick
    reset();
}

void TurnHistory::reset() noexcept
{
    ring.fill (0);
    for (int window = 0; window < windows; ++window)
    {
        const auto n = static_cast<double> (lengthInTicks (window));
        sums[static_cast<std::size_t> (window)] = { 0, 0, 6 / (n * (n * n - 1)) / tickLength };
    }
    newestThird = oldestThird = 0;
    next = pushesUntilSummedAnew = 0;
}

void TurnHistory::push (double turnsOfTick) noexcept
{
    for (int window = 0; window < windows; ++window)
    {
        const auto n = lengthInTicks (window);
        const auto leaving = at (n - 1);
        auto& sum = sums[static_cast<std::size_t> (window)];
        sum.weighted += (n - 1) * (turnsOfTick + leaving) - 2 * (sum.plain - leaving);
        sum.plain += turnsOfTick - leaving;
    }
    const auto third = lengths[0] / 3;
    newestThird += turnsOfTick - at (third - 1);
    oldestThird += at (2 * third - 1) - at (3 * third - 1);
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
        auto& sum = sums[static_cast<std::size_t> (window)];
        const auto n = lengthInTicks (window);
        sum.plain = sum.weighted = 0;
        for (int i = 0; i < n; ++i)
        {
            sum.plain += at (i);
            sum.weighted += (n - 1 - 2 * i) * at (i);
        }
    }
    const auto third = lengths[0] / 3;
    newestThird = oldestThird = 0;
    for (int i = 0; i < third; ++i)
    {
        newestThird += at (i);
        oldestThird += at (2 * third + i);
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
    const auto& sum = sums[static_cast<std::size_t> (window)];
    return sum.weighted * sum.toSlope;
}

double TurnHistory::mean (int window) const noexcept
{
    return sums[static_cast<std::size_t> (window)].plain / lengthInTicks (window);
}

double TurnHistory::middle() const noexcept
{
    // Of a parabola the mean lies 9/24 of the thirds' second difference beside the middle.
    const auto all = sums[0].plain, middleThird = all - newestThird - oldestThird;
    return all / lengths[0] - (newestThird - 2 * middleThird + oldestThird) / (lengths[0] / 3) * (9.0 / 24);
}
