#include "app/audio/EnginePlayer.h"

#include <algorithm>
#include <unistd.h>

namespace
{
/** Room for the blocks of a device that gives more frames than it has announced; longer ones are played in parts. */
constexpr int leastCapacity = 1024;
}

EnginePlayer::EnginePlayer (juce::AudioProcessor& e) : engine (e) {}

void EnginePlayer::audioDeviceAboutToStart (juce::AudioIODevice* device)
{
    const auto capacity = std::max (leastCapacity, device->getCurrentBufferSizeSamples());
    const auto channels = std::max (engine.getTotalNumInputChannels(), engine.getTotalNumOutputChannels());
    const juce::ScopedLock lock (engine.getCallbackLock());
    thread = 0;
    buffer.setSize (channels, capacity);
    rate = device->getCurrentSampleRate();
    engine.setRateAndBufferSizeDetails (rate, device->getCurrentBufferSizeSamples());
    engine.prepareToPlay (rate, device->getCurrentBufferSizeSamples());
}

void EnginePlayer::audioDeviceIOCallbackWithContext (const float* const* inputs, int inputCount,
                                                     float* const* outputs, int outputCount, int frames,
                                                     const juce::AudioIODeviceCallbackContext&)
{
    const auto called = BlockTimes::now();
    if (thread == 0)
        thread = ::gettid();
    const juce::ScopedLock lock (engine.getCallbackLock());
    const auto began = BlockTimes::now();
    const auto capacity = buffer.getNumSamples();
    for (int done = 0; done < frames && capacity > 0;)
    {
        const auto part = std::min (capacity, frames - done);
        playPart (inputs, inputCount, outputs, outputCount, done, part);
        done += part;
    }
    if (rate > 0.0)
        times.add (began - called, BlockTimes::now() - called, static_cast<int64_t> (frames * 1e9 / rate));
}

void EnginePlayer::playPart (const float* const* inputs, int inputCount, float* const* outputs,
                             int outputCount, int firstFrame, int frames)
{
    const auto channels = buffer.getNumChannels();
    juce::AudioBuffer<float> block (buffer.getArrayOfWritePointers(), channels, frames);
    for (int i = 0; i < channels; ++i)
        if (i < inputCount && inputs[i] != nullptr)
            block.copyFrom (i, 0, inputs[i] + firstFrame, frames);
        else
            block.clear (i, 0, frames);

    midi.clear();
    if (engine.isSuspended())
        block.clear();
    else
        engine.processBlock (block, midi);

    const auto out = [&] (int i) { return outputs[i] != nullptr ? outputs[i] + firstFrame : nullptr; };
    if (outputCount == 1 && channels > 1)
    {
        if (auto* mono = out (0))
        {
            juce::FloatVectorOperations::add (mono, block.getReadPointer (0), block.getReadPointer (1),
                                              frames);
            juce::FloatVectorOperations::multiply (mono, 0.5f, frames);
        }
        return;
    }
    for (int i = 0; i < outputCount; ++i)
    {
        if (auto* target = out (i); target != nullptr && i < channels)
            juce::FloatVectorOperations::copy (target, block.getReadPointer (i), frames);
        else if (target != nullptr)
            juce::FloatVectorOperations::clear (target, frames);
    }
}
