// Inputs that no control record sends, on decks that follow one, with the rate and the record changing meanwhile. The
// program that is linked with the real-time sanitizer's run time proves that no block allocates or waits.

#include "EngineFixture.h"

#include "timecode/deckmode/TimecodeBrand.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
}

namespace
{
float garbage (std::mt19937& random, int kind)
{
    constexpr auto infinity = std::numeric_limits<float>::infinity();
    constexpr float odd[] {
        std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 1e30f, -1e30f, 1e-40f
    };
    if (kind == 0)
        return odd[random() % std::size (odd)];
    const auto noise = static_cast<float> (random()) / 2147483648.0f - 1.0f;
    return kind == 1 ? std::copysign (1.0f, noise) : noise;
}
}

TEST (TimecodeGarbage, NothingThatComesInReachesTheOutputsBroken)
{
    if (__rtsan_ensure_initialized != nullptr)
        __rtsan_ensure_initialized();
    EngineFixture fixture (Pacing::Mode::live);
    auto& engine = *fixture.engine;
    for (int deck = 0; deck < deckCount; ++deck)
    {
        fixture.loadNoise (deck, 5);
        engine.timecodes[static_cast<size_t> (deck)].setMode (deck % 2 == 0 ? TimecodeDeck::Mode::absolute
                                                                            : TimecodeDeck::Mode::relative);
    }
    std::mt19937 random (1);
    constexpr int blockSizes[] { 1, 31, 128, 512, 4096 };
    for (int block = 0; block < 600; ++block)
    {
        if (block % 50 == 0)
            engine.setRateAndBufferSizeDetails (block % 100 == 0 ? 96000.0 : 44100.0, 512);
        if (block % 30 == 0)
            engine.timecodes[random() % deckCount].setBrand (
                static_cast<int> (random() % timecodeBrands().size()));
        if (block % 70 == 0)
            engine.timecodes[random() % deckCount].learn();
        juce::AudioBuffer<float> buffer (CPlatterdex::outputChannels, blockSizes[random() % 5]);
        for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
            for (int i = 0; i < buffer.getNumSamples(); ++i)
                buffer.setSample (channel, i, garbage (random, block / 20 % 4));
        fixture.process (buffer);
        engine.deliverMessages();
        for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
            for (int i = 0; i < buffer.getNumSamples(); ++i)
                ASSERT_TRUE (std::isfinite (buffer.getSample (channel, i))) << block;
        for (int deck = 0; deck < deckCount; ++deck)
        {
            ASSERT_GE (fixture.deck (deck).head.position, 0.0);
            ASSERT_LE (fixture.deck (deck).head.position, 5 * 44100.0);
        }
    }
}
