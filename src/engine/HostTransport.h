#pragma once

#include "support/AudioThread.h"

#include <juce_audio_processors/juce_audio_processors.h>

/** The host's transport, read once per block. */
struct HostTransport
{
    static constexpr double defaultBpm = 120.0;

    double bpm = defaultBpm;
    double timeInSeconds = 0.0;
    bool isPlaying = false;
    bool hasRestarted = false; ///< the host went from stopped to playing since the last block
    int timeSigNumerator = 4, timeSigDenominator = 4;

    /** Takes the position over from the host; without a play head, or when it fails, 120 BPM in 4/4 at rest. */
    PX_AUDIO_THREAD void update (juce::AudioPlayHead*);
};
