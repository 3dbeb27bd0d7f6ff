#include "timecode/CarrierPresence.h"

#include "timecode/TurnHistory.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr int ticksOf (double seconds) noexcept
{
    return static_cast<int> (seconds * TurnHistory::ticksPerSecond);
}
} // namespace

float cartridgeLevel (double speed, double carrierHz) noexcept
{
    const auto curve = [] (double hz)
    {
        const auto w = 2 * std::numbers::pi * hz;
        const auto square = [w] (double seconds) { return 1 + w * w * seconds * seconds; };
        return std::sqrt (square (318e-6) / (square (3180e-6) * square (75e-6)));
    };
    const auto fast = std::max (std::abs (speed), 0.02);
    return static_cast<float> (fast * curve (fast * carrierHz) / curve (carrierHz));
}

void CarrierPresence::prepare (const ControlMedium& medium, double sampleRate, int framesInTick) noexcept
{
    carrier = medium.carrierHz;
    vinyl = medium.levelFollowsSpeed;
    rate = static_cast<float> (sampleRate);
    frames = framesInTick;
    leak = 1 / (0.005f * rate);
    for (std::size_t i = 0; i < levels.size(); ++i)
        levels[i] = vinyl ? cartridgeLevel (static_cast<double> (i) / levelsPerSpeed, carrier) : 1.0f;
    reset();
}

float CarrierPresence::levelAt (double speed) const noexcept
{
    const auto at = std::min (static_cast<float> (std::abs (speed)), static_cast<float> (fastestLevel))
                    * static_cast<float> (levelsPerSpeed);
    const auto below = static_cast<std::size_t> (at);
    return levels[below] + (at - static_cast<float> (below)) * (levels[below + 1] - levels[below]);
}

void CarrierPresence::reset() noexcept
{
    meanSquare = scatter = cross = lineX = lineY = nominal = 0;
    lastX = lastY = 0;
    present = atRest = false;
    restTicks = heardTicks = 0;
    absentTicks = ticksOf (1);
}

void CarrierPresence::observe (const ControlCircle::Points& points, const TickLanes& jitter,
                               int trustedFrames) noexcept
{
    TickLanes turned, across, along, scattered;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        across[i] = points.x[i] * points.x[i] - points.y[i] * points.y[i];
        along[i] = 2 * points.x[i] * points.y[i];
        scattered[i] = jitter[i] * jitter[i];
    }
    for (int i = 1; i < TickLanes::size; ++i) // behind the tick's last frame all is 0
        turned[i] = points.x[i] * points.y[i - 1] - points.y[i] * points.x[i - 1];
    turned[0] = points.x[0] * lastY - points.y[0] * lastX;
    lastX = points.x[frames - 1];
    lastY = points.y[frames - 1];

    const auto n = static_cast<float> (frames);
    meanSquare += leak * (points.squared.sum() - n * meanSquare);
    scatter += leak * (scattered.sum() - static_cast<float> (trustedFrames) * scatter);
    cross += 0.6f * leak * (turned.sum() - n * cross);
    lineX += 0.5f * leak * (across.sum() - n * lineX);
    lineY += 0.5f * leak * (along.sum() - n * lineY);
}

void CarrierPresence::judge (double hz, bool inGap) noexcept
{
    const auto level = std::sqrt (meanSquare);
    // Frequency weighed by energy: rumble that passes near zero leaps in angle, but has no weight there.
    const auto slowHz =
        std::abs (cross) / std::max (meanSquare, 1e-20f) * rate / (2 * std::numbers::pi_v<float>);

    const auto floor = (absentTicks < ticksOf (0.02) ? 0.15f : 0.22f) * nominal;
    const bool onCourse = scatter < 0.025f && level > 1e-4f && (inGap || level > floor);
    // Before a carrier was heard, hum could be one; but it moves both channels along one line.
    const bool unproved =
        nominal == 0 && (slowHz < 60 || lineX * lineX + lineY * lineY > 0.7225f * meanSquare * meanSquare);
    // A weak carrier that hardly turns is rumble. A record's level falls with its speed, a disc's does not.
    const bool weak = level < (vinyl ? (atRest ? 0.5f : 0.4f) : 0.7f) * nominal;
    restTicks =
        weak && slowHz < (atRest ? 60 : 40) ? std::min (restTicks + 1, 100) : std::max (0, restTicks - 4);
    atRest = weak && restTicks > (atRest ? 0 : ticksOf (0.012));

    // After a rest a carrier has to last longer than dust does.
    const bool heard = onCourse && !unproved && !atRest;
    absentTicks = heard ? absentTicks : std::min (absentTicks + 1, ticksOf (1));
    heardTicks = heard ? heardTicks + 1 : 0;
    if (heardTicks > ticksOf (0.0025))
        absentTicks = 0;
    present = heard && absentTicks < ticksOf (0.02);

    if (present && hz > 0.15 * carrier && hz < 2 * carrier)
    {
        const auto heardLevel = level / levelAt (hz / carrier);
        nominal += (heardLevel > nominal ? 0.01f : 0.0005f) * (heardLevel - nominal);
    }
}
