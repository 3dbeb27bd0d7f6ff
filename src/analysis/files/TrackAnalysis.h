#pragma once

#include "analysis/files/BeatMark.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

/** The facts about a track that are kept beside the library: its tempo, grid, cue points and gain. A value.

    What is empty stands in no file, and a deck leaves its own field as it is. */
struct TrackAnalysis
{
    static constexpr size_t cueCount = 16;
    static constexpr double unsetCue = -1.0, defaultTempo = 120.0;

    /** Marks and switches set by hand. A file that no deck has written yet has none. */
    struct Cues
    {
        Cues() { cuePos.fill (unsetCue); }
        bool operator== (const Cues&) const = default;

        std::array<double, cueCount> cuePos;   ///< frames of the file
        double phaseStart = 0.0;               ///< start point in frames of the file
        std::optional<int8_t> transportCueSel; ///< the selected slot, 0 to 15
        std::optional<int8_t> transportStart;  ///< 1 while the start point is on
    };

    /** The values before any hand changed them: those of the analysis or, of a track that is still to be analysed, those
        that its deck began with. */
    struct Untouched
    {
        bool operator== (const Untouched&) const = default;

        double tempo = defaultTempo; ///< BPM
        int32_t downbeatPos = 0;     ///< frames of the file
    };

    bool operator== (const TrackAnalysis&) const = default;

    double tempoTracker = defaultTempo; ///< BPM that the deck works with
    double tempoAverage = defaultTempo; ///< BPM of the analysis

    /** The grid, in ascending order; empty for a track without beats. Nothing if the beats have not been looked for:
        the track is then still to be analysed. */
    std::optional<std::vector<BeatMark>> beatMarks;

    /** In the grid: 0 to 99 by the analysis, sureByHand once a hand has chosen how it is to be read; -1 if nobody noted it. */
    int32_t confidence = -1;

    static constexpr int32_t sureByHand = 100;

    int32_t downbeatId = 0;          ///< index of the mark that is the downbeat
    int32_t downbeatPos = 0;         ///< its position, or where a hand has moved it to, in frames of the file
    std::optional<int32_t> gridMode; ///< other than 0: tempo and downbeat tell the grid, not the marks
    std::optional<Cues> cues;
    std::optional<double> autogain; ///< linear factor

    std::optional<Untouched> untouched; ///< nothing in files of older versions
};

/** Makes a value usable that was read from bytes: numbers that are none or far beyond any track take their defaults; of
    the marks those stay that begin a table in ascending order. A table that begins with no usable mark counts as none. */
void repair (TrackAnalysis&);

/** True if a hand has set the tempo, by however little. Where nobody noted the untouched one: if the tempo is not that of
    the analysis, or far from that of the marks. */
bool isTempoByHand (const TrackAnalysis&);

/** True if a hand has moved the grid of a file that a deck has written: it follows tempo and downbeat only, its downbeat
    stands off its mark, its tempo is by hand, or a hand has chosen how it is read. */
bool isHandMoved (const TrackAnalysis&);

/** The confidence that the grid stands on the beats, 0 to 100: what the analysis said, and 100 for a grid that a hand has
    moved. Nothing for a track without beats, and where nobody noted it. */
std::optional<int> confidenceOf (const TrackAnalysis&);

/** A grid of less confidence should be listened to before it is trusted. */
constexpr int doubtfulBelow = 50;

/** Joins two later states of one track by field: a field in which `mine` differs from `base`, their last common state, is
    mine, and all others are theirs. Each cue slot is a field; so is the downbeat, which comes to the nearest mark where
    the other side has a new grid. */
TrackAnalysis mergeFields (const TrackAnalysis& base, const TrackAnalysis& mine, const TrackAnalysis& theirs);

/** Merges a new analysis of a track into the old one. Cues stay, and a grid that a hand has moved stays with its
    tempo; under a new grid a downbeat that a hand has chosen, or may have chosen, stays at the mark that is nearest to
    where it was. All else is the new analysis'. */
TrackAnalysis mergeFresh (const TrackAnalysis& old, TrackAnalysis fresh);
