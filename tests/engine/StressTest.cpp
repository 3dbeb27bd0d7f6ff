// One audio thread, a thread of random commands and one of loads and reads, all at once on one engine. The program that
// is linked with the real-time sanitizer's run time proves that no block allocates, waits or calls the system; under the
// thread sanitizer the same test proves that nothing races.

#include "EngineFixture.h"

#include "instruments/presets/SmartKnobLibrary.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
}

namespace
{
/** Some value of each sort that a command may be sent. */
float randomValue (std::mt19937& random)
{
    static constexpr float special[] { 0.0f, 1.0f, 0.5f, 127.0f, 64.0f, -1.0f };
    const auto pick = random() % 12;
    return pick < 6 ? special[pick] : static_cast<float> (random() % 1001) / 1000.0f;
}
}

TEST (Stress, BlocksCommandsLoadsAndReadsTogether)
{
    if (__rtsan_ensure_initialized != nullptr)
        __rtsan_ensure_initialized();

    EngineFixture fixture (Pacing::Mode::live);
    fixture.engine->settings.recordFile.set (fixture.folder.file ("r.wav").getFullPathName());
    for (int d = 0; d < deckCount; ++d)
        fixture.loadNoise (d, 10 + d);
    const auto preview = fixture.noiseFile (10);
    fixture.engine->preview.load (preview.getFullPathName());
    fixture.engine->preview.play();

    auto& engine = *fixture.engine;
    std::atomic<bool> done { false };
    std::atomic<int> commands { 0 }, loads { 0 };

    std::thread commander (
        [&]
        {
            std::mt19937 random (1);
            while (!done)
            {
                const auto number = static_cast<int> (random() % 470);
                if (number == 465 && random() % 8 != 0)
                    continue; // a recording now and then, not a new file every time
                engine.dispatch (number, randomValue (random), randomValue (random), randomValue (random));
                engine.getParameter (static_cast<int> (random() % 1010));
                ++commands;
                std::this_thread::yield();
            }
        });
    std::thread loader (
        [&]
        {
            std::mt19937 random (2);
            while (!done)
            {
                const auto deck = static_cast<int> (random() % deckCount);
                fixture.load (fixture.noiseFile (10 + static_cast<int> (random() % 4)), deck);
                engine.setParameter (1 + deck, 1.0f);
                SmartKnobLibrary::loadFactory (engine.smartKnobs, deck, static_cast<int> (random() % 2),
                                               201 + static_cast<int> (random() % 34));
                engine.smartKnobs.bank (deck, 0).setEnabled (static_cast<int> (random() % 20),
                                                             random() % 2 == 0);
                engine.decks.deck (deck)->texts();
                engine.preview.load (loads % 3 == 2 ? juce::String() : preview.getFullPathName());
                engine.preview.play();
                if (loads % 4 == 1)
                    engine.preview.stop();
                ++loads;
            }
        });

    std::mt19937 random (3);
    juce::AudioBuffer<float> buffer (CPlatterdex::outputChannels, 512);
    juce::MidiBuffer noMidi;
    double loudest = 0.0;
    for (int block = 0; block < PX_STRESS_BLOCKS || loads < 4; ++block)
    {
        static constexpr int sizes[] { 64, 64, 64, 128, 1, 511 };
        juce::AudioBuffer<float> piece (buffer.getArrayOfWritePointers(), CPlatterdex::outputChannels,
                                        sizes[random() % std::size (sizes)]);
        const int before = commands;
        {
            const juce::ScopedLock sl (engine.getCallbackLock());
            engine.processBlock (piece, noMidi);
        }
        fixture.renderedFrames += piece.getNumSamples();
        loudest = std::max (loudest, static_cast<double> (piece.getMagnitude (0, piece.getNumSamples())));
        while (commands == before) // a lock that is taken again at once would starve the others
            std::this_thread::yield();
    }
    done = true;
    commander.join();
    loader.join();

    EXPECT_GT (loudest, 0.1);
    EXPECT_LT (loudest, 20.0); // four decks and their fading old audio, nothing run away
}
