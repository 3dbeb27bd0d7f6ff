#include "timecode/TurnHistory.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr std::array windowSeconds { 0.0026, 0.0065, 0.016 };
constexpr double finerWindowSeconds = 0.0029;
constexpr double slowestTicks = 2756, slowestFineTicks = 3675; // a second, where eight frames are not too few
constexpr int pushesBetweenSums = 512;                         // rounding can't gather for longer
}

void TurnHistory::prepare (double sampleRate, bool bitsAreFine) noexcept
{
    const auto slowest = bitsAreFine ? slowestFineTicks : slowestTicks;
    tickLength = std::clamp (static_cast<int> (std::lround (sampleRate / slowest)), 1, TickLanes::size);
    tickRate = sampleRate / tickLength;
    for (std::size_t i = 1; i < lengths.size(); ++i)
        lengths[i] = std::clamp (static_cast<int> (std::lround (windowSeconds[i] * tickRate)), 9, capacity);
    const auto ticks = (bitsAreFine ? finerWindowSeconds : windowSeconds[0]) * tickRate;
    lengths[0] = std::clamp (2 * static_cast<int> (std::lround ((ticks - 1) / 2)) + 1, 7,
                             63); // odd: the middle is a tick
    // A parabola's mean lies this much of the outer thirds' bend beside its middle.
    const int third = lengths[0] / 3;
    const double n = lengths[0], k = third, centre = (n - k) / 2;
    bendToMiddle = (n * n - 1) / 12 / (2 * (centre * centre + (k * k - n * n) / 12));
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
    oldestThird += at (lengths[0] - third - 1) - at (lengths[0] - 1);
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
        oldestThird += at (lengths[0] - third + i);
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
    const int third = lengths[0] / 3;
    const auto mean = sums[0].plain / lengths[0];
    return mean - bendToMiddle * ((newestThird + oldestThird) / third - 2 * mean);
}
