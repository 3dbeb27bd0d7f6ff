#pragma once

#include "support/AudioThread.h"
#include "support/Relaxed.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <memory>

/** Somebody else's plug-in, prepared for a rate and played in stereo. Its channels, block size, lock and exceptions stay in
    here. Made and deleted on the message thread, and never while a block of it runs. */
class HostedPlugin
{
public:
    static constexpr int maxChannels = 32;

    /** Gives the plug-in a stereo layout if it takes one, and prepares it.
        @param rate    in Hz
        @param block   the most frames that it is given at once; longer blocks come in parts */
    HostedPlugin (std::unique_ptr<juce::AudioProcessor>, double rate, int block);
    ~HostedPlugin();
    HostedPlugin (const HostedPlugin&) = delete;
    HostedPlugin& operator= (const HostedPlugin&) = delete;

    /** One sentence on why a slot can't play it, or nothing: it has no output, or more than 32 channels. */
    juce::String unfitness() const;

    enum class Outcome
    {
        played,
        idle, ///< the plug-in was busy with itself: the output is silent
        threw ///< it ended with an exception: the output is silent
    };

    /** Plays a block. A plug-in with one input gets the middle of both sides; one output goes to both.
        @param in, out   left and right; they don't overlap */
    PX_AUDIO_THREAD Outcome process (const float* const* in, float* const* out, int frames) noexcept;

    /** Looks whether the plug-in's latency has changed. Message thread. */
    void updateLatency() { latencyFrames = juce::jmax (0, processor->getLatencySamples()); }

    /** In frames. Any thread. */
    int latency() const noexcept { return latencyFrames; }
    double sampleRate() const noexcept { return rate; }
    int blockSize() const noexcept { return block; }

    const std::unique_ptr<juce::AudioProcessor> processor;

private:
    PX_AUDIO_THREAD Outcome processPart (const float* const* in, float* const* out, int frames) noexcept;

    const double rate;
    const int block;
    int inputs = 0, outputs = 0;
    juce::AudioBuffer<float> buffer;
    juce::MidiBuffer noMidi;
    Relaxed<int> latencyFrames { 0 };
};
