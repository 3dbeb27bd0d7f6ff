#pragma once

#include "analysis/files/TrackAnalysis.h"

#include <juce_core/juce_core.h>

struct DeckPlayer;
struct DeckWorld;

/** Lays the stored analysis of the deck's track, if there is one, over the deck's fields. On the deck's loader thread.
    @returns true if the deck has an analysis now. False also where cues were found without a grid: the track is still to
             be analysed, and the cues are in the deck. */
bool loadAnalysis (DeckWorld&, DeckPlayer&);

/** Writes the deck's tempo, grid, cues and gain beside the library, those fields that have changed since the file was
    last read or written: another deck may have the same track. Before its track is replaced, at the end of the engine,
    and whenever a hand has changed them. Writes nothing without samples, without a path, or where neither an analysis
    nor a hand has made anything worth keeping. Any thread that may block, without the callback lock.
    @returns false if the file could not be written */
bool saveAnalysis (DeckWorld&, DeckPlayer&);

/** Tells the listeners of the engine the grid of the deck's track, if it has beats. Any thread that may block, without the
    callback lock. */
void tellGrid (DeckWorld&, DeckPlayer&);

/** The values of an analysis that are a deck's; its marks replace the deck's table as a whole. Any thread that may block,
    without the callback lock: the audio thread sees the old grid or the new one. */
void applyAnalysis (DeckWorld&, DeckPlayer&, TrackAnalysis);

/** The same with what was found of a track, but for what has changed in the deck since `before`: that was a hand, and
    stays. */
void applyWhereUntouched (DeckWorld&, DeckPlayer&, const TrackAnalysis& before, TrackAnalysis found);

/** The values that applyAnalysis() takes, as they stand in the deck. */
TrackAnalysis analysisOf (DeckWorld&, DeckPlayer&);

/** The same with tempo and downbeat as they were before any hand: what a first analysis may replace. */
TrackAnalysis untouchedAnalysisOf (DeckWorld&, DeckPlayer&);
