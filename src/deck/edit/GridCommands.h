#pragma once

#include "deck/DeckWorld.h"
#include "deck/edit/GridReading.h"

/** The commands of a track's tempo and beat grid, and the way back: the last 32 edits of cues, start point, tempo and
    grid can be taken back and done again.

    Each takes the callback lock for a handful of field writes and does nothing for an index that is no deck. Any thread,
    the audio thread included. */
class GridCommands
{
public:
    explicit GridCommands (DeckWorld& w) noexcept : world (w) {}

    /** Makes the entry nearest to the place that is heard the downbeat of the grid in force, unless none lies within 100,000
        frames, and has the track's analysis saved soon. */
    void setDownbeat (int deck);

    /** A tempo moves within 30 to 250 BPM and no further than an octave from that of the analysis, or not at all. */
    void halveTempo (int deck) { scaleTempo (deck, 0.5); }
    void doubleTempo (int deck) { scaleTempo (deck, 2.0); }

    /** @param bpm   limited to 32 to 256 */
    void setTempo (int deck, double bpm);

    /** Moves a fixed grid by 512 frames of the file: back (-1) or on (+1). The beats of a table stay. */
    void moveGrid (int deck, int direction);

    /** Has the grid read in another way, or as it stands, and trusts it from then on. The table itself stays until the
        track's analysis is saved, so that the way back is exact.
        @returns false without a beat, and where tempo or downbeat would leave their range; nothing changes then */
    bool read (int deck, const GridReading&);

    /** Between the table of a tracked grid and a grid of tempo and downbeat alone. */
    void toggleGridMode (int deck);

    /** Counts taps; from the second on they set the tempo, 30 to 250 BPM. A pause of 3 s begins anew. */
    void tapTempo (int deck);

    /** Measures the track's tempo again, near the one it has; the grid stays. Any thread that may block. */
    void analyseAgain (int deck);

    /** @returns false if there is no edit to take back, or to do again */
    bool undo (int deck);
    bool redo (int deck);

private:
    void scaleTempo (int deck, double factor);

    DeckWorld& world;
};
