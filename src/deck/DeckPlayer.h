#pragma once

#include "analysis/files/TrackAnalysis.h"
#include "analysis/stretch/TimeStretcher.h"
#include "deck/DeckNumbers.h"
#include "deck/DeckVoice.h"
#include "deck/EditHistory.h"
#include "deck/PhaseHold.h"
#include "support/Relaxed.h"
#include "support/RingBuffer.h"
#include "tracks/BeatGrid.h"
#include "tracks/TrackIngest.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

class AnalysisThread;
class FileImportThread;
struct DeckWorld;

/** One deck: a flat record of state.

    The audio thread owns the fields during a block; commands write them under the callback lock, so between two
    blocks. What a view or a command's read looks at without the lock is Relaxed. Positions are frames of the file,
    fractional; faders and knobs 0 to 1 with 0.5 neutral; flags 0 or 1. Each field's initial value is its default. */
struct DeckPlayer
{
    DeckPlayer (DeckWorld&, int deckIndex);
    ~DeckPlayer();

    /** Returns the fields of the track and of the transport to their defaults; faders and knobs stay where the hand
        that holds them left them. The tempo becomes the host's. The caller holds the callback lock; the strings and
        the overview, which a lock must not wait for, are cleared apart by clearTexts() and overview->clear(). */
    void resetTrack();

    /** Empties both rings and the stretcher, so that the next block renders from the position. The caller holds the
        callback lock or is the audio thread. */
    PX_AUDIO_THREAD void emptyRings() noexcept;

    /** The place in the track that is heard now, in frames of the file, exact to 1 ms: the position, less what a
        playing deck has read ahead for its stretcher. Any thread. */
    double heardPosition() const noexcept { return readsAhead != 0 ? heard.get() : position.get(); }

    /** Frames of the file by which what is read leads what is heard, over all turns of a loop. Under the callback lock. */
    double readLead() const noexcept { return voice.readLead (*this); }

    /** Where the track would be heard now if it had not gone round in a rolling loop. Under the callback lock. */
    double heardRollPosition() const noexcept { return rollPosition - readLead(); }

    /** Audio thread, after each block. */
    PX_AUDIO_THREAD void publishHeard() noexcept;

    /** Lets the audio of the present position fade out while the deck goes on elsewhere. */
    PX_AUDIO_THREAD void declick() noexcept
    {
        declickPosition = position;
        declickGain = 1.0;
    }

    /** Makes the stretcher for an engine that runs at a rate in Hz. Without memory, or at a rate that no stretcher works
        at, tempo and key move together. Any thread that may block, without the callback lock. */
    void makeStretcher (double engineRate);

    /** Moves to a position, limited to the track, which is heard from the next block on; the old sound fades out. */
    PX_AUDIO_THREAD void jumpTo (double frame) noexcept;

    PX_AUDIO_THREAD void setPositionLimited (double frame) noexcept;

    BeatGrid grid() const noexcept;

    /** Where a loader puts the track's audio. */
    TrackTarget trackTarget() noexcept { return { audioMemory, *overview, loadedFrames, sampleRate }; }

    /** A beat in frames of the file. */
    double beatFrames() const noexcept { return sampleRate * 60.0 / bpm; }

    /** The length of a beat loop in frames of the file. */
    double beatLoopFrames() const noexcept { return beatFrames() * loopBeats (loopSize); }

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

    // Loading: written by the loader.
    Relaxed<int32_t> analysisProgress; ///< frames analysed
    Relaxed<int32_t> cancelLoad;       ///< asks decoder and analysis to stop
    Relaxed<int32_t> loadedOk;         ///< the file gave samples

    // Position
    Relaxed<double> position;
    double elapsedFrames = 0.0;
    Relaxed<double> linearPosition; ///< sum of rates, never looped
    std::array<Relaxed<double>, cueSlotCount> cues;
    Relaxed<double> rate;       ///< frames of the file per output sample, signed
    double nudgeAccel = 0.0;    ///< rate added per sample while nudging at a stop
    Relaxed<double> startPoint; ///< play never goes below it while startPointOn
    double rollPosition = 0.0;  ///< the place that would be read now if a rolling loop did not turn
    Published<double> sampleRate { 44100.0 }; ///< of the file

    // Levels
    Relaxed<double> lastLeft, lastRight; ///< the last samples after the fader
    Relaxed<double> peak;                ///< of the cue signal; whoever shows it sets it back to 0

