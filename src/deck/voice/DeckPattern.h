#pragma once

#include "support/AudioThread.h"

#include <array>

/** A change of a deck's own place that a pattern asks for. */
struct PatternMove
{
    double frames = 0.0;      ///< of the file, that the place goes forwards or backwards
    bool landsAtRead = false; ///< it becomes the place that the pattern has read last
};

/** A pattern that plays on a deck: it leads the reading away from the deck's own place and gates what is heard.

    The deck's own place goes on meanwhile as it would without the pattern, so that loops, cues, sync and the hand keep
    their meaning, and a pattern that ends leaves the deck where it belongs. Gates are applied to what is heard, after a
    key-locked deck's stretcher; a pattern that leads the reading is heard straight from the reader.

    Audio thread, under the callback lock that the host holds. */
class DeckPattern
{
public:
    static constexpr int longestPiece = 64;

    /** A few frames of a pattern. */
    struct Piece
    {
        int frames = 0;
        bool leads = false; ///< what is read stands away from the deck's own place, by `offsets`
        bool gates = false; ///< what is heard is multiplied with `gains`
        std::array<double, longestPiece> offsets; ///< frames of the file, negative towards the track's begin
        std::array<float, longestPiece> gains;
    };

    virtual ~DeckPattern() = default;

    /** Takes up what has happened to the deck since the last block. */
    PX_AUDIO_THREAD virtual void beginBlock() noexcept = 0;

    /** Runs, or its gain is on its way back to 1. Otherwise no piece is asked for. */
    PX_AUDIO_THREAD virtual bool isActive() const noexcept = 0;

    /** Waits for the deck's next even beat. */
    PX_AUDIO_THREAD virtual bool awaitsBeat() const noexcept = 0;

    /** That beat is heard with the next frame. */
    PX_AUDIO_THREAD virtual void comeToBeat() noexcept = 0;

    /** The change of the deck's own place that is due before the next frame; asked for after each of the other calls. */
    PX_AUDIO_THREAD virtual PatternMove takeMove() noexcept = 0;

    /** Makes the next piece, of one frame to as many as asked for.
        @param step     frames of the file that the playing deck passes per output frame, not below 0
        @param frames   1 to longestPiece */
    PX_AUDIO_THREAD virtual void makePiece (Piece&, double step, int frames) noexcept = 0;
};
