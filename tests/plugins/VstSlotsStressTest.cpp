#include "SlotsBench.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
}

/** The thread sanitizer sees no race, the real-time sanitizer no wait of ours, and the bus no step beyond the fades. */
TEST (VstSlotsStress, PluginsComeAndGoWhileFourDecksPlay)
{
    if (__rtsan_ensure_initialized != nullptr)
        __rtsan_ensure_initialized();
    SlotsBench bench (Pacing::Mode::live);
    auto& fixture = bench.fixture;
    juce::AudioBuffer<float> audio (2, 44100);
    for (int i = 0; i < audio.getNumSamples(); ++i)
        for (int side = 0; side < 2; ++side)
            audio.setSample (side, i,
                             static_cast<float> (
                                 0.1 * std::sin (juce::MathConstants<double>::twoPi * 60.0 * i / 44100.0)));
    const auto tone = EncodedFiles::writeWav (audio, 44100.0, fixture.folder.file ("tone.wav"));
    const juce::StringArray plugins { pluginPath ("gain"), pluginPath ("delay"), pluginPath ("mono"),
                                      "Empty" };
    for (int deck = 0; deck < deckCount; ++deck)
    {
        fixture.load (tone, deck);
        fixture.deck (deck).loops.in = 4410.0; // whole periods
        fixture.deck (deck).loops.out = 30870.0;
        fixture.deck (deck).loops.mode = manualLoop;
        fixture.deck (deck).play.on = 1;
        for (const auto& plugin : plugins)
            ASSERT_EQ (bench.slots->loadNow (deck, plugin), "");
    }
    const auto largestStep = [&fixture] (auto&& goesOn)
    {
        auto last = 0.0f, largest = 0.0f;
        for (int64_t n = 0; goesOn (n); ++n)
        {
            const auto out = fixture.render (512);
            for (const auto sample : EngineFixture::channel (out, 0))
                largest = std::max (largest, n > 0 ? std::abs (sample - std::exchange (last, sample)) : 0.0f);
            last = out.getSample (0, 511);
        }
        return largest;
    };
    fixture.render (100 * 512);
    const auto undisturbed = largestStep ([] (int64_t n) { return n < 200; });
    std::atomic<bool> done { false };
    std::atomic<int64_t> blocks { 0 };
    auto largest = 0.0f;
    std::thread audioThread (
        [&]
        {
            largest = largestStep (
                [&] (int64_t n)
                {
                    blocks = n;
                    return !done;
                });
        });
    std::mt19937 random (4);
    for (int i = 0; i < 250; ++i)
    {
        const auto deck = static_cast<int> (random() % 4u);
        EXPECT_EQ (bench.slots->loadNow (deck, plugins[static_cast<int> (random() % 4u)]), "");
        bench.slots->slot (deck).dryWet = random() % 101u / 100.0;
        bench.slots->slot (deck).isInsert = 1; // sends would add up
        fixture.engine->settings.deckSetup[static_cast<size_t> (deck)].vstOnMaster =
            static_cast<int8_t> (random() % 2u);
        bench.slots->setParamIndex (deck, 0, 0);
        bench.slots->serve();
        // No hand chooses twice within a fade of 5 ms; a starved audio thread would hear all choices at once.
        for (const auto before = blocks.load(); blocks < before + 2;)
            std::this_thread::yield();
    }
    done = true;
    audioThread.join();
    EXPECT_GT (undisturbed, 0.0f);
    EXPECT_LT (largest, 3.0f * undisturbed + 0.005f);
}
