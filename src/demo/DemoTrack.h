#pragma once

#include <cstdint>

/** A track that the system synthesises itself, so that there is something to mix on the first start.
    Tempo and first beat are exact: a grid laid from them fits every beat of the track to half a sample. */
struct DemoTrack
{
    const char* title;
    const char* artist;
    const char* fileName;    ///< "Artist - Title.flac"
    double bpm;              ///< constant over the whole track
    int64_t firstBeatFrames; ///< frames before the first downbeat, which are silent
    const char* key;         ///< "Am", "C": the name that musicians use
    int bars;                ///< of four beats, from the first downbeat to the end

    static constexpr double sampleRate = 44100.0;

    /** The length of a beat in frames, exact. */
    constexpr double beatFrames() const noexcept { return sampleRate * 60.0 / bpm; }

    /** Beginning of a bar in frames of the file; `bars` gives the end of the track. */
    constexpr int64_t barFrames (int bar) const noexcept
    {
        return firstBeatFrames + static_cast<int64_t> (4.0 * bar * beatFrames() + 0.5);
    }
};

/** One section of a track's form. They follow each other without gaps from the first downbeat. */
struct DemoSection
{
    enum class Kind
    {
        intro,     ///< drums only
        build,     ///< drums and a riser; in the longer forms with some of what is about to come
        mainPart,  ///< everything
        breakdown, ///< no drums
        outro      ///< drums only
    };

    Kind kind;
    int bars;
};
