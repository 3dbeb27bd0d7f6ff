#include "timecode/CarrierTracker.h"

#include <algorithm>
#include <cmath>

namespace
{
// Of the way between the middles of the two shorter windows: a hand's speed goes on as it changed.
constexpr double lead =
    0.2; // and of that between the middles of the longer ones, where the longest is too long
constexpr double laterLead = 0.12;
constexpr double noiseShare = 10;    // a second: what a scratch bends within its turns is no noise
constexpr double slowestAhead = 0.1; // speed below which a turn may be near
constexpr double fastestStep = 0.45; // turns a frame; at half a turn the direction is lost

/** 1 where two speeds agree, falling to 0 as they differ by more than a tolerance. */
double agreement (double a, double b, double tolerance) noexcept
{
    const auto d = (a - b) / tolerance;
    return 1 / (1 + d * d * d * d);
}
} // namespace

void CarrierTracker::prepare (const ControlMedium& medium, double sampleRate) noexcept
{
    rate = sampleRate;
    carrier = medium.carrierHz;
    disc = medium.isOwnDisc();
    vinyl = medium.levelFollowsSpeed;
    history.prepare (rate, disc);
    circle.prepare (medium, rate, framesInTick());
    presence.prepare (medium, rate, framesInTick());
    counter.prepare (rate, framesInTick());
    longestHold = static_cast<int> (0.02 * rate);
    reset();
}

void CarrierTracker::reset() noexcept
{
    circle.reset();
    presence.reset();
    history.reset();
    counter.reset();
    extrapolated = {};
    reading = {};
    brief = before = 0;
    evenTicks = heardTicks = 0;
    groovesSpeed = slopeNoise = 0;
    late.fill ({});
    lateIndex = 0;
}

const CarrierTracker::Reading& CarrierTracker::process (const TickLanes& left,
                                                        const TickLanes& right) noexcept
{
    const auto hz = static_cast<float> (std::abs (extrapolated.step) * rate);
    circle.process (left, right, hz, presence.energy(), presence.isPresent(), evenTicks > 0, points);
    TickLanes angles;
    for (int i = 0; i < TickLanes::size; ++i)
        angles[i] = turn::ofPoint (points.x[i], points.y[i]);

    const auto& counted = counter.count (angles, hasCollapsed(), presence.isPresent(), extrapolated, history);
    presence.observe (points, counted.jitter, counted.trustedFrames);
    history.push (counted.mean);
    judgeSpeed (counted.leftTheCourse);

    reading.turns = counter.turns() - reading.ahead;
    reading.present = presence.isPresent();
    reading.away = counter.framesAway() > 0;
    reading.even = evenTicks > 0;
    lateIndex = (lateIndex + 1) & (late.size() - 1);
    late[lateIndex] = { points.primary, points.squared, counted.trustedFrames < framesInTick() };
    readLateTick();
    return reading;
}

bool CarrierTracker::hasCollapsed() noexcept
{
    const auto frames = static_cast<float> (framesInTick());
    const auto leak = static_cast<float> (1 / (0.005 * rate));
    const auto mean = points.squared.sum() / frames;
    brief += std::min (1.0f, 16 * leak * frames) * (mean - brief);
    const auto gap = counter.framesAway();
    const auto noise = presence.noiseLevel();
    // A record's level falls as quickly when a hand stops it.
    const auto nothing = std::clamp (4 * noise * noise, 0.01f, vinyl ? 0.06f : 0.15f) * before;
    const bool collapsed = (presence.isSettled() || gap > 0) && brief < nothing && gap < 3 * longestHold;
    if (!collapsed)
        before += 0.3f * leak * frames * (mean - before);
    return collapsed;
}

void CarrierTracker::judgeSpeed (bool leftTheCourse) noexcept
{
    const auto toSpeed = rate / carrier;
    const auto shortest = history.slope (0), longer = history.slope (1), longest = history.slope (2);
    const auto gap = counter.framesAway();
    presence.judge (std::abs (shortest) * rate, brief, circle.rumble(), gap > 0 && gap < longestHold);
    if (gap >= longestHold || leftTheCourse)
        evenTicks = 0;
    heardTicks = presence.isPresent() && gap == 0 ? std::min (heardTicks + 1, history.lengthInTicks (2)) : 0;

    // A longer slope counts as far as it agrees with the shorter within their noise.
    const auto a = shortest * toSpeed, b = longer * toSpeed, c = longest * toSpeed;
    if (std::abs (b - c) < 0.01 + slopeNoise)
        slopeNoise +=
            noiseShare / history.ticksPerSecond() * (std::min (std::abs (a - b), 0.05) - slopeNoise);
    // A window counts once it holds the carrier alone.
    const auto lastsFor = [&] (int window) { return heardTicks >= history.lengthInTicks (window); };
    const auto first = lastsFor (1) ? agreement (a, b, 0.003 + 3 * slopeNoise) : 0;
    const auto second = lastsFor (2) ? first * agreement (b, c, 0.001 + slopeNoise) : 0;
    const bool speaks = presence.isPresent() && gap < longestHold;
    const auto now = lastsFor (1) ? a + lead * (1 - first) * (a - b) : a;
    const auto later = lastsFor (2) ? laterLead * (first - second) * (b - c) : 0;
    groovesSpeed = speaks ? std::clamp (now + first * (b - a) + second * (c - b) + later, -10.0, 10.0) : 0;

    const bool agree = std::abs (a - b) + std::abs (b - c) < 0.01 + 4 * slopeNoise;
    evenTicks = agree && presence.isPresent() && counter.isOnCourse()
                    ? static_cast<int> (0.008 * history.ticksPerSecond())
                    : std::max (0, evenTicks - 1);

    const auto length = framesInTick();
    extrapolated.step = std::clamp (shortest, -fastestStep, fastestStep);
    extrapolated.lineStep = longer;
    extrapolated.lineTurns = history.mean (1) + longer * 0.5 * (length * history.lengthInTicks (1) - 1);
    extrapolated.isEven = evenTicks > 0;
    reading.turnsPerFrame = shortest;
    // The high pass's lead is ahead in time: forwards further on, backwards further back.
    reading.ahead =
        static_cast<double> (circle.leadTurns()) * std::clamp (shortest * toSpeed / slowestAhead, -1.0, 1.0);
    reading.lateTurns = history.middle() - shortest * 0.5 * (length - 1) - reading.ahead;
}

void CarrierTracker::readLateTick() noexcept
{
    const auto& kept =
        late[(lateIndex - static_cast<std::size_t> (history.ticksToMiddle())) & (late.size() - 1)];
    reading.coasting = kept.coasting;
    if (!disc)
    {
        const auto gain = 1 / presence.levelAt (reading.turnsPerFrame * rate / carrier);
        for (int i = 0; i < framesInTick(); ++i)
            reading.level[i] = std::sqrt (kept.squared[i]) * gain;
        return;
    }
    const auto first = static_cast<float> (turn::wrapped (reading.lateTurns));
    const auto step = static_cast<float> (reading.turnsPerFrame), ahead = static_cast<float> (reading.ahead);
    for (int i = 0; i < TickLanes::size; ++i)
    {
        const auto angle = first + step * static_cast<float> (i);
        const auto sine = turn::sine (turn::wrapped (angle));
        const auto third = sine * (3 - 4 * sine * sine);
        reading.burst[i] = (kept.primary[i] - turn::sine (turn::wrapped (angle + ahead))) * third;
        reading.burstWeight[i] = 0.5f * third * third;
    }
}
