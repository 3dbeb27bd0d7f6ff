#pragma once

#include "deck/state/ReadHead.h"
#include "deck/voice/LoopRegion.h"
#include "support/NoiseTable.h"
#include "tracks/BeatGrid.h"

/** A deck's track as its reader sees it. A value, made once a block. */
struct ReadSource
{
    const int16_t *left = nullptr, *right = nullptr;
    int32_t frames = 0; ///< that are loaded
    BeatGrid grid;
};

/** All that a block holds fixed of a reading: commands fall between blocks. */
struct ReadDrive
{
    double speedRatio = 1.0;   ///< rate of the file over rate of the engine
    double playFactor = 1.0;   ///< further factor of the play speed: the tempo when no stretcher makes it
    double smoothing5ms = 0.0; ///< coefficient of the rate
    double decay100ms = 0.0;   ///< coefficient of jog and bend
    bool isPlaying = false;    ///< on its own: not stopped, and not in scratch
    bool isRolling = false;    ///< in a rolling loop
    int nudge = 0;             ///< -1, 0 or 1
    LoopRegion region;
};

/** The result of a reading. */
struct Reading
{
    int frames = 0;   ///< that were read
    bool led = false; ///< the region has led it off the straight way: round a loop, or along the start point
    bool jumped = false; ///< with its last frame it went on elsewhere
};

/** Finds the beat that the reading comes to next. Once a block: the walk itself costs one comparison a frame. */
PX_AUDIO_THREAD void findNextBeat (ReadHead&, const BeatGrid&) noexcept;

/** Reads `frames` output frames from a track at the head's varying rate and moves the head on: four-point cubic
    interpolation, declick of jumps, dulling of slow speeds, turns of loops. Audio thread. */
PX_AUDIO_THREAD void readDeck (ReadHead&, const ReadSource&, const ReadDrive&, NoiseTable&, float* left,
                               float* right, int frames) noexcept;

/** The same, but ends after a frame with which the reading goes on elsewhere. */
PX_AUDIO_THREAD Reading readToJump (ReadHead&, const ReadSource&, const ReadDrive&, NoiseTable&, float* left,
                                    float* right, int frames) noexcept;

/** Moves the head as a reading does, but hands out the place of each frame in place of its sound. Audio thread.
    @param places   of `frames` frames, in frames of the file */
PX_AUDIO_THREAD void traceDeck (ReadHead&, const ReadSource&, const ReadDrive&, double* places,
                                int frames) noexcept;
