#pragma once

#include "timecode/CarrierPresence.h"
#include "timecode/ControlCircle.h"
#include "timecode/TurnCounter.h"

/** Follows a carrier in quadrature: its turns and the speed of the groove.

    The channels are made a circle and read as an angle, whose turns are counted. Speed is the slope of that count by
    least squares: over 3 ms while a hand moves the record, over up to 16 ms while the longer slopes agree with the
    shorter. All work is done a tick (136 microseconds) at a time. Audio thread; allocates nothing. */
class CarrierTracker
{
public:
    /** The groove at a tick, and the frames of the tick in the middle of the shortest slope's window, some 1.5 ms
        ago, where the phase is known from both sides: there bits are read. */
    struct Reading
    {
        double turns = 0;     ///< cycles of the carrier since reset, forward is up; at the tick's last frame
        double lateTurns = 0; ///< the same at the first frame of the late tick, smoothed
        double turnsPerFrame = 0; ///< there
        double ahead = 0;         ///< turns that the high pass put the carrier ahead; taken off
        TickLanes
            level; ///< radius of the circle as it would be at nominal speed, in units of the input; not of a disc
        TickLanes burst;       ///< the disc's third harmonic, matched
        TickLanes burstWeight; ///< the same if the slot is set
        bool present = false;  ///< a carrier stands or turns
        bool away = false;     ///< the signal collapsed at once, turns go on at their speed for 60 ms
        bool even = false;     ///< the speed hardly changes
        bool coasting = false; ///< the signal is away or disturbed, turns go on at their speed
    };

    /** Sets the medium and the rate of the input, Hz, and resets. */
    void prepare (const ControlMedium&, double sampleRate) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

    PX_AUDIO_THREAD int framesInTick() const noexcept { return history.samplesPerTick(); }

    /** Reads a tick of frames; those behind its last must be 0. */
    PX_AUDIO_THREAD const Reading& process (const TickLanes& left, const TickLanes& right) noexcept;

    /** Speed of the groove, 1 nominal, at most 10 either way; 0 without a carrier. */
    PX_AUDIO_THREAD double speed() const noexcept { return groovesSpeed; }

    /** The disc's bursts are cut off by the input. */
    PX_AUDIO_THREAD bool isClipped() const noexcept { return circle.isClipped(); }

    PX_AUDIO_THREAD const CarrierPresence& carrierPresence() const noexcept { return presence; }

private:
    PX_AUDIO_THREAD bool hasCollapsed() noexcept;
    PX_AUDIO_THREAD void judgeSpeed (bool leftTheCourse) noexcept;
    PX_AUDIO_THREAD void readLateTick() noexcept;

    double rate = 44100, carrier = 1000;
    bool disc = false, vinyl = false;
    ControlCircle circle;
    CarrierPresence presence;
    TurnHistory history;
    TurnCounter counter;

    ControlCircle::Points points;
    TurnCounter::Extrapolation extrapolated;
    Reading reading;
    int longestHold = 882;       // frames
    float brief = 0, before = 0; // the circle's square over 0.3 and 16 ms

    int evenTicks = 0, heardTicks = 0;
    double groovesSpeed = 0, slopeNoise = 0;

    /** Points of the last ticks, until they are in the middle of the slope's window. */
    struct Late
    {
        TickLanes primary, squared;
        bool coasting = false;
    };
    std::array<Late, 32> late {};
    std::size_t lateIndex = 0;
};
