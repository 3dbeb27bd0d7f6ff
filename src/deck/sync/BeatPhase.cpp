#include "deck/sync/BeatPhase.h"

#include <cmath>

namespace
{
constexpr double greatestDeviation = 0.06;
}

double BeatPhase::wrapped (double beats) noexcept
{
    return beats - std::round (beats);
}

std::optional<BeatPhase> BeatPhase::at (const BeatGrid& grid, double frame) noexcept
{
    const auto usual = 2.0 * grid.period();
    const auto beat = grid.nearestEvenBeat (frame);
    if (!beat.has_value() || !(usual > 0.0))
        return {};

    auto length = usual;
    const auto side = frame < *beat ? -usual : usual;
    if (const auto neighbour = grid.nearestEvenBeat (*beat + side))
        if (const auto distance = std::abs (*neighbour - *beat);
            std::abs (distance - usual) <= greatestDeviation * usual)
            length = distance;
    return BeatPhase { (frame - *beat) / length, length };
}

std::optional<BeatPhase> BeatPhase::at (const BeatGrid& grid, const LoopRegion& region, double frame) noexcept
{
    if (!region.hasLoop())
        return at (grid, frame);
    const auto usual = 2.0 * grid.period();
    const auto start = at (grid, region.startOfLoop());
    if (!start.has_value())
        return {};

    const auto count = std::round (region.lengthOfLoop() / usual);
    const auto length = region.lengthOfLoop() / count;
    if (count < 1.0 || std::abs (length - usual) > greatestDeviation * usual)
        return {};
    return BeatPhase { wrapped (start->phase + (frame - region.startOfLoop()) / length), length };
}
