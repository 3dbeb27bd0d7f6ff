#pragma once

#include "deck/Course.h"
#include "deck/PlaceLog.h"
#include "support/RingBuffer.h"

#include <array>

struct DeckPlayer;
struct DeckWorld;
struct ReaderBlock;

/** How what a deck reads becomes what is heard.

    A playing deck reads ahead and goes through its time stretcher. The reading leads the output by one constant time for
    all decks, so that decks whose reading is in phase are heard in phase, whatever their tempo and key. A deck that
    stands still, is scratched, or has no stretcher is heard straight from the reader, without delay. Each change between
    the two, and each jump, is heard at once: the old sound fades out over the new one. So is a change of the course, as of
    a loop that is switched off: what has been read on another way than the new course's is taken back, and read anew.

    Audio thread under the callback lock, or a command that holds it. */
class DeckVoice
{
public:
    /** Fills `left` and `right`; the block's playFactor is set here. */
    PX_AUDIO_THREAD void render (DeckWorld&, DeckPlayer&, const ReaderBlock&, float* left, float* right,
                                 int frames) noexcept;

    /** Takes up the course that the deck is to be read on from now on, as render() does. What compares places that are
        read asks for it first. */
    PX_AUDIO_THREAD void takeUpCourse (const DeckWorld&, DeckPlayer&) noexcept;

    /** From the next block on the deck is heard from its position, whatever was read ahead. */
    PX_AUDIO_THREAD void restart (DeckPlayer&) noexcept;

    /** Forgets all sound, that of before a restart too. */
    PX_AUDIO_THREAD void silence (DeckPlayer&) noexcept;

    /** The place in the track that is heard at the begin of the next block, in frames of the file; exact to 1 ms. It is
        the deck's position less what rings and stretcher hold. */
    PX_AUDIO_THREAD double heardPosition (const DeckPlayer&) const noexcept;

    /** By how many frames of the file what is read leads what is heard, over all turns. */
    PX_AUDIO_THREAD double readLead (const DeckPlayer&) const noexcept;

    /** Whether the sound comes through the stretcher, so that reading leads it. */
    bool isStretching() const noexcept { return stretching && !restartPending; }

    /** The place from which the deck reads on in this block, and when it is heard. */
    struct Front
    {
        double position = 0.0;         ///< frames of the file
        double framesUntilHeard = 0.0; ///< output frames from the begin of the block on
        bool stretched = false;        ///< the block's sound comes through the stretcher
    };
    PX_AUDIO_THREAD Front front (const DeckWorld&, const DeckPlayer&) const noexcept;

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

    PX_AUDIO_THREAD bool shouldStretch (const DeckWorld&, const DeckPlayer&) const noexcept;
    PX_AUDIO_THREAD void begin (DeckWorld&, DeckPlayer&, const ReaderBlock&, bool stretched) noexcept;
    PX_AUDIO_THREAD void keepTail (DeckWorld&, DeckPlayer&, const ReaderBlock&) noexcept;
    PX_AUDIO_THREAD void fadeTail (float* left, float* right, int frames) noexcept;

    /** Takes up the course of a block. */
    PX_AUDIO_THREAD void follow (DeckPlayer&, const Course&) noexcept;

    /** Sets the deck back to a frame that it has read, as it was then. */
    PX_AUDIO_THREAD void setBackTo (DeckPlayer&, double frame) const noexcept;

    /** The frame read that is heard next. */
    PX_AUDIO_THREAD double heardFrame (const DeckPlayer&) const noexcept;
    bool hasReadAhead() const noexcept { return isStretching() && !places.isEmpty(); }

    PX_AUDIO_THREAD void fillRings (DeckWorld&, DeckPlayer&, const ReaderBlock&, int frames) noexcept;
    enum class Input
    {
        goesOn,
        ended ///< what has been read is played out
    };
    PX_AUDIO_THREAD void stretchBlock (DeckWorld&, DeckPlayer&, const ReaderBlock&, Input) noexcept;
    PX_AUDIO_THREAD void readAhead (DeckWorld&, DeckPlayer&, const ReaderBlock&, double dueTime,
                                    int leastFrames) noexcept;
    PX_AUDIO_THREAD void setFactors (DeckPlayer&, double engineRate) noexcept;

    bool stretching = false, restartPending = true;
    Tail tail;

    Course course; ///< that is read on
    PlaceLog places;
    BasicRingBuffer<65536> inputLeft, inputRight; ///< read, not yet given to the stretcher
    int64_t framesRead = 0, framesGiven = 0, framesMade = 0;
    double dueOfNext = 0.0;
    bool correcting = false;
};
