#include "deck/BeatGrid.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double reachFrames = 100'000.0;
}

int32_t BeatGrid::beatCount() const noexcept
{
    if (!fixedGrid)
        return beats != nullptr ? numBeats : 0;
    return period() > 0.0 ? static_cast<int32_t> (loadedFrames / period()) : 0;
}

int32_t BeatGrid::downbeatEntry() const noexcept
{
    if (!fixedGrid)
        return downbeatIndex;
    if (period() <= 0.0)
        return 0;
    return std::clamp (static_cast<int32_t> (downbeatPosition / period()), 0, beatCount());
}

double BeatGrid::beatAt (int32_t index) const noexcept
{
    if (!fixedGrid)
        return beats != nullptr && index >= 0 && index < numBeats ? beats[index].pos : 0.0;
    if (period() <= 0.0)
        return 0.0;
    const auto phase = downbeatPosition / period();
    const auto frame = (phase - std::floor (phase) + index) * period();
    return std::clamp (frame, 0.0, static_cast<double> (loadedFrames));
}

std::optional<double> BeatGrid::nearestEvenBeat (double frame) const noexcept
{
    const auto count = beatCount();
    const auto first = downbeatEntry() & 1;

    // Entries ascend, so the nearest even one is the last at or before the position, or the one after it.
    int32_t low = 0, high = (count - first + 1) / 2; // the k-th even entry is first + 2 * k
    while (low < high)
    {
        const auto middle = low + (high - low) / 2;
        if (beatAt (first + 2 * middle) <= frame)
            low = middle + 1;
        else
            high = middle;
    }

    std::optional<double> nearest;
    auto distance = reachFrames;
    for (const auto k : { low - 1, low })
    {
        const auto entry = first + 2 * k;
        if (k < 0 || entry >= count)
            continue;
        const auto beat = beatAt (entry);
        if (std::abs (beat - frame) < distance)
        {
            distance = std::abs (beat - frame);
            nearest = beat;
        }
    }
    return nearest;
}
