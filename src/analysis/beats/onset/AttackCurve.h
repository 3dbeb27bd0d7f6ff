#pragma once

#include <span>
#include <vector>

/** The level of a signal's edges at a fine step: tells to a millisecond where an attack begins, which a spectrum's
    frame cannot. */
class AttackCurve
{
public:
    /** @param step   frames of the signal per value */
    void prepare (int step);

    void process (std::span<const float> mono);

    int step() const { return stepFrames; }

    /** Level in decibels of each step of the signal, of its first difference. */
    std::span<const float> levels() const { return curve; }

private:
    int stepFrames = 64, filled = 0;
    float last = 0.0f, sum = 0.0f;
    std::vector<float> curve;
};

class Pulse;

/** The distance of attacks behind the beats of a pulse, in frames of the signal; negative when they come before.
    @param reach   the largest distance that is looked at, in frames
    @returns 0 when there are no attacks there */
double attackDelay (const AttackCurve&, const Pulse&, double reach);
