#pragma once

/** Keeps a locked deck at its distance from the beats of its reference. Audio thread. */
struct PhaseHold
{
    /** Of a host; decks are named by their index. */
    static constexpr int hostReference = -1, noReference = -2;

    int reference = noReference; ///< whose beats the distance is measured from
    double beatRatio = 1.0;      ///< of the deck to its reference when the distance was measured
    double distance = 0.0;       ///< in beats, those of the faster of the two; 0 after an alignment
    double factor = 1.0;         ///< on the tempo that the deck follows
    bool correcting = false;

    bool operator== (const PhaseHold&) const noexcept = default;
};
