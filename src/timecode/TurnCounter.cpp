#include "timecode/TurnCounter.h"

#include <algorithm>
#include <cmath>

void TurnCounter::prepare (double sampleRate, int framesInTick) noexcept
{
    frames = framesInTick;
    longestStray = std::min (static_cast<int> (0.003 * sampleRate), (rowCount - 2) * frames);
    reset();
}

void TurnCounter::reset() noexcept
{
    now = sum = lastMiss = 0;
    meanJitter = 0.01;
    lastAngle = 0;
    strayed = smoothStrays = calm = trusting = gap = 0;
    coasting = isEven = false;
    counted = {};
    rows.fill ({});
    row = 0;
}

float& TurnCounter::angleAt (int framesIntoTick) noexcept
{
    const auto at = row * frames + framesIntoTick + rowCount * frames;
    return rows[static_cast<std::size_t> (at / frames) & (rowCount - 1)].angles[at % frames];
}

double& TurnCounter::countAt (int framesIntoTick) noexcept
{
    const auto at = row * frames + framesIntoTick + rowCount * frames;
    return rows[static_cast<std::size_t> (at / frames) & (rowCount - 1)]
        .counts[static_cast<std::size_t> (at % frames)];
}

const TurnCounter::Counted& TurnCounter::count (const TickLanes& angles, bool collapsed, bool isPresent,
                                                const Extrapolation& extrapolated,
                                                TurnHistory& ticks) noexcept
{
    row = (row + 1) & (rowCount - 1);
    rows[static_cast<std::size_t> (row)].angles = angles;
    counted.leftTheCourse = false;

    const auto step = static_cast<float> (extrapolated.step);
    TickLanes missed;
    missed[0] = angles[0] - lastAngle - step;
    for (int i = 1; i < TickLanes::size; ++i)
        missed[i] = angles[i] - angles[i - 1] - step;
    for (int i = 0; i < TickLanes::size; ++i)
        counted.jitter[i] = i < frames ? turn::wrapped (missed[i]) : 0;
    counted.trustedFrames = frames;

    const bool isQuiet = !collapsed && gap == 0 && strayed == 0 && trusting == 0 && !coasting;
    if (!isQuiet || !countTogether (angles, extrapolated))
    {
        sum = 0;
        isEven = extrapolated.isEven;
        for (int i = 0; i < frames; ++i)
            countOne (i, collapsed, isPresent, extrapolated, ticks);
    }
    lastAngle = angles[frames - 1];
    counted.mean = sum / frames;
    return counted;
}

bool TurnCounter::countTogether (const TickLanes& angles, const Extrapolation& extrapolated) noexcept
{
    // Misses are the jitter if the last frame foretells the next; a line foretells each frame by itself.
    TickLanes misses = counted.jitter;
    const auto start = extrapolated.isEven ? extrapolated.lineTurns : now;
    const auto step = extrapolated.isEven ? extrapolated.lineStep : extrapolated.step;
    if (extrapolated.isEven)
    {
        const auto lineAngle = static_cast<float> (turn::wrapped (start)),
                   lineStep = static_cast<float> (step);
        for (int i = 0; i < TickLanes::size; ++i)
            misses[i] =
                turn::wrapped (turn::wrapped (angles[i] - lineAngle) - lineStep * static_cast<float> (i + 1));
    }
    const auto limit = (extrapolated.isEven ? 0.05f : 0.1f) + 4 * static_cast<float> (meanJitter);
    for (int i = 0; i < frames; ++i)
        if (std::abs (misses[i]) > limit)
            return false;

    if (!extrapolated.isEven)
        for (int i = 1; i < TickLanes::size; ++i)
            misses[i] += misses[i - 1];
    auto& counts = rows[static_cast<std::size_t> (row)].counts;
    for (std::size_t i = 0; i < counts.size(); ++i)
        counts[i] = start + step * static_cast<double> (static_cast<int> (i) + 1)
                    + static_cast<double> (misses.values[i]);
    now = counts[static_cast<std::size_t> (frames - 1)];
    auto off = 0.0f, unsteady = 0.0f;
    for (int i = 0; i < frames; ++i)
    {
        off += misses[i];
        unsteady += std::abs (counted.jitter[i]);
    }
    sum = frames * (start + step * 0.5 * (frames + 1)) + static_cast<double> (off);
    meanJitter += 0.002 * (static_cast<double> (unsteady) - frames * meanJitter);
    lastMiss = static_cast<double> (misses[frames - 1]);
    smoothStrays = 0;
    calm = std::min (calm + frames, 2 * longestStray);
    return true;
}

