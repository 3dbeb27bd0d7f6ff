#pragma once

#include "deck/DeckWorld.h"

/** The commands of loops, beat jumps and the start point. Each acts on what is heard: a loop that is switched on, off,
    resized or moved changes the sound from the moment of the command on, whatever the deck has read ahead.

    Each takes the callback lock for a handful of field writes and does nothing for an index that is no deck. Any thread,
    the audio thread included. */
class LoopCommands
{
public:
    explicit LoopCommands (DeckWorld& w) noexcept : world (w) {}

    /** A beat loop from here, or out of it. Nothing happens in a manual loop. */
    void toggleLoop (int deck);

    /** The same with a loop that rolls: leaving it, the deck goes on where the track would have been. */
    void toggleLeap (int deck);

    /** Halves (-1) or doubles (+1) the beat loop, within 1/32 to 32 beats. */
    void changeSize (int deck, int step);

    /** The same for the size by which moveLoop() moves. */
    void changeMoveSize (int deck, int step);

    /** Either size at once. @param size   index, limited to 0 to 10 */
    void setSize (int deck, int size);
    void setMoveSize (int deck, int size);

    /** Moves the loop that runs, and the position, by the move size: back (-1) or on (+1). Without a loop, a beat jump. */
    void moveLoop (int deck, int direction);

    /** The start of the manual loop. An end at or before it is forgotten. */
    void loopIn (int deck);

    /** The end of the manual loop, which begins to run; or the end of any loop that runs. */
    void loopOut (int deck);

    /** Takes the manual loop up again, or begins it anew. */
    void reloop (int deck);

    /** Sets the start point here and on, or off. */
    void toggleStartPoint (int deck);

private:
    void toggleBeatLoop (int deck, bool rolling, const char* reason);
    static void leaveLoop (DeckPlayer&) noexcept;

    DeckWorld& world;
};
