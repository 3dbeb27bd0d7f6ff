#pragma once

#include "engine/CPlatterdex.h"
#include "offline/HostPosition.h"

#include <atomic>
#include <functional>

/** An engine whose time is the audio that it has rendered: as fast as the machine allows, and twice the same.

    Its clock, the host's transport and the local time, which begins at midnight of 1 January 2000, all move by rendered
    frames only. One thread drives it, in place of a host's audio and message threads. */
class OfflineHost
{
public:
    struct Options
    {
        juce::File root;                                 ///< the engine's folders are made in here
        juce::File decoderLibrary;                       ///< the decoder's shared library
        double sampleRate = 44100.0;                     ///< Hz
        int blockFrames = 512;                           ///< the largest block, 1 or more
        std::shared_ptr<AutomixSource> automixSource {}; ///< may be null
        bool hasTransport = false; ///< true: inside a host; false: the application on its own
        int64_t seed = RandGeneratorLCG::defaultSeed; ///< of everything random
        std::function<bool()> mayKeepSettings {};     ///< see EngineWorld; may be empty
    };

    explicit OfflineHost (const Options&);
    ~OfflineHost();

    CPlatterdex& engine() noexcept { return *processor; }

    /** The transport that the engine sees if Options::hasTransport. */
    HostPosition& transport() noexcept { return hostPosition; }

    /** Fills the inputs of a block: 10 channels, cleared before, that begin at a frame of the run. May be empty. */
    std::function<void (juce::AudioBuffer<float>& inputs, int64_t firstFrame)> input;

    /** Takes the 14 channels of a block. @returns false to end the rendering. May be empty. */
    std::function<bool (const float* const* channels, int frames)> sink;

    /** Renders in blocks of Options::blockFrames and a shorter last one; delivers the engine's messages after each.
        @returns false if the sink has ended it */
    bool render (int64_t frames);

    /** Loads a track; with `waits` it returns when the deck is done with it, be it loaded or refused. What is loaded
        without waiting arrives in real time, so that two runs may differ. Delivers the engine's messages.
        @param deck   0 to 3 */
    void load (const juce::File&, int deck, bool waits = true);

    /** Waits for what was loaded without waiting. */
    void waitForLoads();

    /** Frames rendered so far. */
    int64_t position() const noexcept { return renderedFrames; }

private:
    EngineWorld makeWorld (const Options&) const;
    bool renderBlock (int frames);

    const double sampleRate;
    const int blockFrames;
    std::atomic<int64_t> renderedFrames { 0 }; ///< read by the engine's threads through its clocks
    HostPosition hostPosition;
    juce::AudioBuffer<float> buffer;
    juce::MidiBuffer noMidi;
    std::unique_ptr<CPlatterdex> processor;
};
