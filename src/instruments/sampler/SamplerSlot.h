#pragma once

#include "instruments/sampler/SamplerVoice.h"
#include "instruments/sampler/sample/SampleBuffer.h"
#include "instruments/sampler/sample/SampleFacts.h"
#include "instruments/sampler/sample/SampleOutline.h"
#include "support/GainRamp.h"
#include "support/Relaxed.h"

#include <juce_core/juce_core.h>

/** The ways a pad answers its presses. */
enum SamplePlayMode : int32_t
{
    oneShotMode,   ///< a press starts, or stops; plays to the end
    triggerMode,   ///< plays while held, round and round
    retriggerMode, ///< each press starts anew; plays to the end
    loopMode,      ///< a press starts, or stops; plays round and round
    samplePlayModeCount
};

/** One pad, or the preview of the loop recorder. Written under the callback lock, read anywhere; see each field. */
struct SamplerSlot
{
    // Of the sample: an empty slot has the defaults
    Relaxed<int32_t> playing;   ///< not 0 while it sounds
    Relaxed<int32_t> pitchBend; ///< -1, 0 or 1: 4 % slower or faster
    Relaxed<double> position;   ///< that is heard, in frames of the sample
    Relaxed<double> gain { 0.5 };
    Relaxed<double> peakLeft, peakRight; ///< since a view has set them back to 0
    Relaxed<double> peakMonitor;
    Relaxed<double> beats;         ///< see SampleFacts
    Relaxed<double> bpm { 120.0 }; ///< 0 for a sample without a tempo
    Relaxed<double> speed { 1.0 }; ///< that it plays at, over its own
    Relaxed<uint16_t> channels { 2 };
    Relaxed<uint32_t> sampleRate { 44100 };
    Relaxed<uint16_t> bitsPerSample { 32 };
    Relaxed<uint32_t> beatStart, beatEnd;
    Published<int32_t> lengthFrames; ///< valid frames of the buffer; 0 while it is empty or loads
    Relaxed<int32_t> playMode { oneShotMode };
    Relaxed<int8_t> followsVelocity; ///< a soft press is heard softly
    Relaxed<int8_t> isUnsaved; ///< a recorded loop, from its request on, that no file of the user's holds

    // Of the pad: they outlast its samples
    Relaxed<double> masterGain { 1.0 };
    Relaxed<int8_t> sync;    ///< play in time with the master deck
    Relaxed<int8_t> monitor; ///< send to the monitor bus

    Relaxed<uint32_t> sampleNumber; ///< rises with each sample that goes
    Relaxed<int8_t> isLoading;      ///< from the request to the end of the load

    SampleBuffer buffer;
    SampleOutline outline; ///< of the buffer
    SampleView view;       ///< of the buffer, with the edges that it was found to have
    SamplerVoice voice;
    float pressLevel = 1.0f; ///< of the last press
    GainRamp level { 1.0 }, cueLevel { 0.0 };

    bool isEmpty() const noexcept { return lengthFrames < 1; }
    bool isLooping() const noexcept { return playMode == triggerMode || playMode == loopMode; }

    /** The length that is shown: musical beats, of which the grid's entries are halves. */
    double musicalBeats() const noexcept { return 0.5 * beats; }

    struct Texts
    {
        juce::String filePath;     ///< of the sample; of a loop that was recorded, the track's
        juce::String name;         ///< shown on the pad
        juce::String fault {};     ///< one sentence of why the last load gave nothing
        juce::String recording {}; ///< the file that keeps an unsaved loop
    };

    /** Any thread but the audio thread. */
    Texts texts() const
    {
        const juce::ScopedLock sl (textLock);
        return slotTexts;
    }

    template <typename Change>
    void changeTexts (Change&& change)
    {
        const juce::ScopedLock sl (textLock);
        change (slotTexts);
    }

private:
    juce::CriticalSection textLock;
    Texts slotTexts;
};