    // Tempo
    Relaxed<double> bpm { 120.0 }, bpmAverage { 120.0 };
    Relaxed<double> tempo { 1.0 }; ///< speed factor of the last block, out of fader, sync, bend and nudge
    Relaxed<double> bend;          ///< from the jog while playing, in ratio
    Relaxed<double> gainRamp;      ///< the gain of fader and crossfader as it stands on its way
    Relaxed<double> balance { 0.5 };
    Relaxed<double> pitch { 0.5 };
    Relaxed<double> keyTuning; ///< semitones, -12 to 12

    // The old audio that a jump fades out
    double declickPosition = 0.0;
    double declickGain = 0.0;

    // Stretcher and the rings behind it. Without a stretcher tempo and pitch move together.
    float stretcherRate = 44100.0f;
    std::unique_ptr<CElastiqueProIf> stretcher;
    RingBuffer ringLeft, ringRight;
    DeckVoice voice;
    Relaxed<int8_t> readsAhead; ///< the position leads what is heard
    Relaxed<double> heard;      ///< as of the last block, while readsAhead

    // Transport
    Relaxed<int8_t> playState, reverse, nudge, cueHold, currentCue, startPointOn;
    Relaxed<int8_t> loopMoveSize { 5 }, loopSize { 7 };
    Relaxed<int8_t> loopMode, rollingLoop, loadNext;
    Relaxed<int8_t> keyLock { 1 };
    Relaxed<int8_t> resyncRequest, oneShotSync;
    static constexpr int8_t resyncBesideGrid = 2; ///< a request that continues the grid where it has no beats
    PhaseHold phaseHold;
    Relaxed<double> loopStart, loopIn, loopOut;
    Relaxed<int8_t> loopInSet, loopOutSet;
    bool cuePlayArmed = false; ///< a press of Cue/Play on the stopped deck waits for its release

    // Channel strip
    Relaxed<int8_t> mixOverride; ///< 1 Punch, 2 Cut
    Relaxed<double> volume { 1.0 }, gain { 0.5 }, autogain { 1.0 };
    Relaxed<int8_t> mute;
    Relaxed<double> eqLow { 0.5 }, eqMid { 0.5 }, eqHigh { 0.5 };
    Relaxed<int8_t> killLow, killMid, killHigh;

    // The track
    PXAudioSampleBuffer audioMemory;
    std::unique_ptr<TrackOverview> overview = std::make_unique<TrackOverview>();
    Published<int32_t> loadedFrames; ///< frames decoded so far; what lies below them is complete
    Relaxed<int32_t> elapsedOutput;  ///< output frames in play
    Relaxed<int8_t> isTrackLoaded;

    // The grid; the table changes only under the callback lock
    std::vector<BeatMark> beats;
    Relaxed<int32_t> numBeats, downbeatIndex, downbeatPosition;
    Relaxed<int8_t> fixedGrid;
    Relaxed<int8_t> isAnalysed; ///< the grid is that of the track, even if it is empty

    /** Held to replace the table, before the callback lock, and to read it on a thread that does not hold that one. */
    std::mutex beatsLock;

    /** What the track's file was last known to hold, under beatsLock: a deck that has changed nothing writes nothing, so
        that of two decks with one track the idle one takes nothing from the other. */
    std::optional<TrackAnalysis> storedAnalysis;

    // The walk of the reading along the grid
    int32_t nextBeat = 0;       ///< the entry that it comes to next
    double nextBeatFrame = 0.0; ///< its place; infinite past the last one. Found anew in each block
    int32_t framesSinceBar = 0; ///< output frames since the last even beat
    int32_t framesOfBar = 0;    ///< output frames between the two even beats before

    EditHistory edits; ///< of cues, start point and grid

    /** The deck's own input of the running block, 2 channels of 16384 frames: control signal and line. */
    juce::AudioSampleBuffer scratchBuffer { 2, 16384 };
    int scratchFrames = 0; ///< valid frames of it in this block

    // Jog and scratch
    Relaxed<double> jogValue; ///< speed from the jog in scratch
    Relaxed<int8_t> scratchOn, scratchEnded, scratchArmed, scratchKeep;
    Relaxed<int8_t> jogTouched;
    uint32_t lastJogTime = 0; ///< ms of the engine's clock

    struct
    {
        uint32_t taps = 0, first = 0, last = 0; ///< times in ms of the engine's clock
    } tap;

private:
    juce::CriticalSection textLock;
    Texts trackTexts;

public:
    std::unique_ptr<AnalysisThread> analysisThread;

    /** Last, so that it has gone before what it writes to. */
    std::unique_ptr<FileImportThread> importThread;
};
