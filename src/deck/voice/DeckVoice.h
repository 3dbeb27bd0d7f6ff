#pragma once

#include "analysis/stretch/TimeStretcher.h"
#include "deck/voice/BeatWait.h"
#include "deck/voice/DeckPattern.h"
#include "deck/voice/DeckReader.h"
#include "deck/voice/PatternVoice.h"
#include "deck/voice/ReadAheadMap.h"
#include "support/RingBuffer.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>
#include <memory>

/** Room that the decks' voices use one after the other. At the highest rates a stretcher that begins asks for more than
    16384 frames at once. */
struct VoiceWorkspace
{
    juce::AudioSampleBuffer input { 2, 65536 }; ///< the reader's output before the stretcher
    juce::AudioSampleBuffer output { 2, 1024 }; ///< the stretcher's
    DeckPattern::Piece piece;
    std::array<double, DeckPattern::longestPiece> places; ///< the deck's own, of a piece
};

/** All that a block tells a voice. */
struct VoiceBlock
{
    ReadSource source;
    ReadDrive drive; ///< its playFactor is set by the voice
    double tempo = 1.0;
    double keyTuning = 0.0;   ///< semitones
    bool isStretched = false; ///< the deck plays through its stretcher
    double engineRate = 44100.0;
    NoiseTable& noise;
    VoiceWorkspace& work;
    DeckPattern* pattern = nullptr; ///< that plays on the deck
    bool isScratched = false;       ///< a hand holds the deck: no pattern moves it
};

/** Makes what is heard of what a deck reads.

    A deck that needs its stretcher, with key lock on, reads ahead by the 0.14 s that a stretcher holds. All else is heard
    straight from the reader. What a hand does is heard at once all the same: a small step of the tempo plays what the
    stretcher holds already; a greater one, a jump, another direction, another way round a loop, another key and each change
    between the two ways begin anew at the place that is heard, over which 3 ms of the old sound fade out, or 8 ms where
    the same place goes on.

    Audio thread under the callback lock, or a command that holds it. */
class DeckVoice
{
public:
    /** Fills `left` and `right`, and moves the head on. */
    PX_AUDIO_THREAD void render (ReadHead&, const VoiceBlock&, float* left, float* right,
                                 int frames) noexcept;

    /** From the next block on the deck is heard from its position, whatever was read ahead. */
    PX_AUDIO_THREAD void restart (ReadHead&) noexcept;

    /** Keeps the sound of this moment, which fades out over whatever comes, and forgets all else: the samples may go. */
    void leaveTrack (ReadHead&, const VoiceBlock&) noexcept;

    /** Adds the end of such a sound to the silence of a deck without a track. */
    PX_AUDIO_THREAD void renderTail (float* left, float* right, int frames) noexcept
    {
        fadeTail (left, right, frames);
    }

    /** Takes a stretcher for an engine's rate in Hz, or none, in exchange for the one before. Forgets all sound. */
    void changeStretcher (std::unique_ptr<CElastiqueProIf>&, float engineRate) noexcept;
    bool hasStretcher() const noexcept { return stretcher != nullptr; }
    bool hasStretcherFor (float engineRate) const noexcept
    {
        return hasStretcher() && stretcherRate == engineRate;
    }

    /** The place in the track that is heard at the begin of the next block, in frames of the file; exact to 1 ms. It is
        the head's position less what rings and stretcher hold. @param loadedFrames   limits it */
    PX_AUDIO_THREAD double heardPosition (const ReadHead&, int32_t loadedFrames) const noexcept;

    /** By how many frames of the file what is read leads what is heard, over all turns. */
    PX_AUDIO_THREAD double readLead (const ReadHead&) const noexcept;

    /** True if the sound comes through the stretcher, so that reading leads it. */
    bool isStretching() const noexcept { return stretching && !restartPending; }

    /** The rate at which the frame was read that is heard next. */
    PX_AUDIO_THREAD double heardRate (const ReadHead&) const noexcept;

