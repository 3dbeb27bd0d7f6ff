#pragma once

#include "timecode/TurnHistory.h"

/** Counts a circle's angle on through whole turns.

    Angles that leave their line (dust, dropouts) are waited out for 3 ms; when they were the hand after all, the count
    goes back to where it began and follows them. Angles on it, which most are, are counted a tick at a time.
    Audio thread; allocates nothing. */
class TurnCounter
{
public:
    /** Extrapolation of the ticks before. */
    struct Extrapolation
    {
        double step = 0;                    ///< turns a frame, by the last 3 ms
        double lineTurns = 0, lineStep = 0; ///< the line through the last 6 ms, from the last frame on
        bool isEven = false;                ///< the line foretells better than the last frame does
    };

    struct Counted
    {
        TickLanes jitter; ///< turns by which each angle missed the step from the one before; 0 if not trusted
        int trustedFrames = 0;      ///< frames that were not waited out
        double mean = 0;            ///< of the tick's counts
        bool leftTheCourse = false; ///< the count leapt, or went back: nothing runs evenly any more
    };

    void prepare (double sampleRate, int framesInTick) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

    /** Counts the angles of a tick.
        @param collapsed  the signal is away
        @param isPresent  a carrier stands or turns: its line may be trusted
        @param ticks      the ticks before, corrected where the count goes back or leaps */
    PX_AUDIO_THREAD const Counted& count (const TickLanes& angles, bool collapsed, bool isPresent,
                                          const Extrapolation&, TurnHistory& ticks) noexcept;

    /** Cycles of the carrier since reset, forward is up. */
    PX_AUDIO_THREAD double turns() const noexcept { return now; }

    /** Frames since the signal collapsed; 0 while it is there. */
    PX_AUDIO_THREAD int framesAway() const noexcept { return gap; }

    /** No angle strayed of late. */
    PX_AUDIO_THREAD bool isOnCourse() const noexcept { return strayed == 0 && trusting == 0; }

private:
    PX_AUDIO_THREAD bool countTogether (const TickLanes& angles, const Extrapolation&) noexcept;
    PX_AUDIO_THREAD void countOne (int frame, bool collapsed, bool isPresent, const Extrapolation&,
                                   TurnHistory&) noexcept;
    PX_AUDIO_THREAD void resumeAt (double newTurns, int frame, double step, TurnHistory&) noexcept;
    PX_AUDIO_THREAD void believe (int frame, TurnHistory&) noexcept;

    /** Angles and counts of a tick, kept so that the count can go back. */
    struct Row
    {
        TickLanes angles;
        std::array<double, TickLanes::size> counts {};
    };
    static constexpr int rowCount = 64; // ticks, more than 3 ms
    PX_AUDIO_THREAD float& angleAt (int framesIntoTick) noexcept;
    PX_AUDIO_THREAD double& countAt (int framesIntoTick) noexcept;

    int frames = 6, longestStray = 132;
    double now = 0, sum = 0, meanJitter = 0.01, lastMiss = 0;
    float lastAngle = 0;
    int strayed = 0, smoothStrays = 0, calm = 0, trusting = 0, gap = 0;
    bool coasting = false, isEven = false;
    Counted counted;
    std::array<Row, rowCount> rows {};
    int row = 0;
};
