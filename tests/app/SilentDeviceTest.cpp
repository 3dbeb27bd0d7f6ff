#include "app/audio/SilentDevice.h"

#include <gtest/gtest.h>

namespace
{
/** Counts blocks and lets the test wait for some of them. */
struct Listener : juce::AudioIODeviceCallback
{
    void audioDeviceAboutToStart (juce::AudioIODevice* device) override
    {
        rate = device->getCurrentSampleRate();
    }
    void audioDeviceStopped() override { stopped = true; }
    void audioDeviceIOCallbackWithContext (const float* const* in, int inputs, float* const* out, int outputs,
                                           int frames, const juce::AudioIODeviceCallbackContext&) override
    {
        inputCount = inputs;
        outputCount = outputs;
        blockFrames = frames;
        for (int i = 0; i < inputs; ++i)
            for (int s = 0; s < frames; ++s)
                loudest = juce::jmax (loudest.load(), std::abs (in[i][s]));
        for (int i = 0; i < outputs; ++i)
            juce::FloatVectorOperations::fill (out[i], 1.0f, frames);
        if (++blocks >= 20)
            enough.signal();
    }

    std::atomic<double> rate { 0.0 };
    std::atomic<int> inputCount { 0 }, outputCount { 0 }, blockFrames { 0 }, blocks { 0 };
    std::atomic<float> loudest { 0.0f };
    std::atomic<bool> stopped { false };
    juce::WaitableEvent enough;
};

juce::BigInteger channels (int count)
{
    juce::BigInteger set;
    set.setRange (0, count, true);
    return set;
}
}

TEST (SilentDevice, DrivesBlocksUntilItIsStopped)
{
    SilentDevice device;
    EXPECT_TRUE (device.open (channels (10), channels (14), 0.0, 0).isEmpty());
    Listener listener;
    device.start (&listener);
    EXPECT_TRUE (device.isPlaying());
    EXPECT_TRUE (listener.enough.wait (60'000));
    device.stop();
    const auto blocks = listener.blocks.load();
    EXPECT_TRUE (listener.stopped);
    EXPECT_FALSE (device.isPlaying());
    EXPECT_EQ (listener.rate, 48000.0);
    EXPECT_EQ (listener.blockFrames, 256);
    EXPECT_EQ (listener.inputCount, 10);
    EXPECT_EQ (listener.outputCount, 14);
    EXPECT_EQ (listener.loudest, 0.0f) << "what goes out must not come back in";
    EXPECT_EQ (listener.blocks, blocks);
}

TEST (SilentDevice, OpensWithWhatItIsAskedForIfItHasIt)
{
    SilentDevice device;
    device.open (channels (2), channels (40), 44100.0, 512);
    EXPECT_EQ (device.getCurrentSampleRate(), 44100.0);
    EXPECT_EQ (device.getCurrentBufferSizeSamples(), 512);
    EXPECT_EQ (device.getActiveInputChannels().countNumberOfSetBits(), 2);
    EXPECT_EQ (device.getActiveOutputChannels().countNumberOfSetBits(), 14);
    device.open ({}, {}, 12345.0, -3);
    EXPECT_EQ (device.getCurrentSampleRate(), 48000.0);
    EXPECT_EQ (device.getCurrentBufferSizeSamples(), 256);
    EXPECT_TRUE (device.isOpen());
    device.close();
    EXPECT_FALSE (device.isOpen());
}

TEST (SilentDeviceClock, GivesEveryBlockOnceAndForgetsALongPause)
{
    SilentDeviceClock clock;
    clock.start (100.0, 0.01);
    EXPECT_EQ (clock.blocksDue (100.0), 0);
    EXPECT_EQ (clock.blocksDue (100.0101), 1);
    EXPECT_EQ (clock.blocksDue (100.0102), 0);
    EXPECT_EQ (clock.blocksDue (100.0401), 3);

    // Ticks of any unevenness add up to the time that has passed.
    int total = 0;
    for (int tick = 1; tick <= 1000; ++tick)
        total += clock.blocksDue (100.0401 + 0.007 * tick + 0.003 * (tick % 3));
    EXPECT_NEAR (total, 700, 1);

    EXPECT_EQ (clock.blocksDue (5000.0), SilentDeviceClock::mostAtOnce);
    EXPECT_EQ (clock.blocksDue (5000.0), 0);
    EXPECT_EQ (clock.blocksDue (5000.0101), 1);
    EXPECT_EQ (clock.blocksDue (4999.0), 0) << "a clock that steps back costs time, not sanity";
}
