#pragma once

#include "demo/Score.h"

#include <juce_audio_basics/juce_audio_basics.h>

/** Plays a score through the buses with their ducking, filter sweeps, echo and room: the sum, before mastering. */
juce::AudioBuffer<float> mixDown (const Song&, const Score&);

/** Brings a mix to its final level: no rumble or DC, bass mono below 120 Hz, the loudness that all tracks share,
    soft saturation, peak -0.5 dBFS, the ends faded. @param firstFrame   silence up to here stays exact */
void master (juce::AudioBuffer<float>&, int64_t firstFrame);
