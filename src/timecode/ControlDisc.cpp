#include "timecode/ControlDisc.h"

#include <cmath>

namespace controlDisc
{
namespace
{
// Steps and amplitudes are the disc's definition: the same bytes wherever it is made.
struct Tables
{
    std::array<float, samplesPerCycle> sine {}, cosine {};
    std::array<float, 16> burst {};

    Tables()
    {
        for (std::size_t n = 0; n < sine.size(); ++n)
        {
            sine[n] = static_cast<float> (0.5 * std::sin (0.13089584 * static_cast<double> (n)));
            cosine[n] = static_cast<float> (0.5 * std::cos (0.13089584 * static_cast<double> (n)));
        }
        for (std::size_t n = 0; n < burst.size(); ++n)
            burst[n] = static_cast<float> (0.25 * std::sin (0.3926875 * static_cast<double> (n)));
    }
};

const Tables tables;
} // namespace

int generateFrame (unsigned frameNumber, float* left, float* right) noexcept
{
    for (int cycle = 0; cycle < cyclesPerFrame; ++cycle)
    {
        const auto symbol = symbolAt (frameNumber, cycle);
        for (std::size_t m = 0; m < samplesPerCycle; ++m)
        {
            const auto slotIsSet = (symbol >> (5 - m / 8) & 1) != 0;
            *left++ = tables.sine[m] + (slotIsSet ? tables.burst[m % 16] : 0.0f);
            *right++ = -0.5f * tables.cosine[m];
        }
    }
    return samplesPerFrame;
}
} // namespace controlDisc

using namespace controlDisc;

namespace
{
/** The same bits read from the other end: symbols keep slot 0 on top, codes keep the first bit lowest. */
constexpr unsigned turned (unsigned symbol) noexcept
{
    unsigned result = 0;
    for (int i = 0; i < 6; ++i)
        result |= (symbol >> i & 1) << (5 - i);
    return result;
}
} // namespace

unsigned ControlDiscCode::bitsAt (std::int64_t cycle) const noexcept
{
    if (cycle < 0 || cycle >= length())
        return 0;
    return turned (
        symbolAt (static_cast<unsigned> (cycle / cyclesPerFrame), static_cast<int> (cycle % cyclesPerFrame)));
}

std::int64_t ControlDiscCode::length() const noexcept
{
    return static_cast<std::int64_t> (frameCount) * cyclesPerFrame;
}

std::optional<std::int64_t> ControlDiscCode::locate (std::span<const unsigned> cycles) const noexcept
{
    // Six cycles hold a sync cycle at one of six places; what stands before it ends the frame before.
    for (int sync = 0; sync < cyclesPerFrame; ++sync)
    {
        if (cycles[static_cast<std::size_t> (sync)] != 0x3f)
            continue;
        const auto nibbleOf = [&] (int at)
        { return turned (cycles[static_cast<std::size_t> (at)]) >> 1 & 15; };
        unsigned upper = 0, lower = 0;
        for (int cycle = 1; sync + cycle < cyclesPerFrame; ++cycle)
            upper |= nibbleOf (sync + cycle) << (20 - 4 * cycle);
        for (int at = 0; at < sync; ++at)
            lower |= nibbleOf (at) << (20 - 4 * (at - sync + cyclesPerFrame));
        // The nibbles before the sync cycle are those of the number below.
        const auto mask = (1U << 4 * sync) - 1;
        const auto number = upper | (((lower & mask) + 1) & mask);
        const auto first = static_cast<std::int64_t> (number) * cyclesPerFrame - sync;
        bool agrees = first >= 0;
        for (int at = 0; at < cyclesPerFrame && agrees; ++at)
            agrees = bitsAt (first + at) == cycles[static_cast<std::size_t> (at)];
        if (agrees)
            return first;
    }
    return std::nullopt;
}
