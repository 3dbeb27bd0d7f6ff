#pragma once

#include "analysis/beats/Takt.h"
#include "analysis/files/TrackAnalysis.h"

#include <memory>
#include <vector>

/** Finds tempo, grid and downbeat of one track: the beat tracker as this system uses it. One object a track, on one
    thread, never the audio thread. */
class TrackAnalyser
{
public:
    /** Frames in which 16-bit audio goes to the tracker. */
    static constexpr int blockFrames = 16384;

    /** Clips shorter than that have a tracker of their own. */
    static constexpr double clipSeconds = 30.0;

    static constexpr double lowestTempo = 30.0, highestTempo = 250.0;

    /** @param rate     of the track in Hz
        @param isClip   the track is known to be shorter than clipSeconds */
    TrackAnalyser (double rate, bool isClip);

    /** @param frames   of the whole track */
    static bool isClip (int64_t frames, double rate) noexcept
    {
        return rate > 0.0 && static_cast<double> (frames) / rate < clipSeconds;
    }

    /** False at a rate that no tracker works at: nothing is found then. */
    bool canAnalyse() const noexcept { return tracker != nullptr; }

    /** The next frames, as many as there are; full scale is 1. */
    void add (const float* left, const float* right, int frames);

    /** The same from 16 bits. */
    void add (const int16_t* left, const int16_t* right, int frames);

    /** Ends the audio and looks for the beats. Without any the tempo stays what it is in `target`, and the grid is empty.
        @param tempoRangeIndex   a tempo below 60 + 20 * index BPM is doubled */
    void finish (int tempoRangeIndex, TrackAnalysis& target);

    /** The confidence of finish() in its grid, 0 to 100; -1 without beats. */
    int confidence() const { return canAnalyse() ? tracker->getConfidence() : -1; }

    /** Ends the audio and gives the exact tempo near a known one, in BPM; 0 if there is none. */
    double finishNear (double seedBpm);

    /** True if a tempo above 0 is doubled: it is below 60 + 20 * index BPM. */
    static constexpr bool isTooSlow (double bpm, int tempoRangeIndex) noexcept
    {
        return bpm > 0.0 && bpm < 60.0 + 20.0 * tempoRangeIndex;
    }

    /** A measured tempo as it is kept: to hundredths, of which 0.49 are cut and more go up, from 30 to 250 BPM. */
    static double storedTempo (double bpm) noexcept;

private:
    struct Release
    {
        void operator() (CaufTAKT_If* instance) const { CaufTAKT_If::DestroyInstance (&instance); }
    };

    std::unique_ptr<CaufTAKT_If, Release> tracker;
    std::vector<float> leftBlock, rightBlock;
};
