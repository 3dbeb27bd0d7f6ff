#pragma once

#include "app/audio/SilentDeviceClock.h"

#include <juce_audio_devices/juce_audio_devices.h>

#include <atomic>

/** An audio device without hardware: it takes blocks at the pace of the clock, with silent inputs, and drops what it is
    given. So the engine runs where there is no sound, and everything but the sound can be tried. */
class SilentDevice : public juce::AudioIODevice, private juce::HighResolutionTimer
{
public:
    static constexpr const char* name = "Silent";
    static constexpr int inputCount = 10, outputCount = 14, defaultBlock = 256;
    static constexpr double defaultRate = 48000.0;

    /** @param deviceName, typeName   as the device manager knows it */
    explicit SilentDevice (const juce::String& deviceName = name, const juce::String& typeName = name);
    ~SilentDevice() override;

    juce::StringArray getOutputChannelNames() override;
    juce::StringArray getInputChannelNames() override;
    juce::Array<double> getAvailableSampleRates() override { return { 44100.0, 48000.0, 88200.0, 96000.0 }; }
    juce::Array<int> getAvailableBufferSizes() override { return { 64, 128, 256, 512, 1024, 2048 }; }
    int getDefaultBufferSize() override { return defaultBlock; }

    /** A rate or size of 0 means the default. */
    juce::String open (const juce::BigInteger& inputs, const juce::BigInteger& outputs, double sampleRate,
                       int blockFrames) override;
    void close() override;
    bool isOpen() override { return opened; }
    void start (juce::AudioIODeviceCallback*) override;
    void stop() override;
    bool isPlaying() override { return callback != nullptr; }
    juce::String getLastError() override { return {}; }
    int getCurrentBufferSizeSamples() override { return block; }
    double getCurrentSampleRate() override { return rate; }
    int getCurrentBitDepth() override { return 32; }
    juce::BigInteger getActiveOutputChannels() const override { return activeOutputs; }
    juce::BigInteger getActiveInputChannels() const override { return activeInputs; }
    int getOutputLatencyInSamples() override { return 0; }
    int getInputLatencyInSamples() override { return 0; }

private:
    void hiResTimerCallback() override;
    void playBlock();

    bool opened = false;
    double rate = defaultRate;
    int block = defaultBlock;
    juce::BigInteger activeInputs, activeOutputs;
    juce::AudioBuffer<float> silence, outputs;
    SilentDeviceClock clock;
    std::atomic<juce::AudioIODeviceCallback*> callback { nullptr }; ///< changes only while the timer rests
};

/** Lists the one silent device. */
class SilentDeviceType : public juce::AudioIODeviceType
{
public:
    SilentDeviceType() : AudioIODeviceType (SilentDevice::name) {}

    void scanForDevices() override {}
    juce::StringArray getDeviceNames (bool) const override { return { SilentDevice::name }; }
    int getDefaultDeviceIndex (bool) const override { return 0; }
    int getIndexOfDevice (juce::AudioIODevice* device, bool) const override
    {
        return device != nullptr ? 0 : -1;
    }
    bool hasSeparateInputsAndOutputs() const override { return false; }
    juce::AudioIODevice* createDevice (const juce::String& output, const juce::String& input) override;
};
