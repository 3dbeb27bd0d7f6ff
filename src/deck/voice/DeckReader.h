#pragma once

#include "deck/state/ReadHead.h"
#include "deck/state/RecordMotion.h"
#include "deck/voice/LoopRegion.h"
#include "deck/voice/TrackSamples.h"
#include "support/NoiseTable.h"
#include "tracks/BeatGrid.h"

/** A deck's track as its reader sees it. A value, made once a block. */
struct ReadSource
{
    const int16_t *left = nullptr, *right = nullptr;
    int32_t frames = 0; ///< that are loaded
    BeatGrid grid;

    TrackSamples samples() const noexcept { return { left, right, frames }; }
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
    int fadeFrames = 132;      ///< output frames in which a jump's old audio fades out
    LoopRegion region;
    RecordMotion* record = nullptr; ///< that moves the deck in place of tempo and jog; null: none
};

/** The result of a reading. */
struct Reading
{
    int frames = 0;   ///< that were read
    bool led = false; ///< the region has led it off the straight way: round a loop, or along the start point
    bool jumped = false; ///< with its last frame it went on elsewhere
};

/** Reads `frames` output frames from a track at the head's varying rate and moves the head on: interpolation, declick of
    jumps, dulling of slow speeds, turns of loops. A deck that plays at the file's own speed, in no loop, is led to whole frames within
    60 ms: from then on the samples come out as they are. Audio thread. */
PX_AUDIO_THREAD void readDeck (ReadHead&, const ReadSource&, const ReadDrive&, NoiseTable&, float* left,
                               float* right, int frames) noexcept;

/** The same, but ends after a frame with which the reading goes on elsewhere. */
PX_AUDIO_THREAD Reading readToJump (ReadHead&, const ReadSource&, const ReadDrive&, NoiseTable&, float* left,
                                    float* right, int frames) noexcept;

/** The movement of readDeck() alone; its fade after a jump stays as it is.
    @param places   gets the place of each output frame, in frames of the file. Audio thread. */
PX_AUDIO_THREAD void traceDeck (ReadHead&, const ReadSource&, const ReadDrive&, double* places,
                                int frames) noexcept;
