#pragma once

#include "analysis/beats/onset/Periodicity.h"

class COnsetTrackingIntern;

/** The tempo of a short clip, by correlation of its onset functions in three bands: below 200 Hz, to 4 kHz, and above. The
    five of the onset stage hold too few onsets each in a clip, and three of them would speak for the middle. */
class CDaLoopa
{
public:
    /** Clips shorter than this have no tempo. */
    static constexpr int leastFrames = 4096;

    /** @param firstFrame, endFrame   frames of the signal; of the clip's end, as much as counts
        @returns BPM of 55 to 180; 0 for a clip without rhythm */
    static Periodicity::Tempo tempoOf (const COnsetTrackingIntern&, double firstFrame, double endFrame);
};
