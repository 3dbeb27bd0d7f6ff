// Four decks under real control records at once, through all that a set does to a needle. The program that is linked with
// the real-time sanitizer's run time proves that no block allocates or waits.

#include "../timecode/ControlSignal.h"
#include "EngineFixture.h"

#include "timecode/deckmode/TimecodeBrand.h"

#include <gtest/gtest.h>

#include <cmath>

extern "C"
{
    __attribute__ ((weak)) void __rtsan_ensure_initialized();
}

namespace
{
using Mode = TimecodeDeck::Mode;
using Speed = std::optional<double>;
constexpr int genericVinyl = 8;

const ControlMedium& medium (const char* id)
{
    return *findControlMedium (id);
}

Speed steady (double)
{
    return 1.0;
}

Speed lifted (double)
{
    return {};
}

Speed scratch (double t)
{
    return t < 0.5 ? 1.0 : 3.0 * std::cos (18.85 * (t - 0.5));
}

/** Decks A to C in absolute mode, B with exchanged cables, and D under a record without a known code. */
struct FourRecords : EngineFixture
{
    const std::array<const ControlMedium*, deckCount> media { &medium ("cd"), &medium ("serato_2a"),
                                                              &medium ("traktor_b"), &medium ("serato_2b") };

    FourRecords() : EngineFixture (Pacing::Mode::live)
    {
        for (int deck = 0; deck < deckCount; ++deck)
        {
            loadNoise (deck, 60);
            auto& setup = engine->settings.deckSetup[static_cast<size_t> (deck)];
            setup.timecodeLeadIn = 0.0f;
            setup.inputPair = static_cast<int8_t> (deck);
            timecode (deck).setBrand (deck == 3 ? genericVinyl
                                                : timecodeBrandOf (*media[static_cast<size_t> (deck)]));
            timecode (deck).setMode (deck == 3 ? Mode::relative : Mode::absolute);
        }
    }

    TimecodeDeck& timecode (int deck) { return engine->timecodes[static_cast<size_t> (deck)]; }

    double placeOf (int deckIndex) { return deck (deckIndex).head.position / rate; }

    /** Plays all four records from their own place on. @returns the loudest sample of the decks' outputs */
    float ride (const std::function<double (const ControlMedium&)>& startOf, double seconds,
                const std::function<Speed (double)>& speedAt)
    {
        std::array<ControlSignal, deckCount> signals;
        for (size_t deck = 0; deck < deckCount; ++deck)
            signals[deck] = play (*media[deck], startOf (*media[deck]), seconds, speedAt);
        constexpr size_t block = 128;
        float loudest = 0;
        for (size_t done = 0; done + block <= signals[0].size(); done += block)
        {
            juce::AudioBuffer<float> buffer (CPlatterdex::outputChannels, block);
            buffer.clear();
            for (int deck = 0; deck < deckCount; ++deck)
            {
                const auto& signal = signals[static_cast<size_t> (deck)];
                const auto isExchanged = deck == 1 ? 1 : 0;
                buffer.copyFrom (2 * deck + isExchanged, 0, signal.left.data() + done, block);
                buffer.copyFrom (2 * deck + 1 - isExchanged, 0, signal.right.data() + done, block);
            }
            process (buffer);
            engine->deliverMessages();
            loudest = std::max (loudest, buffer.getMagnitude (0, block));
        }
        return loudest;
    }
};
}

TEST (TimecodeRide, FourRecordsThroughDropsScratchesAndTheirEnds)
{
    if (__rtsan_ensure_initialized != nullptr)
        __rtsan_ensure_initialized();
    FourRecords set;
    const auto at = [] (double seconds) { return [seconds] (const ControlMedium&) { return seconds; }; };
    const auto expectPlaces = [&] (double place, const char* when)
    {
        for (int deck = 0; deck < 3; ++deck)
        {
            EXPECT_TRUE (set.timecode (deck).status().isPlaceKnown) << when << ", " << deck;
            EXPECT_NEAR (set.placeOf (deck), place, 0.015) << when << ", " << deck;
        }
        EXPECT_NEAR (set.timecode (3).status().speed, 1.0, 0.01) << when;
    };

    EXPECT_GT (set.ride (at (10), 1.2, steady), 0.01f);
    expectPlaces (11.2, "played");
    EXPECT_TRUE (set.timecode (1).status().isExchanged);
    set.ride (at (11.2), 0.3, lifted);
    set.ride (at (40), 1.5, scratch);
    set.timecode (3).learn();
    set.ride (at (25), 2.5, steady);
    expectPlaces (27.5, "put down after a scratch");

    const auto beforeEnd = [] (const ControlMedium& each)
    { return static_cast<double> (each.safeLength) / each.carrierHz - 0.5; };
    set.ride (beforeEnd, 1.0, steady);
    for (int deck = 0; deck < 3; ++deck)
        EXPECT_TRUE (set.timecode (deck).status().isInControlZone) << deck;
    set.ride (at (20), 1.0, steady);
    for (int deck = 0; deck < 3; ++deck)
        EXPECT_EQ (set.timecode (deck).mode(), Mode::relative) << deck;
}
