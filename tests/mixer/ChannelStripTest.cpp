#include "mixer/ChannelStrip.h"

#include "DeckFixture.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

namespace
{
struct Strip : DeckFixture
{
    explicit Strip (int frames) : left (static_cast<size_t> (frames), 1.0f), right (left) {}

    ChannelStrip::Pair pair (int from, int frames)
    {
        return { left.data() + from, right.data() + from, frames };
    }
    ChannelStrip::Pair pair() { return pair (0, static_cast<int> (left.size())); }

    /** Runs the fader over the rest of the signal, in blocks. */
    void fade (int from, int block = 64)
    {
        const auto frames = static_cast<int> (left.size());
        for (; from < frames; from += block)
            ChannelStrip::applyFader (deck(), pair (from, std::min (block, frames - from)),
                                      ChannelStrip::targetGain (settings, deck()), world.smoothing5ms);
    }

    std::vector<float> left, right;
};
}

TEST (ChannelStrip, TheGainIsTheProductOfItsControls)
{
    struct Case
    {
        double volume, gain, autogain, crossfader;
        int8_t override, mute;
        double left, right; ///< for a deck of either side
    };
    const Case cases[] {
        { 1.0, 0.5, 1.0, 0.5, 0, 0, 1.0, 1.0 },
        { 1.0, 1.0, 0.5, 0.25, 0, 0, 1.0, 0.5 },
        { 0.5, 0.5, 1.0, 0.0, 0, 0, 0.231662, 0.0 },
        { 0.0, 1.0, 15.8, 0.5, 0, 0, 0.0, 0.0 }, // a closed fader stays closed
        { 1.0, 0.0, 15.8, 0.5, 1, 0, 0.0, 0.0 },
        { 1.0, 0.5, 2.0, 1.0, 1, 0, 2.0, 2.0 }, // Punch goes past the crossfader, not past the fader
        { 0.5, 0.5, 1.0, 1.0, 1, 0, 0.231662, 0.231662 },
        { 1.0, 0.5, 1.0, 0.5, 2, 0, 0.0, 0.0 },
        { 1.0, 0.5, 1.0, 0.5, 1, 1, 0.0, 0.0 },
    };
    for (const auto& c : cases)
    {
        Strip strip (0);
        auto& deck = strip.deck();
        deck.volume = c.volume;
        deck.gain = c.gain;
        deck.track.autogain = c.autogain;
        deck.mixOverride = c.override;
        deck.mute = c.mute;
        strip.settings.crossfader = c.crossfader;
        for (const int8_t side : { 0, 1 })
        {
            strip.settings.deckSetup[0].crossfaderSide = side;
            EXPECT_NEAR (ChannelStrip::targetGain (strip.settings, deck), side == 0 ? c.left : c.right, 1e-6);
            strip.settings.crossfaderReverse = 1;
            EXPECT_NEAR (ChannelStrip::targetGain (strip.settings, deck), side == 0 ? c.right : c.left, 1e-6);
            strip.settings.crossfaderReverse = 0;
        }
    }
    Strip strip (0);
    strip.settings.crossfaderMode = 0;
    EXPECT_NEAR (ChannelStrip::targetGain (strip.settings, strip.deck()), 0.777, 1e-3);
}

