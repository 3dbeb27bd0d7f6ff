#pragma once

#include "timecode/ControlCircle.h"

/** Level of a cartridge behind a phono stage at a speed, 1 at the nominal one: velocity through the replay curve of
    the RIAA (3,180, 318 and 75 microseconds). */
float cartridgeLevel (double speed, double carrierHz) noexcept;

/** Tells a carrier, turning or held, from hum, noise, rumble and dust. Audio thread; allocates nothing. */
class CarrierPresence
{
public:
    void prepare (const ControlMedium&, double sampleRate, int framesInTick) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

    /** Takes in the points of a tick.
        @param jitter         turns by which each angle missed its course, 0 where it is not trusted
        @param trustedFrames  points that lie on their course, or were waited for long enough */
    PX_AUDIO_THREAD void observe (const ControlCircle::Points&, const TickLanes& jitter,
                                  int trustedFrames) noexcept;

    /** Judges, once a tick.
        @param hz     frequency of the carrier over the last 3 ms
        @param brief  mean square of the radius over 0.3 ms
        @param rumble  level below the carrier, as the circle knows it
        @param inGap  the signal collapsed less than 20 ms ago */
    PX_AUDIO_THREAD void judge (double hz, float brief, float rumble, bool inGap) noexcept;

    PX_AUDIO_THREAD bool isPresent() const noexcept { return present; }

    /** The carrier has lasted longer than dust does, so that it may be carried on when it is away. */
    PX_AUDIO_THREAD bool isSettled() const noexcept { return present && heardTicks > ticksOf (0.02f); }

    /** Mean square of the circle's radius over 5 ms. */
    PX_AUDIO_THREAD float energy() const noexcept { return meanSquare; }

    /** Level of the noise against the carrier's. */
    PX_AUDIO_THREAD float noiseLevel() const noexcept { return noise; }

    /** Level of the carrier at nominal speed, root mean square; 0 before one was heard. */
    PX_AUDIO_THREAD float nominalLevel() const noexcept { return nominal; }

    /** Level that a speed has on this medium, 1 at the nominal one; always 1 on a disc. */
    PX_AUDIO_THREAD float levelAt (double speed) const noexcept;

private:
    PX_AUDIO_THREAD int ticksOf (float seconds) const noexcept;

    static constexpr int levelsPerSpeed = 32, fastestLevel = 10;

    double carrier = 1000;
    float leak = 0.005f, rate = 44100;
    int frames = 6;
    bool vinyl = false;
    std::array<float, levelsPerSpeed * fastestLevel + 2> levels {}; // by speed

    float lastingCross = 0, lastingSquare = 0; // over 50 ms: rumble turns to and fro
    float meanSquare = 0, scatter = 0, cross = 0, lineX = 0, lineY = 0, lineSquare = 0, nominal = 0;
    float noise = 0.1f; // level against the carrier's
    float lastX = 0, lastY = 0;
    bool present = false, atRest = false;
    float restSeconds = 0;
    int heardTicks = 0, absentTicks = 0;
};
