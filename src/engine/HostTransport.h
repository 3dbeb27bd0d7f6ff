#pragma once

#include "deck/state/SongPosition.h"
#include "support/AudioThread.h"

#include <juce_audio_processors/juce_audio_processors.h>

/** The host's transport, read once per block. */
struct HostTransport : SongPosition
{
    int timeSigNumerator = 4, timeSigDenominator = 4;

    /** Takes the position over from the host; without a play head, or when it fails, 120 BPM in 4/4 at rest.
        @param blockSeconds   length of the block that begins */
    PX_AUDIO_THREAD void update (juce::AudioPlayHead*, double blockSeconds);

private:
    bool hasTime = false;
    double nextSeconds = 0.0; ///< of the block to come, if the song just goes on
};
