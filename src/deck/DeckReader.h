#pragma once

#include "deck/Course.h"
#include "deck/DeckWorld.h"

/** Constants of a deck's running block. */
struct ReaderBlock
{
    double speedRatio = 1.0;   ///< rate of the file over rate of the engine
    double playFactor = 1.0;   ///< further factor of the play speed: the tempo when no stretcher makes it
    double smoothing5ms = 0.0; ///< coefficient of the rate
    double decay100ms = 0.0;   ///< coefficient of jog and bend
    double leftGain = 1.0, rightGain = 1.0;
    Course course;
};

/** The result of a reading. */
struct Reading
{
    int frames = 0;   ///< that were read
    bool led = false; ///< the course has led it off the straight way: round a loop, or along the start point
    bool jumped = false; ///< with its last frame it went on elsewhere
};

/** Finds the beat that the reading comes to next. Once a block: the walk itself costs one comparison a frame. */
PX_AUDIO_THREAD void findNextBeat (DeckPlayer&) noexcept;

/** Reads `frames` output frames from the deck's track at its varying rate and moves its position on: four-point cubic
    interpolation, declick of jumps, dulling of slow speeds, turns of loops. Audio thread. */
PX_AUDIO_THREAD void readDeck (DeckPlayer&, const ReaderBlock&, NoiseTable&, float* left, float* right,
                               int frames) noexcept;

/** The same, but ends after a frame with which the reading goes on elsewhere. */
PX_AUDIO_THREAD Reading readToJump (DeckPlayer&, const ReaderBlock&, NoiseTable&, float* left, float* right,
                                    int frames) noexcept;
