#pragma once

#include "support/AudioThread.h"

/** The speeds of a record that moves a deck, one for each output frame of a block.

    A cursor over memory of whoever reads the record: readers of the track take one speed after the other, and past the
    last one the speed holds. Audio thread. */
struct RecordMotion
{
    const float* next = nullptr;
    const float* end = nullptr;
    float held = 0.0f; ///< the last speed taken, 1 nominal, negative backwards

    PX_AUDIO_THREAD double take() noexcept
    {
        if (next != end)
            held = *next++;
        return static_cast<double> (held);
    }
};
