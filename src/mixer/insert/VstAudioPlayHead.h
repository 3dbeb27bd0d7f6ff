#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <cstdint>

/** The musical time of a deck at the begin of a block. */
struct DeckTime
{
    double bpm = 120.0;
    double ppqPosition = 0.0; ///< in beats from the downbeat
    bool playing = false;
};

namespace PX_VST_SLOT
{
/** Tells a slot's plug-in the time of its deck. Audio thread. */
class VstAudioPlayHead : public juce::AudioPlayHead
{
public:
    juce::Optional<PositionInfo> getPosition() const override
    {
        PositionInfo info;
        info.setBpm (time.bpm);
        info.setPpqPosition (time.ppqPosition);
        info.setTimeInSeconds (0.0);
        info.setTimeInSamples (frames); // JUCE's VST 2 wants one that runs
        info.setIsPlaying (time.playing);
        info.setTimeSignature (TimeSignature {}); // 4/4
        return info;
    }

    DeckTime time;
    int64_t frames = 0; ///< that the slot has played so far
};
}
