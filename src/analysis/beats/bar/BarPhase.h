#pragma once

#include "analysis/beats/bar/BassIntensity.h"
#include "analysis/beats/bar/HarmonicChange.h"
#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/Pulse.h"

/** Finds the place within a pulse that is the beat, and the beat that is the first of a bar. */
struct BarPhase
{
    double beatOffset = 0.0; ///< in beats of the pulse, 0 to 1
    int beatsPerBar = 4;     ///< 4 or 3
    int downbeat =
        0; ///< the first beat of a bar has this number, counted from the offset, modulo beatsPerBar

    struct Bass
    {
        const CBassIntensity& intensity;
        int factor; ///< frames of the signal per frame of the bass's rate
    };

    /** Weighs for each candidate: how strong its onsets are, how much the notes change at its downbeats, and how drums
        alternate within its bars.
        @param pulse   a pulse of the right tempo and any phase */
    static BarPhase find (const OnsetFunction&, const HarmonicChange&, const Bass&, const Pulse&);
};