    /** The tempos that the stretcher makes; what lies beyond plays at the nearest of them. */
    static constexpr double slowestStretch = 0.5, fastestStretch = 1.5;

private:
    static constexpr int longestTail = 1024; ///< output frames, of any engine's rate

    /** The sound of before a jump, that the new one fades over along FadeCurve. */
    struct Tail
    {
        std::array<float, longestTail> left {}, right {};
        int length = 0, next = 0;
    };

    PX_AUDIO_THREAD void renderPlain (ReadHead&, const VoiceBlock&, float* left, float* right,
                                      int frames) noexcept;

    /** Renders at most so many frames of a deck on which a pattern plays or waits. @returns how many */
    PX_AUDIO_THREAD int renderPattern (ReadHead&, const VoiceBlock&, float* left, float* right,
                                       int frames) noexcept;
    PX_AUDIO_THREAD void readAway (ReadHead&, const VoiceBlock&, const DeckPattern::Piece&, float* left,
                                   float* right) noexcept;
    PX_AUDIO_THREAD void makeMove (ReadHead&, const VoiceBlock&, const PatternMove&) noexcept;

    PX_AUDIO_THREAD PatternVoice::Setting patternSetting (const VoiceBlock&) const noexcept;

    PX_AUDIO_THREAD void begin (ReadHead&, const VoiceBlock&, const ReadDrive&) noexcept;
    PX_AUDIO_THREAD void keepTail (ReadHead&, const VoiceBlock&, const ReadDrive&) noexcept;
    PX_AUDIO_THREAD void fadeTail (float* left, float* right, int frames) noexcept;

    /** Takes up region, key and tempo of a block: where what has been read ahead is not what is to be heard, it is dropped.
        @returns true if the same place goes on in another key or tempo */
    PX_AUDIO_THREAD bool follow (ReadHead&, const VoiceBlock&) noexcept;
    PX_AUDIO_THREAD bool isHeardElsewhere (const VoiceBlock&) const noexcept;
    PX_AUDIO_THREAD bool isHeardOutOfTune (const VoiceBlock&) const noexcept;

    /** Sets the deck back to a frame that it has read, as it was then. */
    PX_AUDIO_THREAD void setBackTo (ReadHead&, const ReadSource&, double frame) const noexcept;

    /** The frame given to the stretcher that is heard next. */
    PX_AUDIO_THREAD double heardFrame() const noexcept;

    /** The same by tempo alone, without what the stretcher leaves of it. A deck that is set back to it loses nothing however
        often that happens. */
    PX_AUDIO_THREAD double dueHeardFrame() const noexcept;
    bool hasReadAhead() const noexcept { return isStretching() && !map.isEmpty(); }

    PX_AUDIO_THREAD void fillRings (ReadHead&, const VoiceBlock&, const ReadDrive&, int frames) noexcept;
    enum class Input
    {
        goesOn,
        ended ///< what has been read is played out
    };
    PX_AUDIO_THREAD void stretchBlock (ReadHead&, const VoiceBlock&, const ReadDrive&, Input) noexcept;
    PX_AUDIO_THREAD void readAhead (ReadHead&, const VoiceBlock&, const ReadDrive&, int frames) noexcept;
    PX_AUDIO_THREAD void setFactors (const VoiceBlock&) noexcept;

    // Without a stretcher tempo and pitch move together.
    std::unique_ptr<CElastiqueProIf> stretcher;
    float stretcherRate = 0.0f;
    RingBuffer ringLeft, ringRight; ///< made, not yet heard
    bool stretching = false, restartPending = true;
    Tail tail;
    PatternVoice patternVoice;
    BeatWait beatWait; ///< of a pattern that is to begin

    LoopRegion region;      ///< that is read in
    double keyTuning = 0.0; ///< that is played in

    // Since the stretcher began
    ReadAheadMap map;
    int64_t framesGiven = 0, framesMade = 0;
    double blockBegin = 0.0; ///< the frame that is heard with the last block's first
    double dueFrame = 0.0;   ///< the frame to be heard with the next block's first, by tempo
    double dueBegin = 0.0;   ///< the same of the last block's
    bool correcting = false;
};
