#include "timecode/CarrierPresence.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace
{
/** Speed below which a carrier may be hum with its harmonics. */
constexpr float fastestHum = 0.25f;
constexpr float longestRest = 0.0136f; // seconds that are remembered
}

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

int CarrierPresence::ticksOf (float seconds) const noexcept
{
    return static_cast<int> (seconds * rate / static_cast<float> (frames));
}

void CarrierPresence::reset() noexcept
{
    meanSquare = scatter = cross = lastingCross = lastingSquare = lineX = lineY = lineSquare = nominal = 0;
    noise = 0.1f;
    lastX = lastY = 0;
    present = atRest = false;
    restSeconds = 0;
    heardTicks = 0;
    absentTicks = ticksOf (1.0f);
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
    const auto turnedSum = turned.sum();
    cross += 0.6f * leak * (turnedSum - n * cross);
    lastingCross += 0.1f * leak * (turnedSum - n * lastingCross);
    lastingSquare += 0.1f * leak * (points.squared.sum() - n * lastingSquare);
    lineSquare += 0.5f * leak * (points.squared.sum() - n * lineSquare);
    lineX += 0.5f * leak * (across.sum() - n * lineX);
    lineY += 0.5f * leak * (along.sum() - n * lineY);
}

void CarrierPresence::judge (double hz, float brief, float rumble, bool inGap) noexcept
{
    const auto level = std::sqrt (meanSquare);
    if (level < 0.17f * nominal)
    {
        // Turns of before were so much stronger that they would outweigh the present ones for long.
        const auto most = meanSquare * static_cast<float> (2 * std::numbers::pi * std::max (hz, 20.0)) / rate;
        cross = std::clamp (cross, -most, most);
    }
    // Frequency weighed by energy: rumble that passes near zero leaps in angle, but has no weight there.
    const auto slowHz =
        std::abs (cross) / std::max (meanSquare, 1e-20f) * rate / (2 * std::numbers::pi_v<float>);

    const auto lastingHz =
        std::abs (lastingCross) / std::max (lastingSquare, 1e-20f) * rate / (2 * std::numbers::pi_v<float>);

    // A record's level falls with its speed, down into the rumble that was heard beside the carrier.
    const auto rumbling =
        rumble < 0 ? 0.4f : std::clamp (2.6f * rumble / std::max (nominal, 1e-6f), 0.06f, 0.9f);
    const auto lowest = vinyl ? std::clamp (std::max (0.5f * rumbling, 2 * noise), 0.03f, 0.22f) : 0.22f;
    const auto floor = (absentTicks < ticksOf (0.02f) ? 0.7f : 1.0f) * lowest * nominal;
    const bool onCourse = scatter < 0.025f && level > 1e-4f && (inGap || level > floor);
    // Before a carrier was heard, hum could be one; but it moves both channels along one line, or turns slowly and, with
    // its harmonics, unevenly.
    // The disc's ellipse reaches 0.9 while its cables are taken for each other.
    const auto thinnest = vinyl ? 0.65f : 0.88f;
    const bool isLine = lineX * lineX + lineY * lineY > thinnest * lineSquare * lineSquare;
    const bool couldBeHum = nominal == 0 && slowHz < fastestHum * static_cast<float> (carrier);
    const bool isUneven = std::abs (static_cast<float> (hz) - slowHz) > 0.5f * slowHz;
    const bool unproved = nominal == 0 && (isLine || slowHz < 65 || (couldBeHum && isUneven));
    const auto loudRumble = rumble < 0 ? 0.0f : 2.6f * rumble / std::max (nominal, 1e-6f);
    // A weak carrier that hardly turns is rumble. A disc's level does not fall.
    const auto slowest = isLine && rumbling > 0.15f ? std::max (rumbling, 0.5f) : rumbling;
    const auto reluctance = atRest ? 1.25f : 1.0f;
    const auto below = vinyl ? reluctance * slowest : std::max (0.7f, reluctance * loudRumble);
    const bool hardlyTurns = atRest && !vinyl && loudRumble > 0.3f && slowHz < 12;
    const bool weak = level < below * nominal || hardlyTurns;
    const auto tickSeconds = static_cast<float> (frames) / rate;
    // Rumble reaches up to 25 Hz, now and then in one direction, but is no louder than it was beside the carrier.
    const auto slowestTurn = 18 + 14 * std::min (1.0f, 4 * loudRumble);
    const bool lasts = atRest && lastingHz > slowestTurn && level > (vinyl ? 1.5f * rumble : 0.5f * nominal);
    const bool turns = slowHz > (atRest ? 60 : 40) || lasts;
    restSeconds = weak && !turns ? std::min (restSeconds + tickSeconds, longestRest)
                                 : std::max (0.0f, restSeconds - 4 * tickSeconds);
    const bool rested = std::exchange (atRest, weak && restSeconds > (atRest ? 0 : 0.012f));
    if (atRest && !rested)
    {
        lastingCross = 0;
        lastingSquare = meanSquare;
    }

    // After a rest a carrier has to last longer than dust does.
    // Dust moves both channels at once and dies away.
    const bool isDust =
        nominal > 0 && absentTicks >= ticksOf (0.02f) && (isLine || brief < 0.5f * meanSquare);
    const bool heard = onCourse && !unproved && !atRest && !isDust;
    absentTicks = heard ? absentTicks : std::min (absentTicks + 1, ticksOf (1.0f));
    heardTicks = heard ? heardTicks + 1 : 0;
    // A weak one turns slowly; hum is even for a part of its period.
    if (heardTicks > ticksOf (couldBeHum ? 0.008f : (level > 0.22f * nominal ? 0.0025f : 0.008f)))
        absentTicks = 0;
    present = heard && absentTicks < ticksOf (0.02f);

    if (present && hz > 0.15 * carrier && hz < 2 * carrier)
    {
        const auto heardLevel = level / levelAt (hz / carrier);
        // Noise moves the angle from frame to frame by its share of the radius, in two directions of four.
        noise += 2 * tickSeconds * (2 * std::numbers::pi_v<float> * std::sqrt (scatter) - noise);
        nominal += tickSeconds * (heardLevel > nominal ? 73.0f : 3.7f) * (heardLevel - nominal);
    }
}
