#pragma once

#include "analysis/stretch/TimeStretcher.h"
#include "deck/voice/DeckReader.h"
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
};

/** All that a block tells a voice. */
struct VoiceBlock
{
    ReadSource source;
    ReadDrive drive; ///< its playFactor is set by the voice
    double tempo = 1.0;
    double keyTuning = 0.0; ///< semitones
    bool isKeyLocked = true;
    bool isStretched = false; ///< the deck plays through its stretcher
    double engineRate = 44100.0;
    NoiseTable& noise;
    VoiceWorkspace& work;
};

/** Makes what is heard of what a deck reads.

    A playing deck reads ahead and goes through its time stretcher. The reading leads the output by one constant time for
    all decks, so that decks whose reading is in phase are heard in phase, whatever their tempo and key. A deck that
    stands still, is scratched, or has no stretcher is heard straight from the reader, without delay. Each change between
    the two, and each jump, is heard at once: the old sound fades out over the new one. So is a change of the region, as of
    a loop that is switched off: what has been read on another way than the new region's is taken back, and read anew.

    Audio thread under the callback lock, or a command that holds it. */
class DeckVoice
{
public:
    /** Fills `left` and `right`, and moves the head on. */
    PX_AUDIO_THREAD void render (ReadHead&, const VoiceBlock&, float* left, float* right,
                                 int frames) noexcept;

    /** Takes up the region that the deck is to be read in from now on, as render() does. What compares places that are
        read asks for it first. */
    PX_AUDIO_THREAD void takeUpRegion (ReadHead&, const ReadSource&, const LoopRegion&,
                                       bool stretched) noexcept;

    /** From the next block on the deck is heard from its position, whatever was read ahead. */
    PX_AUDIO_THREAD void restart (ReadHead&) noexcept;

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

    /** The place from which the deck reads on in this block, and when it is heard. */
    struct ReadPoint
    {
        double position = 0.0;         ///< frames of the file
        double framesUntilHeard = 0.0; ///< output frames from the begin of the block on
        bool stretched = false;        ///< the block's sound comes through the stretcher
    };
    PX_AUDIO_THREAD ReadPoint readPoint (const ReadHead&, int32_t loadedFrames,
                                         bool stretched) const noexcept;

    /** The tempos that the stretcher makes; what lies beyond plays at the nearest of them. */
    static constexpr double slowestStretch = 0.5, fastestStretch = 1.5;

    /** Seconds by which a playing deck reads ahead of what is heard. A tempo below 0.83 or a key below -1 semitone needs
        more, up to twice as much. */
    static constexpr double readAheadSeconds = 0.14;

private:
    static constexpr int tailLength = 448; ///< until the fade is below 0.001

    /** The sound of before a jump, that the new one fades over. */
    struct Tail
    {
        std::array<float, tailLength> left {}, right {};
        int next = tailLength;
    };

    PX_AUDIO_THREAD void begin (ReadHead&, const VoiceBlock&, const ReadDrive&) noexcept;
    PX_AUDIO_THREAD void keepTail (ReadHead&, const VoiceBlock&, const ReadDrive&) noexcept;
    PX_AUDIO_THREAD void fadeTail (float* left, float* right, int frames) noexcept;

    /** Takes up the region of a block. */
    PX_AUDIO_THREAD void follow (ReadHead&, const ReadSource&, const LoopRegion&) noexcept;

    /** Sets the deck back to a frame that it has read, as it was then. */
    PX_AUDIO_THREAD void setBackTo (ReadHead&, const ReadSource&, double frame) const noexcept;

    /** The frame read that is heard next. */
    PX_AUDIO_THREAD double heardFrame() const noexcept;
    bool hasReadAhead() const noexcept { return isStretching() && !map.isEmpty(); }

    PX_AUDIO_THREAD void fillRings (ReadHead&, const VoiceBlock&, const ReadDrive&, int frames) noexcept;
    enum class Input
    {
        goesOn,
        ended ///< what has been read is played out
    };
    PX_AUDIO_THREAD void stretchBlock (ReadHead&, const VoiceBlock&, const ReadDrive&, Input) noexcept;
    PX_AUDIO_THREAD void readAhead (ReadHead&, const VoiceBlock&, const ReadDrive&, double dueTime,
                                    int leastFrames) noexcept;
    PX_AUDIO_THREAD void setFactors (const VoiceBlock&) noexcept;

    // Without a stretcher tempo and pitch move together.
    std::unique_ptr<CElastiqueProIf> stretcher;
    float stretcherRate = 0.0f;
    RingBuffer ringLeft, ringRight; ///< made, not yet heard
    bool stretching = false, restartPending = true;
    Tail tail;

    LoopRegion region; ///< that is read on
    ReadAheadMap map;
    BasicRingBuffer<65536> inputLeft, inputRight; ///< read, not yet given to the stretcher
    int64_t framesRead = 0, framesGiven = 0, framesMade = 0;
    double dueOfNext = 0.0;
    bool correcting = false;
};
