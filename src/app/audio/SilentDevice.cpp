#include "app/audio/SilentDevice.h"

#include <algorithm>

namespace
{
double now()
{
    return juce::Time::getMillisecondCounterHiRes() * 0.001;
}

juce::StringArray numbered (const char* what, int count)
{
    juce::StringArray names;
    for (int i = 1; i <= count; ++i)
        names.add (juce::String (what) + " " + juce::String (i));
    return names;
}

juce::BigInteger firstOf (juce::BigInteger wanted, int count)
{
    wanted.setRange (count, std::max (0, wanted.getHighestBit() + 1 - count), false);
    return wanted;
}
}

SilentDevice::SilentDevice (const juce::String& deviceName, const juce::String& typeName)
    : AudioIODevice (deviceName, typeName)
{
}

SilentDevice::~SilentDevice()
{
    close();
}

juce::StringArray SilentDevice::getOutputChannelNames()
{
    return numbered ("Output", outputCount);
}

juce::StringArray SilentDevice::getInputChannelNames()
{
    return numbered ("Input", inputCount);
}

juce::String SilentDevice::open (const juce::BigInteger& in, const juce::BigInteger& out, double sampleRate,
                                 int blockFrames)
{
    close();
    rate = getAvailableSampleRates().contains (sampleRate) ? sampleRate : defaultRate;
    block = getAvailableBufferSizes().contains (blockFrames) ? blockFrames : defaultBlock;
    activeInputs = firstOf (in, inputCount);
    activeOutputs = firstOf (out, outputCount);
    silence.setSize (std::max (1, activeInputs.countNumberOfSetBits()), block);
    outputs.setSize (std::max (1, activeOutputs.countNumberOfSetBits()), block);
    opened = true;
    return {};
}

void SilentDevice::close()
{
    stop();
    opened = false;
}

void SilentDevice::start (juce::AudioIODeviceCallback* next)
{
    if (!opened || next == callback)
        return;
    stop();
    if (next == nullptr)
        return;
    next->audioDeviceAboutToStart (this);
    callback = next;
    clock.start (now(), block / rate);
    // Once a block: what comes late is caught up with, and nobody hears it. Each look wakes a processor.
    startTimer (std::max (1, static_cast<int> (1000.0 * block / rate)));
}

void SilentDevice::stop()
{
    stopTimer();
    if (auto* former = callback.exchange (nullptr))
        former->audioDeviceStopped();
}

void SilentDevice::hiResTimerCallback()
{
    for (auto due = clock.blocksDue (now()); due > 0; --due)
        playBlock();
}

void SilentDevice::playBlock()
{
    silence.clear();
    callback.load()->audioDeviceIOCallbackWithContext (
        silence.getArrayOfReadPointers(), activeInputs.countNumberOfSetBits(),
        outputs.getArrayOfWritePointers(), activeOutputs.countNumberOfSetBits(), block, {});
}

juce::AudioIODevice* SilentDeviceType::createDevice (const juce::String&, const juce::String&)
{
    return new SilentDevice();
}
