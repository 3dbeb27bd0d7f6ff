#pragma once

#include "analysis/loudness/EqualLoudnessFilter.h"

#include <array>
#include <cstddef>

/** Halves a rate before loudness is measured: the shortest half-band filter that stays within 0.3 dB up to 10 kHz of
    96 kHz, beyond which the ear's curve leaves nothing to measure. */
class HalfRate
{
public:
    using Pair = EqualLoudnessFilter::Pair;

    /** Takes a frame. @returns true if `output` holds a new one, every second time. */
    bool add (Pair frame, Pair& output) noexcept
    {
        past[position++ & mask] = frame;
        if (position % 2 != 0)
            return false;
        const auto at = [this] (size_t back) { return past[(position - 1 - back) & mask]; };
        output = (16.0 * at (3) + 9.0 * (at (2) + at (4)) - (at (0) + at (6))) * (1.0 / 32.0);
        return true;
    }

private:
    static constexpr size_t mask = 7;
    std::array<Pair, mask + 1> past {};
    size_t position = 0;
};
