#pragma once

#include "timecode/PositionLock.h"
#include "timecode/filter/PhonoCurve.h"

/** Cables that were plugged otherwise than the medium wants them. */
struct ControlWiring
{
    bool exchanged = false, leftInverted = false, rightInverted = false;
    bool operator== (const ControlWiring&) const = default;
};

/** Speed and place of the needle from the two channels of a control signal.

    Neighbouring frames are averaged as far as sixteen are left in a cycle of the carrier, and gathered to ticks of
    four to eight; speed is renewed with each, the place goes on between them. When a carrier is there whose code can't be
    read, other paths (wirings, for the disc a phono stage too many or too few) are tried in turn until one can. Audio thread; allocates nothing but in prepare(). */
class TimecodeDecoder
{
public:
    /** Sets medium and rate and forgets all. Not on the audio thread.
        @param code  null: only speed is read */
    void prepare (const ControlMedium&, std::shared_ptr<const GrooveCode> code, double sampleRate);

    /** Forgets what was heard. */
    PX_AUDIO_THREAD void reset() noexcept;

    PX_AUDIO_THREAD void process (float left, float right) noexcept;

    /** 1 is nominal, backwards below 0; 0 without a carrier. */
    PX_AUDIO_THREAD double speed() const noexcept { return tracker.speed(); }

    /** Seconds of the medium at its nominal speed, or nothing. */
    PX_AUDIO_THREAD std::optional<double> position() const noexcept;

    /** Seconds of groove that went by under the needle, forwards less backwards, since the last reset. After a dropout
        of up to 60 ms, of which speed() hides what lies behind its first 20 ms, it leaps by what was hidden. */
    PX_AUDIO_THREAD double travelled() const noexcept { return secondsTravelled + pendingSeconds(); }

    /** The needle's place is known: position() has one. */
    PX_AUDIO_THREAD bool isLocked() const noexcept { return code != nullptr && lock.cycle().has_value(); }

    PX_AUDIO_THREAD bool hasSignal() const noexcept { return tracker.carrierPresence().isPresent(); }

    /** Peak of the carrier at nominal speed, in units of the input; 0 before one was heard. */
    PX_AUDIO_THREAD float level() const noexcept { return tracker.carrierPresence().nominalLevel(); }

    /** Level of the noise against the carrier's. */
    PX_AUDIO_THREAD float noise() const noexcept { return tracker.carrierPresence().noiseLevel(); }

    /** Share of cycles that said what the code foretold, 0 to 1; 0 while the place is unknown. */
    PX_AUDIO_THREAD float quality() const noexcept { return lock.trustInPlace(); }

    PX_AUDIO_THREAD ControlWiring wiring() const noexcept;

private:
    PX_AUDIO_THREAD void processTick() noexcept;
    PX_AUDIO_THREAD void watchPath (const CarrierTracker::Reading&) noexcept;
    PX_AUDIO_THREAD void tryNextPath() noexcept;

    /** Seconds of groove that went by since the last tick, by its speed. */
    PX_AUDIO_THREAD double pendingSeconds() const noexcept
    {
        return tracker.speed() * (gathered * averaged + inAverage) / inputRate;
    }

    ControlMedium medium {};
    std::shared_ptr<const GrooveCode> code;
    double inputRate = 44100, secondsTravelled = 0, secondsHidden = 0;
    CarrierTracker tracker;
    PositionLock lock;
    PhonoCurve phono;
    PhonoCurve::Kind curve = PhonoCurve::Kind::none; ///< of the path

    // Frames that wait for their tick.
    TickLanes leftTick, rightTick;
    int gathered = 0, averaged = 1, inAverage = 0;
    float leftSum = 0, rightSum = 0;

    int pathIndex = 0, pathsTried = 0;
    bool pathIsProved = false;
    int unreadTicks = 0, ticksAfterHidden = 0;
};
