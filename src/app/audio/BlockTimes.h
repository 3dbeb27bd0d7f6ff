#pragma once

#include "support/AudioThread.h"
#include "support/Relaxed.h"

#include <juce_core/juce_core.h>

#include <array>
#include <cstdint>

/** Durations of an audio device's blocks and of their waits for the engine's lock, which the window and the
    loaders hold for a few field writes. The audio thread adds, any thread reads. */
class BlockTimes
{
public:
    /** Of a clock that never goes back, in nanoseconds. */
    PX_AUDIO_THREAD static int64_t now() noexcept;

    /** One block. @param waited   ns that passed until it had the lock
        @param took                 ns from the device's call until the block was ready, the wait included
        @param length               ns of audio that it holds; one that takes longer is late, an empty one never */
    PX_AUDIO_THREAD void add (int64_t waited, int64_t took, int64_t length) noexcept;

    /** The figures in one line, times in milliseconds. */
    juce::String line() const;

    /** The last late blocks in one line, the oldest first, each with its end on the clock of now() in seconds, as the kernel's log
        has it, and its duration; nothing if none was late. A block that comes late during the call may be told of half. */
    juce::String lateLine() const;

    /** The most blocks that lateLine() tells of. */
    static constexpr size_t keptLate = 64;

    Relaxed<uint32_t> blocks, late;
    Relaxed<int64_t> longest, longestWait; ///< ns

private:
    struct LateBlock
    {
        Relaxed<int64_t> end, took; ///< ns
    };
    std::array<LateBlock, keptLate> lateBlocks; ///< goes round: the n-th lies at n modulo its size
};
