#pragma once

#include "analysis/beats/bar/BarTrack.h"
#include "analysis/beats/bar/BassIntensity.h"
#include "analysis/beats/bar/HarmonicChange.h"
#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/Pulse.h"

/** Finds the place within a pulse that is the beat, and the beat that is the first of a bar. */
struct BarPhase
{
    double beatOffset = 0.0; ///< in beats of the pulse, 0 to 1
    int firstBeat = 0;       ///< the number of the first beat that `bars` tells of, counted from the offset
    BarTrack::Bars bars;
    double margin = 0.0; ///< how far the next best offset lies behind: 0 is a tie; natural logarithm

    struct Bass
    {
        const CBassIntensity& intensity;
        int factor; ///< frames of the signal per frame of the bass's rate
    };

    /** The number of the first downbeat, counted from the offset, below beatsPerBar. */
    int downbeat() const;

    /** Weighs for each offset: how strong its onsets are, how much the notes change at its downbeats, and how drums alternate
        within its bars. Bars are then followed over the beats of the best one.
        @param pulse   a pulse of the right tempo and any phase */
    static BarPhase find (const OnsetFunction&, const HarmonicChange&, const Bass&, const Pulse&);
};
