#include "timecode/CarrierTracker.h"

#include <algorithm>
#include <cmath>

namespace
{
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
    history.prepare (rate);
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
    evenTicks = 0;
    groovesSpeed = slopeNoise = 0;
    late.fill ({});
    lateIndex = 0;
}

const CarrierTracker::Reading& CarrierTracker::process (const TickLanes& left,
                                                        const TickLanes& right) noexcept
{
    const auto hz = static_cast<float> (std::abs (extrapolated.step) * rate);
    circle.process (left, right, hz, presence.energy(), presence.isPresent(), points);
    TickLanes angles;
    for (int i = 0; i < TickLanes::size; ++i)
        angles[i] = turn::ofPoint (points.x[i], points.y[i]);

    const auto& counted = counter.count (angles, hasCollapsed(), presence.isPresent(), extrapolated, history);
    presence.observe (points, counted.jitter, counted.trustedFrames);
    history.push (counted.mean);
    judgeSpeed (counted.leftTheCourse);

    reading.turns = counter.turns();
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
    presence.judge (std::abs (shortest) * rate, circle.rumble(), gap > 0 && gap < longestHold);
    if (gap >= longestHold || leftTheCourse)
        evenTicks = 0;

    // A longer slope counts as far as it agrees with the shorter within their noise.
    const auto a = shortest * toSpeed, b = longer * toSpeed, c = longest * toSpeed;
    if (std::abs (b - c) < 0.01 + slopeNoise)
        slopeNoise += 73 / history.ticksPerSecond() * (std::min (std::abs (a - b), 0.05) - slopeNoise);
    const auto first = agreement (a, b, 0.003 + 3 * slopeNoise);
    const auto second = first * agreement (b, c, 0.001 + slopeNoise);
    const bool speaks = presence.isPresent() && gap < longestHold;
    groovesSpeed = speaks ? std::clamp (a + first * (b - a) + second * (c - b), -10.0, 10.0) : 0;

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
    reading.lateTurns = history.middle() - shortest * 0.5 * (length - 1);
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
    const auto step = static_cast<float> (reading.turnsPerFrame);
    for (int i = 0; i < TickLanes::size; ++i)
    {
        const auto sine = turn::sine (turn::wrapped (first + step * static_cast<float> (i)));
        const auto third = sine * (3 - 4 * sine * sine);
        reading.burst[i] = (kept.primary[i] - sine) * third;
        reading.burstWeight[i] = 0.5f * third * third;
    }
}
