#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

/** Keeps a pitch slider from tearing the tempo along: it moves nothing until it stands at the deck's pitch, and is then
    followed as long as a move comes every 50 ms. One thread. */
class PitchPickup
{
public:
    static constexpr double nearness = 0.01;
    static constexpr uint32_t holdMs = 50;

    /** Counts as a move, so that the positions that a device sends when it is started are taken. */
    void stamp (uint32_t nowMs) noexcept { lastMs = nowMs; }

    /** True if the deck's pitch is to follow.
        @param target    the pitch that the slider asks for, 0 to 1
        @param current   the deck's
        @param isCoarse  of 127 steps: moved fast it may jump over the pitch, which counts as standing at it */
    bool follows (double target, double current, uint32_t nowMs, bool isCoarse) noexcept
    {
        const auto hasCrossed = isCoarse && (lastTarget - current) * (target - current) < 0.0;
        lastTarget = target;
        if (std::abs (target - current) >= nearness && nowMs - lastMs > holdMs && !hasCrossed)
            return false;
        lastMs = nowMs;
        return true;
    }

private:
    uint32_t lastMs = 0;
    double lastTarget = std::numeric_limits<double>::quiet_NaN();
};
