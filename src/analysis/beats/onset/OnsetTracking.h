#pragma once

#include "analysis/beats/onset/AttackCurve.h"
#include "analysis/beats/onset/BeatMarks.h"
#include "analysis/beats/onset/Onset.h"
#include "analysis/signal/Fft.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <span>
#include <vector>

/** Turns a signal into onset functions, one per band, and at the end into onset marks.

    One thread. Frame i of a function stands for the sound around the signal's frame i * hop + frameLength / 2. */
class COnsetTrackingIntern
{
public:
    static constexpr int hop = 256;
    static constexpr int numBands = 5;
    static constexpr int lowestRate = 11025;

    /** @returns AnalysisError::none, badSampleRate below 11025 Hz, badChannelCount below 1, or noMemory */
    int init (int sampleRate, int channels);

    /** Takes the next frames, all channels in one. */
    void process (std::span<const float> mono);

    /** Appends silence until all input is out, and finds the onsets. Once. */
    void flush();

    int frameLength() const { return length; }
    double frameRate() const { return static_cast<double> (rate) / hop; }

    /** A span of time in frames of any onset function, at least one, so that all rates hear alike. */
    static int framesIn (double seconds, double frameRate)
    {
        return std::max (1, static_cast<int> (std::lround (seconds * frameRate)));
    }

    /** The onset function of a band: flux in decibels, one value per hop. */
    std::span<const float> flux (int band) const { return bandFlux[static_cast<size_t> (band)]; }
    int numFrames() const { return static_cast<int> (bandFlux[0].size()); }

    const COnsetMarks& marks() const { return onsets; }

private:
    void takeFrame (const float* frame);
    void findOnsets();

    /** Two onsets stand at least this far apart. */
    static constexpr int spanMs = 11;

    int rate = 0, length = 0, spanFrames = 0;
    int ringFilled = 0;
    std::vector<float> ring, spectrum, levels, levelsBefore;
    std::unique_ptr<CFFT> transform;
    std::vector<COnset> bands;
    std::array<std::vector<float>, numBands> bandFlux;
    COnsetMarks onsets;
};

/** The onset stage of a tracker: onset functions and, beside them, the fine curve of attacks. */
class COnsetTracking
{
public:
    /** As COnsetTrackingIntern::init. */
    int init (int sampleRate, int channels);

    void process (std::span<const float> mono);
    void flush() { stage.flush(); }

    const COnsetTrackingIntern& intern() const { return stage; }
    const AttackCurve& attacks() const { return curve; }

private:
    COnsetTrackingIntern stage;
    AttackCurve curve;
};
