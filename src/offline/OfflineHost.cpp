#include "offline/OfflineHost.h"

#include <algorithm>
#include <cmath>

namespace
{
juce::Time timeAfter (double seconds)
{
    // Local, so that the names of recordings are the same everywhere.
    const juce::Time beginning (2000, 0, 1, 0, 0, 0, 0, true);
    return beginning + juce::RelativeTime::milliseconds (static_cast<juce::int64> (seconds * 1000.0));
}
}

EngineWorld OfflineHost::makeWorld (const Options& options) const
{
    EngineWorld world;
    world.folders.root = options.root;
    world.folders.music = options.root.getChildFile ("music");
    world.decoderLibrary = options.decoderLibrary;
    world.clock = [this]
    { return static_cast<uint32_t> (static_cast<int64_t> (renderedFrames * 1000.0 / sampleRate)); };
    world.wallClock = [this] { return timeAfter (static_cast<double> (renderedFrames) / sampleRate); };
    world.pacing = Pacing::Mode::offline;
    world.seed = options.seed;
    world.automixSource = options.automixSource;
    world.mayKeepSettings = options.mayKeepSettings;
    return world;
}

OfflineHost::OfflineHost (const Options& options)
    : sampleRate (options.sampleRate),
      blockFrames (std::max (1, options.blockFrames)),
      hostPosition (sampleRate),
      buffer (CPlatterdex::outputChannels, blockFrames),
      processor (std::make_unique<CPlatterdex> (makeWorld (options)))
{
    processor->setNonRealtime (true);
    processor->setRateAndBufferSizeDetails (sampleRate, blockFrames);
    processor->prepareToPlay (sampleRate, blockFrames);
    if (options.hasTransport)
        processor->setPlayHead (&hostPosition);
    else
        processor->setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);
    // A block without frames lets commands before the first real one find the engine at its rate.
    renderBlock (0);
}

OfflineHost::~OfflineHost()
{
    processor->releaseResources();
}

bool OfflineHost::renderBlock (int frames)
{
    std::array<float*, CPlatterdex::outputChannels> channels {};
    std::copy_n (buffer.getArrayOfWritePointers(), channels.size(), channels.begin());
    for (auto* channel : channels)
        juce::FloatVectorOperations::clear (channel, frames);
    if (input != nullptr && frames > 0)
    {
        juce::AudioBuffer<float> inputs (channels.data(), CPlatterdex::inputChannels, frames);
        input (inputs, renderedFrames);
    }
    // Made only now: a buffer remembers that it was cleared, whatever else is written through the same pointers.
    juce::AudioBuffer<float> block (channels.data(), CPlatterdex::outputChannels, frames);
    {
        const juce::ScopedLock lock (processor->getCallbackLock());
        processor->processBlock (block, noMidi);
    }
    renderedFrames += frames;
    hostPosition.advance (frames);
    processor->deliverMessages();
    return sink == nullptr || frames == 0 || sink (channels.data(), frames);
}

bool OfflineHost::render (int64_t frames)
{
    while (frames > 0)
    {
        const auto count = static_cast<int> (std::min<int64_t> (frames, blockFrames));
        if (!renderBlock (count))
            return false;
        frames -= count;
    }
    return true;
}

void OfflineHost::load (const juce::File& file, int deck, bool waits)
{
    // Another deck may hold the track: its edits are read or not by their order, not by the speed of the disk.
    processor->deliverMessages();
    processor->loaders.waitUntilSaved();
    processor->loadTrack (file, deck);
    if (waits)
        processor->loaders.waitUntilIdle (deck);
    processor->deliverMessages();
}

void OfflineHost::waitForLoads()
{
    for (int deck = 0; deck < deckCount; ++deck)
        processor->loaders.waitUntilIdle (deck);
    processor->deliverMessages();
}
