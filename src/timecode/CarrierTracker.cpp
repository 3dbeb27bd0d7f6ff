#include "timecode/CarrierTracker.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr double fastestStep = 0.45; // turns a sample; at half a turn the direction is lost

/** Angle in turns, 0 where y stands alone, growing towards x; 0.00002 turns exact (a minimax polynomial). */
float turnsOf (float x, float y) noexcept
{
    const auto ax = std::abs (x), ay = std::abs (y);
    const auto big = std::max (ax, ay), small = std::min (ax, ay);
    if (big <= 0)
        return 0;
    const auto q = small / big, s = q * q;
    auto turns =
        q
        * (0.15915494f
           + s * (-0.05303984f + s * (0.03154769f + s * (-0.02028754f + s * (0.01012353f - s * 0.00247f)))));
    if (ax > ay)
        turns = 0.25f - turns;
    if (y < 0)
        turns = 0.5f - turns;
    return x < 0 ? -turns : turns;
}

/** Sine of an angle of 0 to 1 turns, a few millionths exact (the Taylor series of a quarter turn). */
float sineOf (float turns) noexcept
{
    auto t = turns > 0.75f ? turns - 1 : (turns > 0.25f ? 0.5f - turns : turns);
    t *= 2 * std::numbers::pi_v<float>;
    const auto s = t * t;
    return t * (1 + s * (-0.16666667f + s * (0.0083333310f + s * (-0.00019840874f + s * 2.7525562e-6f))));
}

/** The same angle within half a turn of 0. */
double wrapped (double turns) noexcept
{
    return turns - static_cast<double> (static_cast<std::int64_t> (turns + (turns < 0 ? -0.5 : 0.5)));
}

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
    circle.prepare (medium, rate);
    presence.prepare (medium, rate);
    history.prepare (rate);
    longestStray = std::min (static_cast<int> (0.003 * rate), static_cast<int> (pathSize) - 2);
    longestHold = static_cast<int> (0.02 * rate);
    reset();
}

void CarrierTracker::reset() noexcept
{
    circle.reset();
    presence.reset();
    history.reset();
    turns = turnsPerSample = lineTurns = lineStep = jitter = lastAngle = lastMiss = 0;
    meanJitter = 0.01;
    strayed = smoothStrays = calm = trusting = gap = 0;
    coasting = false;
    brief = before = 0;
    evenTicks = samplesInTick = 0;
    tickSum = groovesSpeed = slopeNoise = 0;
    angles.fill (0);
    path.fill (0);
    late.fill ({});
    pathIndex = 0;
    lateIndex = 0;
    lateTurns = lateStep = 0;
    lateGain = 1;
}

CarrierTracker::Reading CarrierTracker::process (float left, float right) noexcept
{
    if (!std::isfinite (left) || !std::isfinite (right))
        left = right = 0;
    const auto hz = static_cast<float> (std::abs (turnsPerSample) * rate);
    const auto point = circle.process (std::clamp (left, -8.0f, 8.0f), std::clamp (right, -8.0f, 8.0f), hz,
                                       presence.energy(), presence.isPresent());

    const auto leak = static_cast<float> (1 / (0.005 * rate));
    brief += 16 * leak * (point.squared() - brief);
    const bool collapsed =
        (presence.isPresent() || gap > 0) && brief < 0.01f * before && gap < 3 * longestHold;
    if (!collapsed)
        before += 0.3f * leak * (point.squared() - before);

    follow (turnsOf (point.x, point.y), collapsed);
    presence.observe (point, jitter, !coasting);
    const auto reading = lateReading (point, coasting);

    tickSum += turns;
    if (++samplesInTick == history.samplesPerTick())
        tick();
    return reading;
}

void CarrierTracker::follow (float angle, bool collapsed) noexcept
{
    // While the groove runs evenly, the line through its last 6 ms foretells better than the last sample does.
    const auto step = std::clamp (turnsPerSample, -fastestStep, fastestStep);
    const bool even = evenTicks > 0;
    const auto foretold = even ? lineTurns + lineStep * (samplesInTick + 1) : turns + step;
    const auto miss = wrapped (angle - foretold);
    jitter = wrapped (angle - lastAngle - step);
    lastAngle = static_cast<double> (angle);

    const bool strays = collapsed || std::abs (miss) > (even ? 0.05 : 0.1) + 4 * meanJitter;
    const bool smooth = std::abs (wrapped (miss - lastMiss)) < 0.002 + 0.1 * std::abs (lineStep) + meanJitter;
    lastMiss = miss;
    smoothStrays = strays && smooth ? smoothStrays + 1 : 0;
    calm = strays ? 0 : calm + 1;
    if (calm > longestStray / 4)
        strayed = 0;
    const bool disturbed = presence.isPresent() && trusting == 0 && (strays || strayed > 0);
    coasting = collapsed || (disturbed && strayed < longestStray && smoothStrays < longestStray / 3);

    angles[pathIndex] = angle;
    if (coasting)
    {
        ++strayed;
        turns = foretold;
    }
    else if (gap > 0)
        resumeAt (foretold + miss);
    else if (disturbed && strayed <= longestStray)
        believe();
    else
    {
        turns = foretold + miss;
        trusting = std::max (0, trusting - 1);
        if (!strays)
            meanJitter += 0.002 * (std::abs (jitter) - meanJitter);
    }
    gap = collapsed ? gap + 1 : 0;
    path[pathIndex] = turns;
    pathIndex = (pathIndex + 1) & (pathSize - 1);
}

