#pragma once

#include "timecode/CarrierPresence.h"
#include "timecode/ControlCircle.h"
#include "timecode/TurnHistory.h"

/** Follows a carrier in quadrature: its turns and the speed of the groove.

    The channels are made a circle and read as an angle, which is counted on through whole turns. Speed is the slope of
    that count by least squares: over 3 ms while a hand moves the record, over up to 16 ms while the longer slopes
    agree with the shorter. Angles that leave the course (dust, dropouts) are waited out for 3 ms; when they were the
    hand after all, the count goes back to where it began and follows them. Audio thread; allocates nothing. */
class CarrierTracker
{
public:
    struct Reading
    {
        double turns = 0;          ///< cycles of the carrier since reset, forward is up
        double lateTurns = 0;      ///< the same some 1.5 ms ago, smoothed: the place of what follows
        double turnsPerSample = 0; ///< there
        float level = 0; ///< radius of the circle as it would be at nominal speed, in units of the input
        float burst = 0; ///< the disc's third harmonic, matched
        float burstWeight = 0; ///< the same if the slot is set
        bool present = false;  ///< a carrier stands or turns
        bool even = false;     ///< the speed hardly changes
        bool coasting = false; ///< the signal is away or disturbed, turns go on at their speed
    };

    /** Sets the medium and the rate of the input, Hz, and resets. */
    void prepare (const ControlMedium&, double sampleRate) noexcept;
    void reset() noexcept;

    /** Reads one frame. */
    Reading process (float left, float right) noexcept;

    /** Speed of the groove, 1 nominal, at most 10 either way; 0 without a carrier. */
    double speed() const noexcept { return groovesSpeed; }

    const CarrierPresence& carrierPresence() const noexcept { return presence; }

private:
    void follow (float angle, bool collapsed) noexcept;
    void resumeAt (double newTurns) noexcept;
    void believe() noexcept;
    void tick() noexcept;
    Reading lateReading (const ControlCircle::Point&, bool coasting) noexcept;

    double rate = 44100, carrier = 1000;
    bool disc = false, vinyl = false;
    ControlCircle circle;
    CarrierPresence presence;
    TurnHistory history;

    // The count and what disturbs it, in samples.
    double turns = 0, turnsPerSample = 0, lineTurns = 0, lineStep = 0;
    double jitter = 0, meanJitter = 0.01, lastAngle = 0, lastMiss = 0;
    int strayed = 0, smoothStrays = 0, calm = 0, trusting = 0, gap = 0;
    int longestStray = 132, longestHold = 882;
    bool coasting = false;
    float brief = 0, before = 0; // the circle's square over 0.3 and 16 ms

    int evenTicks = 0, samplesInTick = 0;
    double tickSum = 0, groovesSpeed = 0, slopeNoise = 0;

    static constexpr std::size_t pathSize = 1024; // samples, more than 3 ms at 192 kHz
    std::array<float, pathSize> angles {};
    std::array<double, pathSize> path {};
    std::size_t pathIndex = 0;

    struct Late
    {
        float primary = 0, level = 0;
    };
    std::array<Late, 1024> late {};
    int lateIndex = 0;
    double lateTurns = 0, lateStep = 0;
    float lateGain = 1;
};
