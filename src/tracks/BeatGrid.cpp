#include "tracks/BeatGrid.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double reachFrames = 100'000.0;

/** Places of the table that differ by less are one. */
constexpr double tolerance = 1.0e-6;
}

int32_t BeatGrid::tableCount() const noexcept
{
    if (beats == nullptr || numBeats < 1)
        return 0;
    return static_cast<int32_t> (std::floor ((numBeats - 1 - tableOffset) / tableStep + tolerance)) + 1;
}

double BeatGrid::tableAt (int32_t index) const noexcept
{
    if (index < 0 || index >= tableCount())
        return 0.0;
    const auto place = tableOffset + index * tableStep;
    const auto entry = std::min (static_cast<int32_t> (place + tolerance), numBeats - 1);
    const auto next = std::min (entry + 1, numBeats - 1);
    const auto part = std::max (0.0, place - entry);
    return beats[entry].pos + part * (beats[next].pos - beats[entry].pos);
}

std::vector<BeatMark> BeatGrid::readTable() const
{
    std::vector<BeatMark> read (static_cast<size_t> (tableCount()));
    for (size_t i = 0; i < read.size(); ++i)
    {
        const auto index = static_cast<int32_t> (i);
        const auto entry = static_cast<int32_t> (tableOffset + index * tableStep + tolerance);
        read[i] = { static_cast<int32_t> (std::lround (tableAt (index))),
                    beats[std::min (entry, numBeats - 1)].bpm / tableStep };
    }
    return read;
}

int32_t BeatGrid::beatCount() const noexcept
{
    if (!fixedGrid)
        return tableCount();
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
        return tableAt (index);
    if (period() <= 0.0)
        return 0.0;
    const auto phase = downbeatPosition / period();
    const auto frame = (phase - std::floor (phase) + index) * period();
    return std::clamp (frame, 0.0, static_cast<double> (loadedFrames));
}

int32_t BeatGrid::countUpTo (double frame, int32_t first, int32_t stride) const noexcept
{
    int32_t low = 0, high = (beatCount() - first + stride - 1) / stride;
    while (low < high)
    {
        const auto middle = low + (high - low) / 2;
        if (beatAt (first + stride * middle) <= frame)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

std::optional<int32_t> BeatGrid::nearestOf (double frame, int32_t first, int32_t stride) const noexcept
{
    // Entries ascend, so the nearest one is the last at or before the position, or the one after it.
    const auto after = countUpTo (frame, first, stride);
    std::optional<int32_t> nearest;
    auto distance = reachFrames;
    for (const auto k : { after - 1, after })
    {
        const auto entry = first + stride * k;
        if (k < 0 || entry >= beatCount())
            continue;
        if (const auto away = std::abs (beatAt (entry) - frame); away < distance)
        {
            distance = away;
            nearest = entry;
        }
    }
    return nearest;
}

std::optional<double> BeatGrid::nearestEvenBeat (double frame) const noexcept
{
    const auto entry = nearestOf (frame, downbeatEntry() & 1, 2);
    return entry ? std::optional (beatAt (*entry)) : std::nullopt;
}

std::optional<int32_t> BeatGrid::nearestEntry (double frame) const noexcept
{
    return nearestOf (frame, 0, 1);
}
