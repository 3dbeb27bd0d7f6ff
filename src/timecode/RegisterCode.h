#pragma once

#include "timecode/ControlMedium.h"

/** Bits of a linear feedback shift register, one a cycle.

    Position 0 is the seed; at each step the parity of `state & (taps | 1)` enters at the top and the state moves
    right. Bit 0 of the state at position n lies on cycle n. */
class RegisterCode final : public GrooveCode
{
public:
    /** Walks the whole medium once: one bit kept a cycle, one anchor every 64 cycles. */
    explicit RegisterCode (const ControlMedium&);

    PX_AUDIO_THREAD int bitsPerCycle() const noexcept override { return 1; }
    PX_AUDIO_THREAD unsigned bitsAt (std::int64_t cycle) const noexcept override;
    PX_AUDIO_THREAD int cyclesToLocate() const noexcept override { return width; }
    PX_AUDIO_THREAD int cyclesToBelieve() const noexcept override { return 24; }
    PX_AUDIO_THREAD std::optional<std::int64_t>
    locate (std::span<const unsigned> cycles) const noexcept override;
    PX_AUDIO_THREAD std::int64_t length() const noexcept override { return cycles; }

private:
    struct Anchor
    {
        std::uint32_t state = 0; // never 0 in a sequence
        std::uint32_t cycle = 0;
    };

    PX_AUDIO_THREAD std::uint32_t stepped (std::uint32_t state) const noexcept;
    PX_AUDIO_THREAD std::size_t slotOf (std::uint32_t state) const noexcept;

    const int width;
    const std::uint32_t taps;
    const std::int64_t cycles;
    std::vector<std::uint64_t> packed;
    std::vector<Anchor> anchors; // open addressing, a power of two in size
};
