#pragma once

#include "analysis/files/TrackAnalysis.h"
#include "deck/state/DeckNumbers.h"
#include "deck/state/EditHistory.h"
#include "deck/state/Loops.h"
#include "deck/state/PlayState.h"
#include "deck/state/ReadHead.h"
#include "deck/state/RecordMotion.h"
#include "deck/state/TempoState.h"
#include "deck/state/TrackFacts.h"
#include "deck/state/TrackMarks.h"
#include "deck/voice/DeckVoice.h"
#include "support/Relaxed.h"
#include "tracks/BeatGrid.h"
#include "tracks/TrackIngest.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class DeckPattern;
struct DeckWorld;

/** One deck: the values of its parts, each a plain struct that is assigned, copied and compared whole.

    The audio thread owns them during a block; commands write them under the callback lock, so between two blocks. What a
    view or a command's read looks at without the lock is Relaxed, or published once a block. Positions are frames of the
    file, fractional; faders and knobs 0 to 1 with 0.5 neutral; flags 0 or 1. A field's initial value is its default. */
struct DeckPlayer
{
    DeckPlayer (DeckWorld&, int deckIndex);
    ~DeckPlayer();

    /** Returns all that belongs to a track to its defaults; faders and knobs stay where the hand that holds them left them.
        The tempo becomes the host's. The caller holds the callback lock; the strings and the overview, which a lock must
        not wait for, are cleared apart by setTexts() and overview->clear(). */
    void resetTrack();

    /** Empties both rings and the stretcher, so that the next block renders from the position. The caller holds the
        callback lock or is the audio thread. */
    PX_AUDIO_THREAD void emptyRings() noexcept;

    /** The place in the track that is heard now, in frames of the file, exact to 1 ms: the position, less what a
        playing deck has read ahead for its stretcher. Any thread. */
    double heardPosition() const noexcept { return heard; }

    /** Frames of the file by which what is read leads what is heard, over all turns of a loop. Under the callback lock. */
    double readLead() const noexcept { return voice.readLead (head); }

    /** The place that would be heard now if the track had not gone round in a rolling loop. Under the callback lock. */
    double heardRollPosition() const noexcept { return head.roll - readLead(); }

    /** Audio thread, after each block, or under the callback lock after a move. */
    PX_AUDIO_THREAD void publishHeard() noexcept { heard = voice.heardPosition (head, track.loadedFrames); }

    /** Makes the stretcher for an engine that runs at a rate in Hz. Without memory, or at a rate that no stretcher works
        at, tempo and key move together. Any thread that may block, without the callback lock. */
    void makeStretcher (double engineRate = 44100.0);

    /** Moves to a position, limited to the track, which is heard from the next block on; the old sound fades out. */
    PX_AUDIO_THREAD void jumpTo (double frame) noexcept;

    /** Puts the read head down at a position, which need not be within the track, and leaves all else as it is. */
    PX_AUDIO_THREAD void place (double frame) noexcept;
    PX_AUDIO_THREAD void placeLimited (double frame) noexcept;

    BeatGrid grid() const noexcept;

    /** The memory that a loader fills. */
    TrackTarget trackTarget() noexcept
    {
        return { audioMemory, *overview, track.loadedFrames, track.sampleRate };
    }

    /** The track as its reader sees it. */
    ReadSource readSource() const noexcept;

    /** The part of the track that is read now. */
    LoopRegion region() const noexcept
    {
        return { loops, beatLoopFrames(), marks, play, track.loadedFrames };
    }

    /** No frame of a track is there. Any thread. */
    bool isEmpty() const noexcept { return track.loadedFrames < 1; }

    /** The track, or all that is decoded of it so far, has been heard to its end. Any thread. */
    bool isAtEnd() const noexcept { return !isEmpty() && heardPosition() >= track.loadedFrames; }

    /** Play is on, with a track. Any thread. */
    bool isPlaying() const noexcept { return play.on != 0 && !isEmpty(); }

    /** Play is off, with nothing left to play. Any thread. */
    bool isPlayedOut() const noexcept { return play.on == 0 && (isEmpty() || isAtEnd()); }

    /** A hand holds the deck, or what it gave it has not run out yet. */
    bool isHeld() const noexcept { return jog.scratchOn != 0 || jog.scratchEnded != 0; }

    /** A beat in frames of the file. */
    double beatFrames() const noexcept { return track.sampleRate * 60.0 / marks.bpm; }

    /** The length of a beat loop in frames of the file. */
    double beatLoopFrames() const noexcept { return beatFrames() * loopBeats (loopSizes.loop); }

    struct Texts
    {
        juce::String filePath, title, artist, album;
        juce::String analysisPath {}; ///< where the track's analysis is kept; empty if nowhere
    };

    /** Any thread but the audio thread. */
    Texts texts() const;
    void setTexts (const Texts&);

    DeckWorld& world;
    const int index;

    // Of the track: a new one begins with the defaults
    ReadHead head;
    PlayState play;
    Loops loops;
    JogState jog;
    SyncState sync;
    TrackMarks marks;
    TrackFacts track;
    TapTempo tap;
    EditHistory edits; ///< of the marks

    // Of the deck: they outlast its tracks
    TempoState tempo;
    LoopSizes loopSizes;

    // Loading: written by the loader.
    Relaxed<int32_t> analysisProgress; ///< frames analysed
    Relaxed<int8_t> isLoading;         ///< from the request of a load to its end, analysis included

    DeckVoice voice;
    DeckPattern* pattern = nullptr; ///< that plays on the deck; set by the engine before its first block

    PXAudioSampleBuffer audioMemory;
    std::unique_ptr<TrackOverview> overview = std::make_unique<TrackOverview>();

    /** The beat table of the grid. It changes only under the callback lock. */
    std::vector<BeatMark> beats;

    /** Held to replace the table, before the callback lock, and to read it on a thread that does not hold that one. */
    std::mutex beatsLock;

    /** The analysis that the track's file was last known to hold, under beatsLock: a deck that has changed nothing writes nothing, so
        that of two decks with one track the idle one takes nothing from the other. */
    std::optional<TrackAnalysis> storedAnalysis;

    /** The track's tempo and downbeat before any hand changed them, under beatsLock. */
    std::optional<TrackAnalysis::Untouched> untouched;

    /** The deck's own input of the running block, 2 channels of 16384 frames: control signal and line. */
    juce::AudioSampleBuffer scratchBuffer { 2, 16384 };
    int scratchFrames = 0; ///< valid frames of it in this block

    /** The speeds of the running block while play.followsRecord. */
    RecordMotion record;

private:
    Relaxed<double> heard; ///< as of the last block or move

    juce::CriticalSection textLock;
    Texts trackTexts;
};
