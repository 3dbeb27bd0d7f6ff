#include "app/audio/EnginePlayer.h"

#include "support/CrossFade.h"

#include <algorithm>
#include <array>
#include <unistd.h>

namespace
{
/** Room for the blocks of a device that gives more frames than it has announced; longer ones are played in parts. */
constexpr int leastCapacity = 1024;
}

EnginePlayer::EnginePlayer (juce::AudioProcessor& e, const Relaxed<int8_t>* s) : engine (e), split (s) {}

void EnginePlayer::audioDeviceAboutToStart (juce::AudioIODevice* device)
{
    const auto capacity = std::max (leastCapacity, device->getCurrentBufferSizeSamples());
    const auto channels = std::max (engine.getTotalNumInputChannels(), engine.getTotalNumOutputChannels());
    const juce::ScopedLock lock (engine.getCallbackLock());
    thread = 0;
    buffer.setSize (channels, capacity);
    rate = device->getCurrentSampleRate();
    splitShare.setSampleRate (rate);
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
    if (outputCount == 2 && channels > 3 && split != nullptr && out (0) != nullptr && out (1) != nullptr)
        return playTwo (out (0), out (1), frames);
    for (int i = 0; i < outputCount; ++i)
    {
        if (auto* target = out (i); target != nullptr && i < channels)
            juce::FloatVectorOperations::copy (target, block.getReadPointer (i), frames);
        else if (target != nullptr)
            juce::FloatVectorOperations::clear (target, frames);
    }
}

void EnginePlayer::playTwo (float* left, float* right, int frames)
{
    splitShare.setTarget (maySplit != 0 && *split != 0 ? 1.0 : 0.0);
    const std::array<const float*, 2> master { buffer.getReadPointer (0), buffer.getReadPointer (1) };
    const std::array<const float*, 2> monitor { buffer.getReadPointer (2), buffer.getReadPointer (3) };
    for (int i = 0; i < frames; ++i)
    {
        const auto share = static_cast<float> (splitShare.next());
        left[i] = CrossFade::mixed (master[0][i], monitor[0][i], share);
        right[i] = CrossFade::mixed (master[1][i], monitor[1][i], share);
    }
}
