#pragma once

#include "analysis/beats/Confidence.h"
#include "analysis/beats/bar/Downbeat.h"
#include "analysis/beats/onset/BeatMarks.h"
#include "analysis/beats/onset/OnsetTracking.h"

/** Lays beats over a whole signal. Made when all of it has gone through the stages, which have to outlive it. */
class CBeatTrack
{
public:
    /** The number of hypotheses that a result names: fixed, however the search goes. */
    static constexpr int numHypotheses = 7;

    CBeatTrack (const COnsetTracking&, const CDownbeat&, int sampleRate, double lengthFrames);

    /** Finds the exact tempo near a given one and the phase of beat and bar, and lays the marks.

        Marks stand half a beat apart, as a deck's beat table wants them; their kind is 0 on the beat. A tempo that
        keeps still gets an even grid; one that moves, and is plain enough to tell, gets marks that follow it.
        @param bpm            the tempo to follow, within TempoComb::reach (1.6 percent)
        @param startSeconds   no mark stands before it */
    void track (double bpm, double startSeconds);

    const CBeatMarks& marks() const { return beats; }

    /** The first beats of all bars, in order; bars differ in length where the music's do. */
    const CBeatMarks& bars() const { return barMarks; }

    /** The signs of trust that the marks show; those of the tempo are left to who found it. */
    const GridSigns& signs() const { return gridSigns; }

    /** The bar of most of the song, and the first downbeat that it counts from. */
    const CDownbeat::Result& bar() const { return result; }

private:
    const COnsetTracking& stage;
    const CDownbeat& downbeat;
    const int rate;
    const double length;
    CBeatMarks beats, barMarks;
    CDownbeat::Result result;
    GridSigns gridSigns;
};