TEST (ChannelStrip, EveryJumpOfTheGainTakesFiveMilliseconds)
{
    using Jump = void (*) (Strip&);
    const Jump jumps[] {
        [] (Strip& s) { s.deck().volume = 0.0; },    [] (Strip& s) { s.deck().mute = 1; },
        [] (Strip& s) { s.deck().mixOverride = 2; }, [] (Strip& s) { s.settings.crossfader = 1.0; },
        [] (Strip& s) { s.deck().gain = 0.0; },
    };
    constexpr int half = 22050, timeConstant = 220; // 5 ms
    for (const auto jump : jumps)
        for (const int block : { 1, 64, 1000 })
        {
            Strip strip (half);
            strip.fade (0, block);
            EXPECT_EQ (strip.left[0], 0.0f); // a strip opens from nothing
            EXPECT_NEAR (strip.left[timeConstant], 1.0 - std::exp (-1.0), 0.003);
            EXPECT_EQ (strip.left[half - 1], 1.0f);
            EXPECT_EQ (strip.deck().gainRamp, 1.0);
            EXPECT_LE (Signals::largestStep (strip.left), 1.0 - strip.world.smoothing5ms + 1e-6);

            jump (strip);
            strip.left.assign (half, 1.0f);
            strip.fade (0, block);
            EXPECT_EQ (strip.left[0], 1.0f);
            EXPECT_NEAR (strip.left[timeConstant], std::exp (-1.0), 0.003);
            EXPECT_EQ (strip.left[half - 1], 0.0f);
            EXPECT_LE (Signals::largestStep (strip.left), 1.0 - strip.world.smoothing5ms + 1e-6);
            EXPECT_EQ (strip.deck().lastLeft, 0.0);
        }
}

TEST (ChannelStrip, ABrokenGainHealsByItself)
{
    Strip strip (4410);
    strip.deck().gainRamp = std::numeric_limits<double>::quiet_NaN();
    strip.fade (0);
    EXPECT_NEAR (strip.left.back(), 1.0, 1e-4);
}

TEST (ChannelStrip, AllKillsAreExactSilenceAndComeBackWithoutTheOld)
{
    Strip strip (4096);
    Equaliser equaliser;
    auto& deck = strip.deck();
    const auto run = [&]
    {
        strip.left = Signals::noise (4096, 1);
        strip.right = Signals::noise (4096, 2);
        ChannelStrip::equalise (deck, equaliser, strip.pair(), Strip::rate);
        return Signals::rms (strip.left) + Signals::rms (strip.right);
    };
    const auto open = run();
    deck.killLow = deck.killMid = 1;
    const auto highAlone = run();
    EXPECT_TRUE (highAlone > 0.0 && highAlone < open);
    deck.killHigh = 1;
    EXPECT_EQ (run(), 0.0);

    deck.killLow = deck.killMid = deck.killHigh = 0;
    strip.left.assign (4096, 0.0f);
    strip.right.assign (4096, 0.0f);
    ChannelStrip::equalise (deck, equaliser, strip.pair(), Strip::rate);
    EXPECT_EQ (Signals::peak (strip.left), 0.0);
}

TEST (ChannelStrip, ThePflTapAddsAtTheGainAndKeepsItsPeak)
{
    Strip strip (100);
    strip.left = Signals::noise (100, 1, 0.25);
    strip.right = Signals::noise (100, 2, 0.5);
    std::vector<float> monitorLeft (100, 0.125f), monitorRight (100);
    const ChannelStrip::Pair monitor { monitorLeft.data(), monitorRight.data(), 100 };
    auto& setup = strip.settings.deckSetup[0];
    strip.deck().gain = 0.75;
    strip.deck().volume = 0.0;

    ChannelStrip::tapPfl (setup, strip.deck(), strip.pair(), monitor);
    EXPECT_EQ (Signals::peak (monitorRight), 0.0);
    EXPECT_EQ (strip.deck().peak, 0.0);
    setup.pfl = 1;
    ChannelStrip::tapPfl (setup, strip.deck(), strip.pair(), monitor);
    for (size_t i = 0; i < 100; ++i)
    {
        EXPECT_NEAR (monitorLeft[i], 0.125 + 1.5 * strip.left[i], 1e-6);
        EXPECT_NEAR (monitorRight[i], 1.5 * strip.right[i], 1e-6);
    }
    const auto loudest = 1.5 * std::max (Signals::peak (strip.left), Signals::peak (strip.right));
    EXPECT_NEAR (strip.deck().peak, loudest, 1e-6);
    strip.left.assign (100, 0.0f);
    strip.right.assign (100, 0.0f);
    ChannelStrip::tapPfl (setup, strip.deck(), strip.pair(), monitor);
    EXPECT_NEAR (strip.deck().peak, loudest, 1e-6);
}
