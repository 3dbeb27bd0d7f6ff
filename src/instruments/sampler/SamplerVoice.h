#pragma once

#include "analysis/stretch/TimeStretcher.h"
#include "deck/voice/DeckVoice.h"
#include "instruments/sampler/SamplerClock.h"
#include "instruments/sampler/sample/SampleView.h"

#include <array>
#include <memory>

/** Makes the sound of one pad.

    A sample that keeps its tempo is read straight from memory. A synced one goes through a time stretcher, whose factor is
    the exact ratio of the block; what rounding leaves between its beats and the reference's is taken out by changes of
    tempo that nobody hears, and a distance beyond those by a jump. Whatever ends or moves the sound, its old course fades
    out over 5 ms beside the new one, which comes in at once where it begins with an attack or from silence.

    Audio thread, or a command that holds the callback lock. */
class SamplerVoice
{
public:
    struct Block
    {
        SampleView sample;
        double sampleRate = 44100.0, engineRate = 44100.0; ///< Hz
        double beats = 0.0, bpm = 0.0; ///< of the sample; two beats to a beat, see SampleFacts
        bool synced = false;
        bool stretched = true; ///< a synced sample keeps its key
        double bend = 1.0;     ///< further factor of the speed
        float level = 1.0f;    ///< of the press
        SamplerClock clock;
        VoiceWorkspace& work;
        int& jumpsLeft; ///< of all voices in this block: to begin anew costs as much as thirty blocks
    };

    struct Stretcher
    {
        std::unique_ptr<CElastiqueProIf> unit;
        float rate = 0.0f; ///< Hz, of the engine that it was made for
    };

    /** Asks for a begin with the next block, at a frame of the sample; a synced voice whose reference runs begins in phase.
        @param waitsForBeat   joins the reference at its next beat only */
    PX_AUDIO_THREAD void startFrom (double frame, bool waitsForBeat) noexcept;

    /** Renders what is heard of a voice, `isOn` or not.
        @returns false once the voice has come to its sample's end */
    PX_AUDIO_THREAD bool render (const Block&, bool isOn, float* left, float* right, int frames) noexcept;

    /** Lets the sound of this moment fade out by itself and forgets the sample, whose memory may change. */
    PX_AUDIO_THREAD void leave (const Block&) noexcept;

    /** True while anything is heard, an old sound's end included. */
    bool isSounding() const noexcept { return sounding || tailNext < tailEnd; }

    /** The frame of the sample that is heard at the end of the last block. */
    double heardFrame() const noexcept { return heard; }

    /** The tempo of the last block over the sample's own. */
    double speed() const noexcept { return lastSpeed; }

    /** Takes a stretcher in exchange for the one before, which `next` gets. None changes nothing. */
    void changeStretcher (const Block&, Stretcher& next) noexcept;
    bool hasStretcherFor (float rate) const noexcept
    {
        return stretcher.unit != nullptr && stretcher.rate == rate;
    }

    /** Ratios of tempos between which a sample is synced. Beyond, it is no loop that belongs to the tempo, such as a hit, and
        plays as it is. */
    static constexpr double slowestSync = 0.5, fastestSync = 2.0;

private:
    static constexpr int stretchBlock = 128, longestTail = 1024;

    enum class Mode
    {
        straight,  ///< own tempo
        varispeed, ///< synced by speed
        stretched  ///< synced by the stretcher
    };

    PX_AUDIO_THREAD Mode modeFor (const Block&) const noexcept;

    /** The voice's beats are to lie on the reference's. */
    PX_AUDIO_THREAD bool isLocked (const Block&) const noexcept;

    /** The tempo that the voice is to play at over the sample's own. */
    PX_AUDIO_THREAD double tempoRatio (const Block&) const noexcept;

    /** The frame of the sample that belongs to a phase of the reference. */
    PX_AUDIO_THREAD double frameFor (const Block&, double phase) const noexcept;

    /** The frame that is heard next, counted on past the turns of a loop. */
    PX_AUDIO_THREAD double heardNow (const Block&) const noexcept;

    /** Seconds of the sample by which the voice is ahead of the reference at a frame of the block. */
    PX_AUDIO_THREAD double distance (const Block&, double offset) const noexcept;

    /** The part by which the voice goes slower than the reference, to come back to it. */
    PX_AUDIO_THREAD double correction (const Block&, double offset) noexcept;

    /** Jumps where the reference is too far away. @returns frames that can be made until it is to be asked again */
    PX_AUDIO_THREAD int followReference (const Block&, int offset, int frames) noexcept;

    PX_AUDIO_THREAD void begin (const Block&, Mode, double frame) noexcept;
    /** Gives the stretcher what goes before a frame that is no sample's begin, so that it is in time from there on. */
    PX_AUDIO_THREAD void leadIn (const Block&, double frame) noexcept;
    PX_AUDIO_THREAD void jump (const Block&, Mode, double frame) noexcept;

    /** The block as what is heard was begun: whether it goes round or to the sample's end, whose last frames fade out, holds
        to the end of its tail, whatever the pad is to do by now. */
    PX_AUDIO_THREAD Block asBegun (const Block&) const noexcept;

    /** Goes on at the frame that is heard, in the mode and to the end that the block wants now. */
    PX_AUDIO_THREAD void goOn (const Block&, Mode) noexcept;
    PX_AUDIO_THREAD void make (const Block&, int offset, float* left, float* right, int frames) noexcept;
    PX_AUDIO_THREAD void stretchOn (const Block&, double offset) noexcept;
    PX_AUDIO_THREAD double edgeFrames (const Block&) const noexcept;

    /** Applies the fade of a begin and the level of the press. */
    PX_AUDIO_THREAD void shape (float* left, float* right, int frames) noexcept;

    /** Renders the end of what sounds, added to what is left of the end before; the voice's place is lost. */
    PX_AUDIO_THREAD void keepTail (const Block&) noexcept;
    PX_AUDIO_THREAD void addTail (float* left, float* right, int frames) noexcept;

    Stretcher stretcher;

    bool sounding = false, startPending = false, waiting = false, jumpPending = false;
    double startFrame = 0.0;
    Mode mode = Mode::straight;
    bool goesRound = false; ///< what is heard is a loop
    SamplePlace place;      ///< that is read next
    float level = 1.0f;     ///< of the press that sounds
    double heard = 0.0, lastSpeed = 1.0;

    // Since the stretcher began
    double origin = 0.0;    ///< the frame of the sample that its first input was
    double inputStep = 1.0; ///< frames of the sample to each input
    double madeBegin = 0.0; ///< the input that is heard with the first made frame
    bool correcting = false;
    std::array<float, stretchBlock> madeLeft {}, madeRight {};
    int madeNext = stretchBlock; ///< first of them that is not heard yet

    // The begin of the sound that is heard, while it fades in
    int fadeDone = 0, fadeLength = 0;

    // The sound of before
    std::array<float, longestTail> tailLeft {}, tailRight {};
    int tailNext = 0, tailEnd = 0;
};