void TurnCounter::countOne (int frame, bool collapsed, bool isPresent, const Extrapolation& extrapolated,
                            TurnHistory& ticks) noexcept
{
    const auto angle = static_cast<double> (angleAt (frame));
    const auto foretold =
        isEven ? extrapolated.lineTurns + extrapolated.lineStep * (frame + 1) : now + extrapolated.step;
    const auto miss = turn::wrapped (angle - foretold);

    const bool strays = collapsed || std::abs (miss) > (isEven ? 0.05 : 0.1) + 4 * meanJitter;
    const bool smooth = std::abs (turn::wrapped (miss - lastMiss))
                        < 0.002 + 0.1 * std::abs (extrapolated.lineStep) + meanJitter;
    lastMiss = miss;
    smoothStrays = strays && smooth ? smoothStrays + 1 : 0;
    calm = strays ? 0 : calm + 1;
    if (calm > longestStray / 4)
        strayed = 0;
    const bool disturbed = isPresent && trusting == 0 && (strays || strayed > 0);
    coasting = collapsed || (disturbed && strayed < longestStray && smoothStrays < longestStray / 3);

    if (coasting)
    {
        ++strayed;
        now = foretold;
    }
    else if (gap > 0)
    {
        resumeAt (foretold + miss, frame, extrapolated.step, ticks);
    }
    else if (disturbed && strayed <= longestStray)
    {
        believe (frame, ticks);
    }
    else
    {
        now = foretold + miss;
        trusting = std::max (0, trusting - 1);
        if (!strays)
            meanJitter += 0.002 * (std::abs (static_cast<double> (counted.jitter[frame])) - meanJitter);
    }
    if (coasting)
    {
        counted.jitter[frame] = 0;
        --counted.trustedFrames;
    }
    gap = collapsed ? gap + 1 : 0;
    countAt (frame) = now;
    sum += now;
}

void TurnCounter::resumeAt (double newTurns, int frame, double step, TurnHistory& ticks) noexcept
{
    // The signal is back in a new phase: what was measured before moves along, so that no leap is read as speed.
    const auto shift = newTurns - (now + step);
    ticks.shift (shift);
    sum += shift * frame;
    now = newTurns;
    trusting = longestStray;
    strayed = 0;
    isEven = false;
    counted.leftTheCourse = true;
}

void TurnCounter::believe (int frame, TurnHistory& ticks) noexcept
{
    // The hand moved the record after all: follow it from where the angles left their line.
    now = countAt (frame - strayed - 1);
    for (int back = strayed; back >= 0; --back)
    {
        now += turn::wrapped (static_cast<double> (angleAt (frame - back)) - now);
        countAt (frame - back) = now;
    }
    for (int t = 0; t < (strayed + frames - 1 - frame) / frames; ++t)
    {
        double tick = 0;
        for (int i = 1; i <= frames; ++i)
            tick += countAt (-t * frames - i);
        ticks.replace (t, tick / frames);
    }
    sum = 0;
    for (int i = 0; i < frame; ++i)
        sum += countAt (i);
    trusting = 2 * longestStray;
    strayed = 0;
    isEven = false;
    counted.leftTheCourse = true;
}
