#include "deck/voice/BeatWait.h"

#include <algorithm>
#include <cmath>

namespace
{
/** A beat that was passed by no more than this, in output frames, is taken as just come: a piece and its rounding. */
constexpr double latest = 128.0;

/** A loop's start may miss its beat by the rounding of both. */
constexpr double sameFrame = 0.5;

/** The first even beat beyond a place. @param way   1 forwards, -1 backwards */
PX_AUDIO_THREAD std::optional<double> evenBeatBeyond (const BeatGrid& grid, double place, double way) noexcept
{
    const auto isBack = way < 0.0;
    auto entry = grid.firstEntryBeyond (place) - (isBack ? 1 : 0);
    if ((entry - grid.downbeatEntry()) % 2 != 0)
        entry += isBack ? -1 : 1;
    return entry >= 0 && entry < grid.beatCount() ? std::optional (grid.beatAt (entry)) : std::nullopt;
}

double wayOf (const LoopRegion& region) noexcept
{
    return region.isReverse ? -1.0 : 1.0;
}
}

bool BeatWait::isPassed (const LoopRegion& region, double place, double step) const noexcept
{
    const auto way = wayOf (region);
    const auto beyond = way * (place - beat);
    const auto hasTurned = !isAfterTurn || way * (lastPlace - place) > region.lengthOfLoop() / 2.0;
    return isWaiting && hasTurned && beyond >= -step / 2.0 && beyond < latest * step + latest / 2.0;
}

std::optional<double> BeatWait::aim (const BeatGrid& grid, const LoopRegion& region, double place,
                                     double step) noexcept
{
    const auto way = wayOf (region);
    const auto ahead = evenBeatBeyond (grid, place, way);
    isAfterTurn = false;
    if (!region.hasLoop() && !ahead)
        return {};

    const auto low = region.startOfLoop(), high = low + region.lengthOfLoop();
    const auto turn = region.isReverse ? low : high, start = region.isReverse ? high : low;
    const auto isBeforeTurn = [&] (double frame) { return way * (turn - frame) > step; };
    if (!region.hasLoop() || (ahead && isBeforeTurn (*ahead)))
    {
        beat = *ahead;
        return std::abs (beat - place);
    }
    isAfterTurn = true;
    const auto inside = evenBeatBeyond (grid, start - way * sameFrame, way);
    beat = inside && isBeforeTurn (*inside) ? *inside : start;
    return std::abs (turn - place) + std::max (0.0, way * (beat - start));
}

int BeatWait::framesLeft (const BeatGrid& grid, const LoopRegion& region, double place, double step) noexcept
{
    if (isPassed (region, place, step))
    {
        isWaiting = false;
        return 0;
    }
    lastPlace = place;
    const auto frames = aim (grid, region, place, step);
    isWaiting = frames.has_value();
    if (!frames)
        return 0;
    const auto left = std::round (*frames / std::max (step, 1e-6));
    return static_cast<int> (std::clamp (left, 1.0, 1e6));
}
