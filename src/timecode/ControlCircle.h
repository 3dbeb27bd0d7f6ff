#pragma once

#include "timecode/ControlMedium.h"
#include "timecode/filter/HumFilter.h"

/** Makes the two channels of a control signal a circle around zero.

    Takes out what moves slowly against the carrier (DC, rumble), the share of one channel in the other, the
    difference of their levels, and the bursts of the system's own disc. Audio thread; allocates nothing. */
class ControlCircle
{
public:
    /** The points of a tick's frames; 0 behind its last. */
    struct Points
    {
        TickLanes x; ///< primary channel without bursts: the sine of the carrier's angle
        TickLanes y; ///< the other channel, turned so that a forward carrier leads from y to x: its cosine
        TickLanes
            primary; ///< primary channel with its bursts, 1 at the carrier's peak; 0 before the level is known
        TickLanes squared; ///< of the radius
    };

    /** @param framesInTick  frames of each tick, at most TickLanes::size */
    void prepare (const ControlMedium&, double sampleRate, int framesInTick) noexcept;
    PX_AUDIO_THREAD void reset() noexcept;

    /** Corrects the frames of a tick and takes into use what was learnt of their shape.
        @param hz          frequency of the carrier now
        @param energy      mean of the point's square over some milliseconds
        @param canLearn    the carrier is there: its shape may be learnt from these frames
        @param isEven      it turns evenly: what turns otherwise is hum */
    PX_AUDIO_THREAD void process (const TickLanes& left, const TickLanes& right, float hz, float energy,
                                  bool canLearn, bool isEven, Points&) noexcept;

    /** Level of what lies below the carrier, rumble above all, root mean square in units of the points; learnt while
        the carrier is well above it, below 0 before. */
    PX_AUDIO_THREAD float rumble() const noexcept;

    /** The disc's primary channel is cut off: its code can't be read. */
    PX_AUDIO_THREAD bool isClipped() const noexcept;

    /** Turns by which the high pass puts the carrier ahead. */
    PX_AUDIO_THREAD float leadTurns() const noexcept { return lead; }

private:
    /** Two poles, each a running mean that moves once a tick and is taken off on a line. */
    struct HighPass
    {
        float slow = 0, slower = 0;

        PX_AUDIO_THREAD void process (TickLanes&, float mean, float share, float perFrame) noexcept;
    };

    PX_AUDIO_THREAD float cornerHz (float meanX, float meanY, float hz, float energy) noexcept;
    PX_AUDIO_THREAD void learnRumble() noexcept;
    PX_AUDIO_THREAD void removeBursts (Points&) const noexcept;
    PX_AUDIO_THREAD void restoreClipped (const TickLanes& clipped, Points&) const noexcept;
    PX_AUDIO_THREAD void learn (const TickLanes& x, const TickLanes& rawY, const Points&) noexcept;
    PX_AUDIO_THREAD void adapt (float energy) noexcept;

    float rate = 44100;
    int frames = 6;
    float perFrame = 1.0f / 6;
    bool disc = false, primaryIsLeft = true;
    float secondarySign = 1;
    TickLanes inTick; // 1 in the tick's frames, 0 behind

    HumFilter hum;
    HighPass highPassX, highPassY;
    float slowX = 0, slowY = 0, slowEnergy = 0;
    float rumbleX = 0, rumbleY = 0, rumbleXSquare = 0, rumbleYSquare = 0;
    int rumbleTicks = 0;

    float squares = 0, otherSquares = 0, products = 0; // running moments of the ellipse
    int framesLearnt = 0;
    float clippedShare = 0; ///< of the primary channel's samples
    float shear = 0, stretch = 1, amplitude = 0;
    float lead = 0;
};
