#include "analysis/stretch/OnsetDetector.h"

#include <algorithm>

namespace
{
constexpr float leastRise = 2.5f;   ///< of energy
constexpr float silence = 1.0e-9f;  ///< mean energy of a sample below which nothing sets on
constexpr float attackShare = 0.4f; ///< of the greatest block's energy, from which on the attack has begun
constexpr int refractory = 12;      ///< blocks after an onset in which none counts
}

void OnsetDetector::reset() noexcept
{
    energies.fill (0.0f);
    windows.fill (0.0f);
    count = searched = 0;
    last = -size;
}

void OnsetDetector::add (float energy) noexcept
{
    energies[count & (size - 1)] = energy;
    ++count;
    const auto first = count - look;
    if (first >= 0)
        windows[first & (size - 1)] =
            energyAt (first) + energyAt (first + 1) + energyAt (first + 2) + energyAt (first + 3);
}

std::optional<int64_t> OnsetDetector::find() noexcept
{
    const auto floor = silence * static_cast<float> (look * blockLength);
    auto strongest = leastRise;
    std::optional<int64_t> found;
    for (; searched <= count - look; ++searched)
    {
        auto greatest = 0.0f;
        for (int i = 0; i < look; ++i)
            greatest = std::max (greatest, energyAt (searched + i));
        if (energyAt (searched) < attackShare * greatest)
            continue;

        auto before = floor;
        for (auto block = std::max<int64_t> (0, searched - look - memory); block <= searched - look; ++block)
            before = std::max (before, windowAt (block));
        if (const auto rise = windowAt (searched) / before; rise > strongest)
        {
            strongest = rise;
            found = searched;
        }
    }
    if (!found || *found - last < refractory)
        return std::nullopt;
    last = *found;
    return found;
}
