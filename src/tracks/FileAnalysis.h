#pragma once

#include "analysis/files/TrackAnalysis.h"
#include "support/Pacing.h"
#include "tracks/AdecSharedLibrary.h"
#include "tracks/similar/SoundSession.h"

#include <functional>

/** Analyses files without any deck. Any thread that may block, several files at once. */
namespace FileAnalysis
{
struct Request
{
    juce::File track;
    juce::File folder;                        ///< of the analysis files
    int tempoRangeIndex = 0;                  ///< a tempo below 60 + 20 * index BPM is doubled
    bool isAgain = false;                     ///< also where an analysis is stored; hand-made work stays
    SoundSession* sounds = nullptr;           ///< learns how the track sounds, if it doesn't know
    std::function<bool()> mayGoOn;            ///< asked at each block
    std::function<void (double)> progress {}; ///< seconds of the track that are done
};

struct Result
{
    juce::String fault;       ///< one sentence if there is no analysis, and all else is void
    bool isCancelled = false; ///< the same, with nobody to blame
    bool wasStored = false;   ///< it was read and not made
    bool isWritten = false;   ///< it stands in its file
    double sampleRate = 0.0;  ///< of the track, in Hz; 0 if it was read
    double seconds = 0.0;     ///< analysed; 0 if it was read
    TrackAnalysis analysis;
};

/** Reads the analysis of a track, or decodes the track, makes it and writes it. The same pass describes how the track sounds;
    where only that is missing, it is a pass for the description alone. Of a track that is longer than a deck's
    memory that part is analysed, so that memory does not grow with the track. */
Result run (const Request&, const AdecSharedLibrary&, Pacing&);
}
