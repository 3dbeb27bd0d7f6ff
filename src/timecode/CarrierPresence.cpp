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

void CarrierPresence::prepare (const ControlMedium& medium, double sampleRate) noexcept
{
    carrier = medium.carrierHz;
    vinyl = medium.levelFollowsSpeed;
    rate = static_cast<float> (sampleRate);
    leak = 1 / (0.005f * rate);
    reset();
}

void CarrierPresence::reset() noexcept
{
    meanSquare = scatter = cross = lineX = lineY = nominal = 0;
    last = {};
    present = atRest = false;
    restTicks = heardTicks = 0;
    absentTicks = ticksOf (1);
}

void CarrierPresence::observe (const ControlCircle::Point& point, double jitter, bool isTrusted) noexcept
{
    meanSquare += leak * (point.squared() - meanSquare);
    if (isTrusted)
        scatter += leak * (static_cast<float> (jitter * jitter) - scatter);
    cross += 0.6f * leak * (point.x * last.y - point.y * last.x - cross);
    lineX += 0.5f * leak * (point.x * point.x - point.y * point.y - lineX);
    lineY += 0.5f * leak * (2 * point.x * point.y - lineY);
    last = point;
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
    const bool unproved = nominal == 0 && (slowHz < 60 || std::hypot (lineX, lineY) > 0.85f * meanSquare);
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
        const auto heardLevel = vinyl ? level / cartridgeLevel (hz / carrier, carrier) : level;
        nominal += (heardLevel > nominal ? 0.01f : 0.0005f) * (heardLevel - nominal);
    }
}
