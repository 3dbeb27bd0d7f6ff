#pragma once

#include "support/AudioThread.h"

#include <array>
#include <span>

/** The reverb's parallel comb filters: eight per channel, each with a one-pole low-pass in its feedback.

    All sixteen are worked side by side: four frames of four lines are turned into the lanes of vectors, so that one frame's sixteen
    steps are a few vector operations, and back. */
class CombBank
{
public:
    static constexpr int perChannel = 8, combs = 2 * perChannel;

    /** A multiple of four; no line may be shorter than a piece. */
    static constexpr int pieceFrames = 32;

    using Piece = std::array<float, pieceFrames>;

    /** Gives the lines, in the order left, right of the first comb, then of the second, and so on. All memory is taken
        to be silent. */
    PX_AUDIO_THREAD void setLines (const std::array<std::span<float>, combs>&) noexcept;

    /** @param amount   of the feedback, 0 to 1
        @param damping  of high frequencies in it, 0 to 1 */
    PX_AUDIO_THREAD void setFeedback (float amount, float damping) noexcept;

    /** The sums of both channels' combs for an input that goes to all.
        @param frames   at most a piece */
    PX_AUDIO_THREAD void process (const Piece& input, Piece& left, Piece& right, int frames) noexcept;

    /** Forgets the low-passes; whoever owns the lines silences them. */
    PX_AUDIO_THREAD void reset() noexcept { filterStores.fill (0.0f); }

private:
    struct Line
    {
        std::span<float> buffer;
        size_t index = 0;
    };

    /** The frames of a line that come next: in their place, or a copy where they lie in two parts or are no whole piece. */
    float* beginPiece (size_t comb, size_t count) noexcept;

    /** Puts a piece back, and moves on. */
    void endPiece (size_t comb, const float* piece, size_t count) noexcept;

    std::array<Line, combs> lines;
    std::array<Piece, combs> pieces {};
    std::array<float, combs> filterStores {};
    float feedback = 0.84f, damp1 = 0.0f, damp2 = 1.0f;
};