void CarrierTracker::resumeAt (double newTurns) noexcept
{
    // The signal is back in a new phase: what was measured before moves along, so that no leap is read as speed.
    const auto shift = newTurns - (turns + turnsPerSample);
    history.shift (shift);
    tickSum += shift * samplesInTick;
    turns = newTurns;
    trusting = longestStray;
    evenTicks = strayed = 0;
}

void CarrierTracker::believe() noexcept
{
    // The hand moved the record after all: follow it from where the angles left their course.
    const auto at = [this] (int back)
    { return (pathIndex - static_cast<std::size_t> (back)) & (pathSize - 1); };
    turns = path[at (strayed + 1)];
    for (int back = strayed; back >= 0; --back)
    {
        turns += wrapped (angles[at (back)] - turns);
        path[at (back)] = turns;
    }
    const auto length = history.samplesPerTick();
    for (int t = 0; t < (strayed + length - 1 - samplesInTick) / length; ++t)
    {
        double sum = 0;
        for (int i = 1; i <= length; ++i)
            sum += path[at (samplesInTick + t * length + i)];
        history.replace (t, sum / length);
    }
    tickSum = 0;
    for (int i = 1; i <= samplesInTick; ++i)
        tickSum += path[at (i)];
    trusting = 2 * longestStray;
    evenTicks = strayed = 0;
}

CarrierTracker::Reading CarrierTracker::lateReading (const ControlCircle::Point& point,
                                                     bool isCoasting) noexcept
{
    // Bits are read in the middle of the slope's window, where the phase is known from both sides.
    auto& kept = late[static_cast<std::size_t> (lateIndex)];
    const auto there = lateTurns + lateStep * samplesInTick;
    Reading reading { turns,         there,     lateStep, kept.level * lateGain, 0, 0, presence.isPresent(),
                      evenTicks > 0, isCoasting };
    if (disc)
    {
        const auto part = wrapped (there);
        const auto sine = sineOf (static_cast<float> (part < 0 ? part + 1 : part));
        const auto third = sine * (3 - 4 * sine * sine);
        reading.burst = (kept.primary - sine) * third;
        reading.burstWeight = 0.5f * third * third;
    }
    kept = { point.primary, std::sqrt (point.squared()) };
    lateIndex = lateIndex + 1 == history.samplesToMiddle() ? 0 : lateIndex + 1;
    return reading;
}

void CarrierTracker::tick() noexcept
{
    history.push (tickSum / samplesInTick);
    tickSum = 0;
    samplesInTick = 0;

    const auto toSpeed = rate / carrier;
    const auto shortest = history.slope (0), longer = history.slope (1), longest = history.slope (2);
    presence.judge (std::abs (shortest) * rate, gap > 0 && gap < longestHold);
    if (gap >= longestHold)
        evenTicks = 0;
    circle.adapt (presence.energy());

    // A longer slope counts as far as it agrees with the shorter within their noise.
    const auto a = shortest * toSpeed, b = longer * toSpeed, c = longest * toSpeed;
    if (std::abs (b - c) < 0.01 + slopeNoise)
        slopeNoise += 0.01 * (std::min (std::abs (a - b), 0.05) - slopeNoise);
    const auto first = agreement (a, b, 0.003 + 3 * slopeNoise);
    const auto second = first * agreement (b, c, 0.001 + slopeNoise);
    const bool speaks = presence.isPresent() && gap < longestHold;
    groovesSpeed = speaks ? std::clamp (a + first * (b - a) + second * (c - b), -10.0, 10.0) : 0;

    const bool agree = std::abs (a - b) + std::abs (b - c) < 0.01 + 4 * slopeNoise;
    evenTicks = agree && presence.isPresent() && strayed == 0 && trusting == 0
                    ? static_cast<int> (0.008 * TurnHistory::ticksPerSecond)
                    : std::max (0, evenTicks - 1);

    const auto length = history.samplesPerTick();
    turnsPerSample = std::clamp (shortest, -fastestStep, fastestStep);
    lineStep = longer;
    lineTurns = history.mean (1) + lineStep * 0.5 * (length * history.lengthInTicks (1) - 1);
    lateStep = shortest;
    lateTurns = history.middle() - lateStep * 0.5 * (length - 1);
    lateGain = vinyl ? 1 / cartridgeLevel (a, carrier) : 1;
}
