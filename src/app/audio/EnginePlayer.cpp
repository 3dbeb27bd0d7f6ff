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
    pairs.prepare (rate);
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
    pairs.begin();
    const auto usedPairs = std::min (OutputPairs::count, channels / 2);
    for (int i = 0; i < outputCount; i += 2)
    {
        auto* const left = out (i);
        auto* const right = i + 1 < outputCount ? out (i + 1) : nullptr;
        const auto pair = i / 2;
        if (pair >= usedPairs)
        {
            for (auto* target : { left, right })
                if (target != nullptr)
                    juce::FloatVectorOperations::clear (target, frames);
            continue;
        }
        if (outputCount == 2 && split != nullptr && left != nullptr && right != nullptr
            && pairs.carriesOnly (0, 0))
            playTwo (left, right, frames);
        else
            pairs.write (pair, block, left, right, outputCount == 1);
        pairs.addTone (pair, left, right, frames);
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
