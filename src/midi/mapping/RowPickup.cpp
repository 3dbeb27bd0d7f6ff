#include "midi/mapping/RowPickup.h"

#include <cmath>

namespace
{
/** A fader of 7 bits that was moved fast stands up to three steps off the value that it has just passed. */
constexpr double near = 3.0 / 127.0;
}

double RowPickup::takeHigh (int value) noexcept
{
    if (!hasLow)
    {
        high = value;
        hasHigh = true;
        return value / 127.0;
    }
    if (hasHigh && value != high)
        low = value > high ? 0 : 127;
    high = value;
    hasHigh = true;
    return bendPosition (low, high);
}

double RowPickup::takeLow (int value) noexcept
{
    low = value;
    hasLow = true;
    return bendPosition (low, high);
}

bool RowPickup::takesOver (double position, double current) noexcept
{
    const auto holds = written && std::abs (*written - current) < near;
    const auto hasCrossed = lastPosition && (*lastPosition - current) * (position - current) <= 0.0;
    lastPosition = position;
    if (!holds)
        written.reset();
    return holds || hasCrossed || std::abs (position - current) < near;
}
