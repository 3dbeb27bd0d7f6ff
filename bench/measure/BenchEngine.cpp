#include "measure/BenchEngine.h"

#include "adec/BuiltDecoder.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"
#include "tracks/TrackIngest.h"

#include <cmath>
#include <vector>

EngineWorld BenchEngine::makeWorld (const juce::File& root, bool offline, MillisecondClock audioClock)
{
    EngineWorld world;
    world.folders.root = root;
    world.decoderLibrary = juce::File (builtDecoder());
    world.seed = 1;
    if (offline)
    {
        world.pacing = Pacing::Mode::offline;
        world.clock = std::move (audioClock);
    }
    return world;
}

BenchEngine::BenchEngine (bool offline, double engineRate, int blockFrames)
    : rate (engineRate),
      engine (std::make_unique<CPlatterdex> (makeWorld (
          folder, offline,
          [this]
          {
              return static_cast<uint32_t> (
                  static_cast<double> (renderedFrames.load (std::memory_order_relaxed)) * 1000.0 / rate);
          }))),
      input (CPlatterdex::inputChannels, blockFrames),
      buffer (CPlatterdex::outputChannels, blockFrames)
{
    const auto music = MusicLike::make (blockFrames / rate, rate);
    for (int channel = 0; channel < input.getNumChannels(); ++channel)
        input.copyFrom (channel, 0, music, channel % 2, 0, blockFrames);
    engine->setRateAndBufferSizeDetails (rate, blockFrames);
    engine->prepareToPlay (rate, blockFrames);
    engine->setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);
}

void BenchEngine::putTrack (int index, const juce::AudioBuffer<float>& audio, double fileRate)
{
    std::vector<int16_t> sides[2];
    for (int side = 0; side < 2; ++side)
        for (int i = 0; i < audio.getNumSamples(); ++i)
            sides[side].push_back (static_cast<int16_t> (std::lround (audio.getSample (side, i) * 32767.0f)));

    const juce::ScopedLock lock (engine->getCallbackLock());
    auto& target = deck (index);
    target.resetTrack();
    target.track.sampleRate = fileRate;
    TrackIngest (target.trackTarget()).append (sides[0].data(), sides[1].data(), audio.getNumSamples());
}

int64_t BenchEngine::processBlock()
{
    int64_t waited = 0;
    return processBlock (waited);
}

int64_t BenchEngine::processBlock (int64_t& waited)
{
    for (int channel = 0; channel < input.getNumChannels(); ++channel)
        buffer.copyFrom (channel, 0, input, channel, 0, input.getNumSamples());

    const auto begin = Timing::nanoseconds();
    {
        const juce::ScopedLock lock (engine->getCallbackLock());
        waited = Timing::nanoseconds() - begin;
        engine->processBlock (buffer, noMidi);
    }
    const auto end = Timing::nanoseconds();
    renderedFrames.fetch_add (buffer.getNumSamples(), std::memory_order_relaxed);
    return end - begin;
}
