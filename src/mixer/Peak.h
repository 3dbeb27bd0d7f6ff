#pragma once

#include "support/AudioThread.h"

#include <juce_audio_basics/juce_audio_basics.h>

/** The largest magnitude of some samples, 0 of none. */
PX_AUDIO_THREAD inline float peakOf (const float* samples, int frames) noexcept
{
    const auto range = juce::FloatVectorOperations::findMinAndMax (samples, frames);
    return juce::jmax (-range.getStart(), range.getEnd());
}
