// Sixteen pads play while other threads load, copy, record, save and clear at random. The real-time sanitizer proves that no
// block allocates or waits, the thread sanitizer that nothing races; the bus shows that nothing clicks.

#include "EngineFixture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <numbers>
#include <random>
#include <thread>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
}

namespace
{
/** A tone that is low, so that any step in the bus stands out, and whose loop has no seam. */
juce::File toneFile (const EngineFixture& fixture, int hertz)
{
    juce::AudioBuffer<float> audio (2, 44100);
    for (int side = 0; side < 2; ++side)
        for (int i = 0; i < audio.getNumSamples(); ++i)
            audio.setSample (
                side, i,
                static_cast<float> (0.1 * std::sin (2.0 * std::numbers::pi * hertz * (i + 100) / 44100.0)));
    return EncodedFiles::writeWav (audio, 44100.0,
                                   fixture.folder.file ("tone" + juce::String (hertz) + ".wav"));
}
}

namespace
{
enum class Takes
{
    none,
    ghosts ///< loops from the deck, laid under pads that play
};

void storm (Takes takes)
{
    if (__rtsan_ensure_initialized != nullptr)
        __rtsan_ensure_initialized();

    EngineFixture fixture (Pacing::Mode::live);
    auto& engine = *fixture.engine;
    auto& sampler = engine.sampler;
    std::vector<juce::File> tones;
    for (const int hertz : { 50, 60, 90, 120 })
        tones.push_back (toneFile (fixture, hertz));
    fixture.load (tones[0], 0);
    fixture.deck().marks.bpm = 100.0;
    for (int pad = 0; pad < Sampler::padCount; ++pad)
    {
        sampler.loadSample (pad, tones[static_cast<size_t> (pad) % tones.size()]);
        sampler.setPlayMode (pad, loopMode);
        sampler.setPadSync (pad, pad % 2 == 0);
    }
    sampler.waitUntilIdle();

    std::atomic<bool> done { false };
    std::atomic<int> jobs { 0 }, blocks { 0 };
    const auto disturb = [&] (unsigned seed)
    {
        std::mt19937 random (seed);
        for (int lastPress = -1; !done; lastPress = blocks)
        {
            // One press a block and thread, however long the machine lets the blocks wait: beginnings add up.
            while (blocks == lastPress && !done)
                std::this_thread::yield();
            const auto pad = static_cast<int> (random() % Sampler::padCount);
            switch (random() % 8)
            {
            case 0:
                sampler.clearSlot (pad);
                break;
            case 1:
                sampler.copySlot (static_cast<int> (random() % Sampler::padCount), pad);
                break;
            case 2:
                if (takes == Takes::ghosts)
                    sampler.ghostRecordToPad (0, pad, static_cast<int> (random() % 6)); // within the track
                break;
            case 3:
                sampler.setPlayMode (pad, loopMode);
                sampler.setPadSync (pad, random() % 2 == 0);
                break;
            default:
                sampler.loadSample (pad, tones[random() % tones.size()]);
            }
            sampler.padPress (static_cast<int> (random() % Sampler::padCount), 127);
            ++jobs;
            sampler.waitUntilIdle();
        }
    };
    std::thread first (disturb, 1u), second (disturb, 2u);

    juce::AudioBuffer<float> buffer (CPlatterdex::outputChannels, 128);
    double loudest = 0.0, roughest = 0.0;
    float last = 0.0f, beforeLast = 0.0f;
    for (; blocks < PX_STRESS_BLOCKS / 4 || jobs < 40; ++blocks)
    {
        fixture.process (buffer);
        std::this_thread::yield();
        for (const auto sample : EngineFixture::channel (buffer, 12))
        {
            loudest = std::max (loudest, static_cast<double> (std::abs (sample)));
            roughest =
                std::max (roughest, static_cast<double> (std::abs (sample - 2.0f * last + beforeLast)));
            beforeLast = std::exchange (last, sample);
        }
    }
    done = true;
    first.join();
    second.join();
    EXPECT_GT (loudest, 0.1);
    // A tone may begin without a fade at up to four of its own steps, 0.0068 at 120 Hz, and two threads may press in one
    // block. A tone's height, missing at once, is 0.1.
    EXPECT_LT (roughest, 0.02);
}
}

TEST (SamplerStress, SamplesComeAndGoWhileSixteenPadsPlay)
{
    storm (Takes::none);
    storm (Takes::ghosts);
}
