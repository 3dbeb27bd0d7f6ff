#pragma once

#include "timecode/ControlMedium.h"

/** Makes the two channels of a control signal a circle around zero.

    Takes out what moves slowly against the carrier (DC, rumble), the share of one channel in the other, the
    difference of their levels, and the bursts of the system's own disc. Audio thread; allocates nothing. */
class ControlCircle
{
public:
    struct Point
    {
        float x = 0; ///< primary channel without bursts: the sine of the carrier's angle
        float y = 0; ///< the other channel, turned so that a forward carrier leads from y to x: its cosine
        float primary =
            0; ///< primary channel with its bursts, 1 at the carrier's peak; 0 before the level is known
        float squared() const noexcept { return x * x + y * y; }
    };

    void prepare (const ControlMedium&, double sampleRate) noexcept;
    void reset() noexcept;

    /** Corrects one frame.
        @param hz          frequency of the carrier now
        @param energy      mean of the point's square over some milliseconds
        @param canLearn    the carrier is there: its shape may be learnt from this frame */
    Point process (float left, float right, float hz, float energy, bool canLearn) noexcept;

    /** Takes what was learnt into use; once in some samples is enough. */
    void adapt (float energy) noexcept;

private:
    /** Two poles, each a running mean that is taken off. */
    struct HighPass
    {
        float slow = 0, slower = 0;

        float process (float input, float share) noexcept
        {
            slow += share * (input - slow);
            const auto once = input - slow;
            slower += share * (once - slower);
            return once - slower;
        }
    };

    float cornerHz (float x, float y, float hz, float energy) noexcept;

    float rate = 44100;
    bool disc = false, primaryIsLeft = true;
    float secondarySign = 1;

    HighPass highPassX, highPassY;
    float slowX = 0, slowY = 0, slowEnergy = 0;

    float squares = 0, cleanSquares = 0, otherSquares = 0, products = 0; // running moments of the ellipse
    int framesLearnt = 0;
    float shear = 0, stretch = 1, amplitude = 0;
};
