#pragma once

#include "analysis/loudness/LoudnessMeter.h"
#include "analysis/track/TrackAnalyser.h"
#include "tracks/similar/SoundListener.h"

#include <functional>
#include <optional>
#include <vector>

/** Finds all that is measured of one track, tempo, grid, downbeat and gain, in one pass over its audio. One thread,
    never the audio thread.

    Clips shorter than 30 seconds have a beat tracker of their own. Where the length is known only at the end, the first
    30 seconds are held. */
class TrackMeasure
{
public:
    /** @param rate     of the track in Hz
        @param isClip   TrackAnalyser::isClip(), if the length is known already */
    explicit TrackMeasure (double rate, std::optional<bool> isClip = std::nullopt);

    /** Lets another one hear all that comes from now on; null is nobody. It has to live as long as this. */
    void setListener (SoundListener* l) noexcept { listener = l; }

    /** The next frames, as many as there are; full scale is 1. A mono track goes to both sides. */
    void add (const float* left, const float* right, int frames);

    /** The same from 16 bits, of a track whose length is known. */
    void add (const int16_t* left, const int16_t* right, int frames);

    /** Ends the audio.
        @param tempoRangeIndex   a tempo below 60 + 20 * index BPM is doubled
        @param found             keeps its tempo if there are no beats, and its gain if there is no loudness
        @returns all that was measured */
    TrackAnalysis finish (int tempoRangeIndex, TrackAnalysis found = {});

private:
    void decide (bool isClip);

    const double rate;
    const size_t clipFrames;
    LoudnessMeter loudness;
    std::optional<TrackAnalyser> analyser;
    std::vector<float> heldLeft, heldRight;
    SoundListener* listener = nullptr;
};

/** Feeds a track in memory to TrackMeasure or TrackAnalyser, in pieces of 16384 frames.
    @param mayGoOn   asked before each piece with the frames that are done
    @returns false if it may not go on */
template <typename Sink>
bool feedTrack (Sink& sink, const int16_t* left, const int16_t* right, int frames,
                const std::function<bool (int done)>& mayGoOn)
{
    for (int done = 0; done < frames; done += TrackAnalyser::blockFrames)
    {
        if (!mayGoOn (done))
            return false;
        sink.add (left + done, right + done, std::min (TrackAnalyser::blockFrames, frames - done));
    }
    return mayGoOn (frames);
}
