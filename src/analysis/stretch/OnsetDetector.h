#pragma once

#include "support/AudioThread.h"

#include <array>
#include <cstdint>
#include <optional>

/** Finds where in a signal a sound sets on, from the energy of its differences in short blocks.

    A steady sound, however low or however many tones beat in it, does not set on: a block counts only when the energy
    from it on exceeds all that was in the two frames' hops before it. */
class OnsetDetector
{
public:
    static constexpr int blocksPerFrame = 64;

    /** @param samples   of one block; a block is a 64th of an analysis frame */
    explicit OnsetDetector (int samplesPerBlock) noexcept : blockLength (samplesPerBlock) {}

    PX_AUDIO_THREAD void reset() noexcept;

    /** Takes the energy of the next block. */
    PX_AUDIO_THREAD void add (float energy) noexcept;

    /** The most marked onset among the blocks that lie `look` blocks or more before the newest, and have not been
        looked at before.
        @returns the number of the onset's block since the reset, or nothing */
    PX_AUDIO_THREAD std::optional<int64_t> find() noexcept;

    /** Looks at no block so far, but remembers their energy. */
    PX_AUDIO_THREAD void skip() noexcept { searched = count; }

    static constexpr int look = 4; ///< blocks over which a rise must hold

private:
    static constexpr int memory = 24; ///< blocks over which energy is remembered; 35 ms at 44.1 kHz
    static constexpr int size = 128;

    PX_AUDIO_THREAD float energyAt (int64_t block) const noexcept { return energies[block & (size - 1)]; }
    PX_AUDIO_THREAD float windowAt (int64_t block) const noexcept { return windows[block & (size - 1)]; }

    const int blockLength;
    std::array<float, size> energies {}, windows {}; ///< of a block; of `look` blocks from it on
    int64_t count = 0, searched = 0, last = -size;
};
