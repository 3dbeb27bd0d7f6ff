#pragma once

#include "support/AudioThread.h"

#include <array>
#include <cstdint>

/** A value of each frame of a tick, worked on side by side: loops over all eight become vector instructions. Frames
    behind the tick's last hold 0 where they are summed. */
struct alignas (16) TickLanes
{
    static constexpr int size = 8; ///< frames of a tick at most

    std::array<float, size> values {};

    float& operator[] (int i) noexcept { return values[static_cast<std::size_t> (i)]; }
    float operator[] (int i) const noexcept { return values[static_cast<std::size_t> (i)]; }

    /** Sum of all, in an order that vectors can keep. */
    PX_AUDIO_THREAD float sum() const noexcept
    {
        const auto& v = values;
        return ((v[0] + v[4]) + (v[2] + v[6])) + ((v[1] + v[5]) + (v[3] + v[7]));
    }
};

namespace turn
{
/** The same angle within half a turn of 0. */
PX_AUDIO_THREAD inline double wrapped (double turns) noexcept
{
    return turns - static_cast<double> (static_cast<std::int64_t> (turns + (turns < 0 ? -0.5 : 0.5)));
}
PX_AUDIO_THREAD inline float wrapped (float turns) noexcept
{
    return turns - static_cast<float> (static_cast<int> (turns + (turns < 0 ? -0.5f : 0.5f)));
}

/** Angle in turns, 0 where y stands alone, growing towards x; 0.00002 turns exact (a minimax polynomial). */
PX_AUDIO_THREAD inline float ofPoint (float x, float y) noexcept
{
    const auto ax = x < 0 ? -x : x, ay = y < 0 ? -y : y;
    const auto big = ax > ay ? ax : ay, small = ax > ay ? ay : ax;
    const auto q = small / (big + 1e-30f), s = q * q;
    auto turns =
        q
        * (0.15915494f
           + s * (-0.05303984f + s * (0.03154769f + s * (-0.02028754f + s * (0.01012353f - s * 0.00247f)))));
    turns = ax > ay ? 0.25f - turns : turns;
    turns = y < 0 ? 0.5f - turns : turns;
    return x < 0 ? -turns : turns;
}

/** Sine of an angle of -0.5 to 0.5 turns, a few millionths exact (the Taylor series of a quarter turn). */
PX_AUDIO_THREAD inline float sine (float turns) noexcept
{
    auto t = turns > 0.25f ? 0.5f - turns : turns;
    t = t < -0.25f ? -0.5f - t : t;
    t *= 6.2831853f;
    const auto s = t * t;
    return t * (1 + s * (-0.16666667f + s * (0.0083333310f + s * (-0.00019840874f + s * 2.7525562e-6f))));
}
} // namespace turn
