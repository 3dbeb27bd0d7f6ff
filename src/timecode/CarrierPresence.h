#pragma once

#include "timecode/ControlCircle.h"

/** Level of a cartridge behind a phono stage at a speed, 1 at the nominal one: velocity through the replay curve of
    the RIAA (3,180, 318 and 75 microseconds). */
float cartridgeLevel (double speed, double carrierHz) noexcept;

/** Tells a carrier, turning or held, from hum, noise, rumble and dust. Audio thread; allocates nothing. */
class CarrierPresence
{
public:
    void prepare (const ControlMedium&, double sampleRate) noexcept;
    void reset() noexcept;

    /** Takes in a point of the circle.
        @param jitter      turns by which its angle missed its course
        @param isTrusted   the point lies on its course, or was waited for long enough */
    void observe (const ControlCircle::Point&, double jitter, bool isTrusted) noexcept;

    /** Judges, once a tick.
        @param hz     frequency of the carrier over the last 3 ms
        @param inGap  the signal collapsed less than 20 ms ago */
    void judge (double hz, bool inGap) noexcept;

    bool isPresent() const noexcept { return present; }

    /** Mean square of the circle's radius over 5 ms. */
    float energy() const noexcept { return meanSquare; }

    /** Level of the carrier at nominal speed, root mean square; 0 before one was heard. */
    float nominalLevel() const noexcept { return nominal; }

private:
    double carrier = 1000;
    float leak = 0.005f, rate = 44100;
    bool vinyl = false;

    float meanSquare = 0, scatter = 0, cross = 0, lineX = 0, lineY = 0, nominal = 0;
    ControlCircle::Point last;
    bool present = false, atRest = false;
    int restTicks = 0, heardTicks = 0, absentTicks = 0;
};
