#pragma once

#include <cstdint>

/** Tells when the blocks of a device without hardware are due.

    Blocks that are late are caught up with, but only a few at a time: after the computer has slept, the music goes on
    where it was instead of racing through the time that is lost. */
class SilentDeviceClock
{
public:
    static constexpr int mostAtOnce = 4;

    /** @param now   in seconds, of any clock that never goes back */
    void start (double now, double blockSeconds) noexcept
    {
        startedAt = now;
        secondsPerBlock = blockSeconds;
        played = 0;
    }

    /** @returns blocks to be played at this moment, 0 to mostAtOnce */
    int blocksDue (double now) noexcept
    {
        const auto due = static_cast<int64_t> ((now - startedAt) / secondsPerBlock) - played;
        if (due <= mostAtOnce)
        {
            played += due > 0 ? due : 0;
            return due > 0 ? static_cast<int> (due) : 0;
        }
        start (now, secondsPerBlock);
        return mostAtOnce;
    }

private:
    double startedAt = 0.0, secondsPerBlock = 1.0;
    int64_t played = 0;
};
