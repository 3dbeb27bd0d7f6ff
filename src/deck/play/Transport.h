#pragma once

#include "deck/DeckWorld.h"

/** The transport commands of the decks. Each takes the callback lock for the duration of its field writes, so it falls
    between two audio blocks; each does nothing for an index that is no deck. Any thread, the audio thread included. */
class Transport
{
public:
    explicit Transport (DeckWorld& w) noexcept : world (w) {}

    void playPause (int deck);

    /** Starts a stopped deck in tempo and phase with its reference. */
    void playSynchronized (int deck);

    /** Press and release of Cue: stopped away from a cue it stores the current slot, stopped at one it plays while held;
        playing it returns to the current slot and stops. */
    void cue (int deck, bool pressed);

    /** Sets an empty slot at the position, or jumps to a full one. A playing deck with Sync on keeps its phase.
        @param slot   0 to 15; others do nothing */
    void jumpToCue (int deck, int slot);

    /** Stores the place that is heard in a slot, snapped as Snap says; the slot stays as it is where that fails. @param slot   0 to 15; others do nothing */
    void setCue (int deck, int slot);
    void deleteCue (int deck, int slot);

    /** The single-pad cue: on a playing deck a press returns to the current cue and stops, as Cue does; on a deck that is
        stopped away from its cues a press stores the current slot, and the release starts the deck. */
    void cuePlay (int deck, bool pressed);

    /** @param frames   of the file; limited to the track. Keeps the phase of a playing deck with Sync on. */
    void seekFrames (int deck, double frames);

    /** @param value   0 to 1 of what is loaded */
    void seekNormalised (int deck, double value);

    /** To the start of a loaded track. */
    void rewind (int deck);

    /** A step of the jog wheel: bends a playing deck, else moves it.
        @param bendScale      ratio per step, taken off the tempo
        @param scratchScale   speed per step */
    void bendJog (int deck, double value, double bendScale, double scratchScale);

    /** @param touched   the hand is on the wheel: the mark ages and clears by itself after 2 s */
    void setScratch (int deck, bool on, bool touched);

    /** A step of a wheel that does not feel the hand: the first one puts the deck into scratch, which ends by itself 26 ms
        after the last one, unless setScratch() has said meanwhile that a hand is there.
        @param speed   that the step adds */
    void spinJog (int deck, double speed);

    /** A step of a hand that drags the picture of the sound: the speed leans against the move, so that a hand that goes
        right, and the picture with it, goes back in the track.
        @param move   of the hand since the last step, in pixels, positive to the right
        @param gain   speed per pixel, 0 to 1 */
    void dragJog (int deck, double move, double gain);

    /** Plays the deck backwards, or forwards again; the rate turns round within its 5 ms. */
    void setReverse (int deck, bool on);

    /** @param direction   -1, 0 or 1 */
    void setNudge (int deck, int direction);

    /** @param value   0 to 1 */
    void setPitch (int deck, double value);

    /** @param semitones   limited to -12 to 12 */
    void setKeyTuning (int deck, double semitones);
    void setKeyLock (int deck, bool on);

    /** Toggles Sync; turning it on asks for phase. A deck that leads can only turn it off.
        @param oneShot   Sync clears itself after its first match */
    void toggleSync (int deck, bool oneShot);

    void setMaster (int deck);

    /** True if the deck is stopped within 588 frames of any of its cues. Any thread, no lock. */
    static bool isStoppedAtCue (const DeckPlayer&) noexcept;

private:
    /** A seek or cue jump of the position to a target; `false` if phase must be kept and can't be. */
    static bool keepPhase (DeckWorld&, DeckPlayer&, double& target) noexcept;
    static void returnToCue (DeckPlayer&) noexcept;
    static void storeCue (DeckWorld&, DeckPlayer&, int slot) noexcept;
    static void playOrStop (DeckWorld&, DeckPlayer&) noexcept;
    void seekLocked (DeckPlayer&, double frames) noexcept;

    DeckWorld& world;
};
