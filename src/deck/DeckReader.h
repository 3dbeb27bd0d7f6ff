#pragma once

#include "deck/DeckWorld.h"

/** Constants of a deck's running block. */
struct ReaderBlock
{
    double speedRatio = 1.0;   ///< rate of the file over rate of the engine
    double playFactor = 1.0;   ///< further factor of the play speed: the tempo when no stretcher makes it
    double smoothing5ms = 0.0; ///< coefficient of the rate
    double decay100ms = 0.0;   ///< coefficient of jog and bend
    double leftGain = 1.0, rightGain = 1.0;
};

/** What a reading changes of a deck, but for the sound: to work on apart from memory that other threads see, and to take a
    reading back. */
struct ReaderState
{
    explicit ReaderState (const DeckPlayer&) noexcept;
    void storeTo (DeckPlayer&) const noexcept;

    double position, rate, jog, bend, nudgeAccel, linear, declickPosition, declickGain;
};

/** Reads `frames` output frames from the deck's track at its varying rate and moves its position on: four-point cubic
    interpolation, declick of jumps, dulling of slow speeds. Audio thread. */
PX_AUDIO_THREAD void readDeck (DeckPlayer&, const ReaderBlock&, NoiseTable&, float* left, float* right,
                               int frames) noexcept;
