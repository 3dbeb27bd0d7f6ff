#pragma once

#include <juce_audio_devices/juce_audio_devices.h>
#include <juce_audio_processors/juce_audio_processors.h>

#include "app/audio/BlockTimes.h"
#include "app/audio/OutputPairs.h"
#include "support/GainRamp.h"

/** Drives the engine from an audio device, as a host does.

    The device's pairs of outputs are the engine's first ones in order unless chosen otherwise: so two outputs carry the
    master, four the master and the monitor, fourteen everything; a single output carries the first pair in mono.
    Two outputs that carry the master may be split: they carry the monitor, whose left side is the cue and whose right side is
    the master. What the device has beyond the engine's channels is silent, and inputs that it lacks are silence to the
    engine. */
class EnginePlayer : public juce::AudioIODeviceCallback
{
public:
    /** @param engine   outlives the player
        @param split    is on while the monitor is split, and outlives the player; without it two outputs never are */
    explicit EnginePlayer (juce::AudioProcessor& engine, const Relaxed<int8_t>* split = nullptr);

    /** Lets two outputs carry the monitor while that is split. Any thread. */
    Relaxed<int8_t> maySplit { 0 };

    /** The sources of the outputs. */
    OutputPairs pairs;

    /** Of the blocks since the start. Their count also tells a device that has died from one that plays. */
    BlockTimes times;

    /** The kernel's number of the thread that plays; 0 until the first block of a device. */
    Relaxed<int> thread { 0 };

    void audioDeviceAboutToStart (juce::AudioIODevice*) override;
    void audioDeviceStopped() override {}
    void audioDeviceIOCallbackWithContext (const float* const* inputs, int inputCount, float* const* outputs,
                                           int outputCount, int frames,
                                           const juce::AudioIODeviceCallbackContext&) override;

private:
    void playTwo (float* left, float* right, int frames);
    void playPart (const float* const* inputs, int inputCount, float* const* outputs, int outputCount,
                   int firstFrame, int frames);

    juce::AudioProcessor& engine;
    const Relaxed<int8_t>* const split;
    GainRamp splitShare { 0.0 }; ///< of the monitor in two outputs
    juce::AudioBuffer<float>
        buffer; ///< all of the engine's channels, for at most the frames that it can hold
    juce::MidiBuffer midi;
    double rate = 0.0; ///< of the device, in Hz
};
