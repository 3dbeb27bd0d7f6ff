#pragma once

#include "analysis/beats/BeatTrack.h"
#include "analysis/beats/Takt.h"
#include "analysis/beats/bar/Downbeat.h"
#include "analysis/beats/onset/OnsetTracking.h"

#include <memory>
#include <span>
#include <vector>

/** The common part of both engines: the stages, and the marks with their queries. They differ in how they come to a
    tempo. */
class TaktEngine : public CaufTAKT_If
{
public:
    virtual int init (int sampleRate, int channels);

    int process (const float* const* channels, int frames) override;
    int flush (bool finished) override;
    bool hasResult() const override { return best.isKnown(); }
    float getNormalisedTempo() const override;
    int getResult (Result*) const override;
    int setResult (const Result&, const Beat* marks) override;
    float getTempoEstimate() const override { return estimate; }
    int setTempo (float bpm) override;
    int trackBeats (float startSeconds, int, int, int) override;
    int getNumberOfBeats (int list) const override;
    double getAverageTempo (int list) const override;
    int getBeatsPerBar (int list) const override;
    int getDownbeatIndex (int list, int beatsPerBar) const override;
    int getBeat (Beat* out, int index, int list) const override;
    int getConfidence() const override;

protected:
    static constexpr int slice = 1024;

    /** The next frames of the signal, all channels in one, up to a slice; the stages have taken them already. */
    virtual void take (std::span<const float> mono) = 0;

    /** Finds `tempo` and `best` when all is in; leaves them when there is nothing to find. */
    virtual void concludeTempo() = 0;

    /** As many onsets as make a rhythm. */
    bool hasRhythm() const { return onsets.intern().marks().count() >= 4; }

    /** Lays the marks at the present tempo. */
    void layMarks (float startSeconds);

    int rate = 0, numChannels = 0;
    float tempo = 120.0f;  ///< what the beat stage follows
    float estimate = 1.0f; ///< what is told
    int64_t totalFrames = 0;
    int framesInSegment = 0;
    CDownbeat::Result best;
    COnsetTracking onsets;
    CDownbeat bars;
    CBeatMarks marks;

private:
    void passOn();
    const CBeatMarksIf* listOf (int list) const;

    bool flushed = false, resultValid = false;
    std::unique_ptr<CBeatTrack> beatTrack;
    std::vector<float> mono;
};
