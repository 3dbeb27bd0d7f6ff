#pragma once

#include "support/AudioThread.h"

/** Keeps a deck at the place of its record, frame by frame of a block.

    Far from it the deck jumps. Nearer it closes the gap by a pull of the speed that nobody hears, while the record turns
    evenly: none while a hand moves it, none at rest. Audio thread. */
class RecordServo
{
public:
    /** A gap of more frames of the file than this is jumped over. */
    static constexpr double farthestPull = 588;

    /** The greatest share of the speed that is pulled. */
    static constexpr double greatestPull = 0.0025;

    PX_AUDIO_THREAD void reset() noexcept;

    /** Notes the speeds of a block, to tell a turning platter from a hand. */
    PX_AUDIO_THREAD void observe (const float* speeds, int frames, double engineRate) noexcept;

    /** The speed to add to each frame of the block.
        @param gap   from the deck to the record at the block's end, in seconds of the track */
    PX_AUDIO_THREAD float pullFor (double gap) const noexcept;

    bool isEven() const noexcept { return evenSeconds > calmSeconds; }

private:
    static constexpr double calmSeconds = 0.25;
    double usual = 0, evenSeconds = 0;
};
