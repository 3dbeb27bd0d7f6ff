#pragma once

#include "analysis/beats/bar/BarPhase.h"
#include "analysis/beats/bar/BassIntensity.h"
#include "analysis/beats/bar/Chroma.h"
#include "analysis/beats/bar/Decimator.h"
#include "analysis/beats/bar/HarmonicChange.h"
#include "analysis/beats/onset/OnsetTracking.h"

#include <span>

/** Finds the tempo of stretches of signal from their onsets, and phase and meter of all of it from its bass and its harmony.
    One thread. */
class CDownbeat
{
public:
    struct Result
    {
        double beatPeriod = 0.0;    ///< length of a bar in frames; 0 when nothing was found
        double confidence = 0.0;    ///< 0 to 1
        double margin = 0.0;        ///< Periodicity::Tempo's
        double startPosition = 0.0; ///< of the first downbeat, in frames of the signal
        double weight = 1.0;        ///< what its confidence counts beside another result's
        int beatsPerPeriod = 4;

        bool isKnown() const { return beatPeriod > 0.0; }
        double bpm (int sampleRate) const
        {
            return isKnown() ? 60.0 * sampleRate * beatsPerPeriod / beatPeriod : 0.0;
        }
    };

    /** @returns AnalysisError::none, badSampleRate below 11025 Hz, badChannelCount below 1, or noMemory */
    int init (int sampleRate, int channels);

    /** Takes the next frames, in slices of 1024 or less. */
    void process (std::span<const float> mono);

    /** Lets out what the filters still hold. */
    void flush();

    /** Finds the tempo of a stretch of the signal. Its bar is one of four that begins with the stretch: where bars begin is told
        by barPhase(), once for the whole.
        @param firstFrame, endFrame   frames of the signal; what the onset stage has not reached yet is left out */
    Result evaluate (const COnsetTrackingIntern&, double firstFrame, double endFrame) const;

    /** Period, phase and meter of all that came in so far, at a pulse that is known. */
    BarPhase barPhase (const OnsetFunction&, const Pulse&) const;

private:
    HarmonicChange harmony() const;

    int rate = 0;
    Decimator decimator;
    CChroma chroma;
    CBassIntensity bass;
};
