#include "timecode/RegisterCode.h"

#include <bit>

namespace
{
constexpr std::int64_t anchorSpacing = 64;
}

RegisterCode::RegisterCode (const ControlMedium& medium)
    : width (medium.bits),
      taps (medium.taps | 1),
      cycles (medium.length),
      packed (static_cast<std::size_t> (medium.length / 64 + 2)),
      anchors (std::bit_ceil (static_cast<std::size_t> (2 * (medium.length / anchorSpacing + 2))))
{
    auto state = medium.seed;
    for (std::int64_t n = 0; n < cycles + anchorSpacing; ++n, state = stepped (state))
    {
        if (n < cycles)
            packed[static_cast<std::size_t> (n / 64)] |= static_cast<std::uint64_t> (state & 1) << (n % 64);
        if (n % anchorSpacing != 0)
            continue;
        auto slot = slotOf (state);
        while (anchors[slot].state != 0)
            slot = (slot + 1) & (anchors.size() - 1);
        anchors[slot] = { state, static_cast<std::uint32_t> (n) };
    }
}

std::uint32_t RegisterCode::stepped (std::uint32_t state) const noexcept
{
    const auto top = static_cast<std::uint32_t> (std::popcount (state & taps) & 1);
    return state >> 1 | top << (width - 1);
}

std::size_t RegisterCode::slotOf (std::uint32_t state) const noexcept
{
    return (state * 2654435761U >> 9) & (anchors.size() - 1); // Knuth's multiplicative hash
}

unsigned RegisterCode::bitsAt (std::int64_t cycle) const noexcept
{
    if (cycle < 0 || cycle >= cycles)
        return 0;
    return static_cast<unsigned> (packed[static_cast<std::size_t> (cycle / 64)] >> (cycle % 64) & 1);
}

std::optional<std::int64_t> RegisterCode::locate (std::span<const unsigned> read) const noexcept
{
    std::uint32_t state = 0;
    for (int i = 0; i < width; ++i)
        state |= (read[static_cast<std::size_t> (i)] & 1) << i;
    for (std::int64_t steps = 0; steps < anchorSpacing && state != 0; ++steps, state = stepped (state))
        for (auto slot = slotOf (state); anchors[slot].state != 0; slot = (slot + 1) & (anchors.size() - 1))
            if (anchors[slot].state == state)
            {
                const auto cycle = static_cast<std::int64_t> (anchors[slot].cycle) - steps;
                return cycle >= 0 && cycle < cycles ? std::optional (cycle) : std::nullopt;
            }
    return std::nullopt;
}
