#pragma once

#include "timecode/PositionLock.h"

/** Cables that were plugged otherwise than the medium wants them. */
struct ControlWiring
{
    bool exchanged = false, leftInverted = false, rightInverted = false;
    bool operator== (const ControlWiring&) const = default;
};

/** Speed and place of the needle from the two channels of a control signal, sample by sample.

    When a carrier is there whose code can't be read, other wirings are tried in turn until one can. Audio thread;
    allocates nothing but in prepare(). */
class TimecodeDecoder
{
public:
    /** Sets medium and rate and forgets all. Not on the audio thread.
        @param code  null: only speed is read */
    void prepare (const ControlMedium&, std::shared_ptr<const GrooveCode> code, double sampleRate);

    /** Forgets what was heard. */
    void reset() noexcept;

    void process (float left, float right) noexcept;

    /** 1 is nominal, backwards below 0; 0 without a carrier. */
    double speed() const noexcept { return tracker.speed(); }

    /** Seconds of the medium at its nominal speed, or nothing. */
    std::optional<double> position() const noexcept;

    /** Seconds of groove that went by under the needle, forwards less backwards, since the last reset. */
    double travelled() const noexcept { return turns / medium.carrierHz; }

    bool hasSignal() const noexcept { return tracker.carrierPresence().isPresent(); }

    /** Level of the carrier at nominal speed, root mean square of the input; 0 before one was heard. */
    float level() const noexcept { return tracker.carrierPresence().nominalLevel(); }

    /** Share of cycles that said what the code foretold, 0 to 1; 0 while the place is unknown. */
    float quality() const noexcept { return lock.trustInPlace(); }

    ControlWiring wiring() const noexcept;

private:
    void tryNextWiring() noexcept;

    ControlMedium medium {};
    std::shared_ptr<const GrooveCode> code;
    double rate = 44100, turns = 0;
    CarrierTracker tracker;
    PositionLock lock;

    int wiringIndex = 0, wiringsTried = 0;
    bool wiringIsProved = false;
    int unreadFrames = 0;
};
