#pragma once

#include <span>
#include <vector>

/** Follows the bars over the beats of a song, with a Viterbi search over the places in a bar (the bar pointer of Whiteley,
    Cemgil and Godsill, Bayesian modelling of temporal structure in musical audio, 2006, with beats for its clock). Bars of 3
    to 7 beats, changes between them, and bars that lose beats. */
namespace BarTrack
{
/** The signs of a bar's first beat, in units that only compare within a song. */
struct Beat
{
    double change = 0.0;   ///< of the notes, HarmonicChange::at
    double bassRise = 0.0; ///< CBassIntensity::riseAt, in decibels
    double snare = 0.0;    ///< rise of the bands of a snare drum
};

struct Bars
{
    std::vector<int> firsts; ///< numbers of the beats that begin bars, rising
    int beatsPerBar = 4;     ///< of most of the song
    int downbeat = 0; ///< counted from it, most bars of that length begin where they do; below beatsPerBar
    double certainty = 0.0; ///< the share of beats that stand in such bars, 0 to 1
};

/** @param beats   all of a song, in order; without any the bar is one of four that begins at once */
Bars follow (std::span<const Beat>);
}
