#include "mixer/Channel.h"

#include "mixer/ChannelParameters.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
constexpr double rate = 44100.0;
const double smoothing = std::exp (-1.0 / (0.005 * rate));
constexpr int half = 22050, timeConstant = 220; // 5 ms

/** A channel and the signal that goes through it. */
struct Strip
{
    explicit Strip (int frames) : left (static_cast<size_t> (frames), 1.0f), right (left) {}

    ChannelPair pair (int from, int frames) { return { left.data() + from, right.data() + from, frames }; }
    ChannelPair pair() { return pair (0, static_cast<int> (left.size())); }
    double target (int side = 0) { return channel.targetGain (settings, side); }

    /** Runs the fader over the signal, in blocks. */
    void fade (int block = 64)
    {
        const auto frames = static_cast<int> (left.size());
        for (int from = 0; from < frames; from += block)
            channel.applyFader (pair (from, std::min (block, frames - from)), target(), smoothing);
    }

    EngineSettings settings;
    Channel channel;
    std::vector<float> left, right;
};
}

TEST (Channel, TheGainIsTheProductOfItsControls)
{
    struct Case
    {
        double volume, gain, autogain, crossfader;
        MixOverride mixOverride;
        int8_t mute;
        double left, right; ///< for a deck of either side
    };
    using enum MixOverride;
    const Case cases[] {
        { 1.0, 0.5, 1.0, 0.5, none, 0, 1.0, 1.0 },
        { 1.0, 1.0, 0.5, 0.25, none, 0, 1.0, 0.5 },
        { 0.5, 0.5, 1.0, 0.0, none, 0, 0.231662, 0.0 },
        { 0.0, 1.0, 15.8, 0.5, none, 0, 0.0, 0.0 }, // a closed fader stays closed
        { 1.0, 0.0, 15.8, 0.5, punch, 0, 0.0, 0.0 },
        { 1.0, 0.5, 2.0, 1.0, punch, 0, 2.0, 2.0 }, // Punch goes past the crossfader, not past the fader
        { 0.5, 0.5, 1.0, 1.0, punch, 0, 0.231662, 0.231662 },
        { 1.0, 0.5, 1.0, 0.5, cut, 0, 0.0, 0.0 },
        { 1.0, 0.5, 1.0, 0.5, punch, 1, 0.0, 0.0 },
    };
    for (const auto& c : cases)
    {
        Strip strip (0);
        auto& knobs = strip.channel.knobs;
        knobs.volume = c.volume;
        knobs.gain = c.gain;
        knobs.mixOverride = c.mixOverride;
        knobs.mute = c.mute;
        strip.channel.followAutogain (c.autogain, false, 0.01);
        strip.settings.crossfader = c.crossfader;
        for (const int side : { 0, 1 })
        {
            EXPECT_NEAR (strip.target (side), side == 0 ? c.left : c.right, 1e-6);
            strip.settings.crossfaderReverse = 1;
            EXPECT_NEAR (strip.target (side), side == 0 ? c.right : c.left, 1e-6);
            strip.settings.crossfaderReverse = 0;
        }
    }
    Strip strip (0);
    strip.settings.crossfaderMode = 0;
    EXPECT_NEAR (strip.target(), 0.777, 1e-3);
}

TEST (Channel, EveryJumpOfTheGainTakesFiveMilliseconds)
{
    using Jump = void (*) (Strip&);
    const Jump jumps[] {
        [] (Strip& s) { s.channel.knobs.volume = 0.0; },
        [] (Strip& s) { s.channel.knobs.mute = 1; },
        [] (Strip& s) { s.channel.knobs.mixOverride = MixOverride::cut; },
        [] (Strip& s) { s.settings.crossfader = 1.0; },
        [] (Strip& s) { s.channel.knobs.gain = 0.0; },
    };
    for (const auto jump : jumps)
        for (const int block : { 1, 64, 1000 })
        {
            Strip strip (half);
            strip.fade (block);
            EXPECT_EQ (strip.left[0], 0.0f); // a strip opens from nothing
            EXPECT_NEAR (strip.left[timeConstant], 1.0 - std::exp (-1.0), 0.003);
            EXPECT_EQ (strip.left[half - 1], 1.0f);
            EXPECT_LE (Signals::largestStep (strip.left), 1.0 - smoothing + 1e-6);

            jump (strip);
            strip.left.assign (half, 1.0f);
            strip.fade (block);
            EXPECT_EQ (strip.left[0], 1.0f);
            EXPECT_NEAR (strip.left[timeConstant], std::exp (-1.0), 0.003);
            EXPECT_EQ (strip.left[half - 1], 0.0f);
            EXPECT_LE (Signals::largestStep (strip.left), 1.0 - smoothing + 1e-6);
            EXPECT_EQ (strip.channel.lastLeft, 0.0);
        }
}

TEST (Channel, AnAutogainFoundWhileTheTrackPlaysGlidesFor2Seconds)
{
    Strip strip (0);
    strip.channel.followAutogain (1.0, true, 0.01);
    double before = strip.target(), largestDb = 0.0;
    for (int block = 0; block < 200; ++block)
    {
        strip.channel.followAutogain (4.0, true, 0.01);
        const auto now = strip.target();
        largestDb = std::max (largestDb, 20.0 * std::log10 (now / before));
        before = now;
    }
    EXPECT_LT (largestDb, 0.6); // in 10 ms, of 12 dB
    EXPECT_NEAR (before, 4.0, 0.1);
    strip.channel.followAutogain (1.0, false, 0.01);
    strip.channel.followAutogain (0.5, true, 0.01);
    EXPECT_EQ (strip.target(), 0.5) << "a track that begins has its own level";
}

TEST (Channel, TheBalanceTakesOneSideDownWithinFiveMilliseconds)
{
    for (const auto& [balance, left, right] :
         { std::tuple { 0.75, 0.5f, 1.0f }, { 0.0, 1.0f, 0.0f }, { 1.0, 0.0f, 1.0f }, { 0.5, 1.0f, 1.0f } })
    {
        Strip strip (half);
        strip.channel.applyBalance (strip.pair (0, 100), smoothing);
        EXPECT_EQ (strip.left[99], 1.0f) << "in the middle nothing changes";
        strip.channel.knobs.balance = balance;
        strip.channel.applyBalance (strip.pair(), smoothing);
        EXPECT_NEAR (strip.left[timeConstant], left + (1.0 - left) * std::exp (-1.0), 0.003) << balance;
        EXPECT_EQ (strip.left.back(), left);
        EXPECT_EQ (strip.right.back(), right);
        EXPECT_LE (Signals::largestStep (strip.left), 1.0 - smoothing + 1e-6);
    }
}

TEST (Channel, AllKillsAreExactSilenceAndComeBackWithoutTheOld)
{
    Strip strip (4096);
    auto& knobs = strip.channel.knobs;
    const auto run = [&]
    {
        strip.left = Signals::noise (4096, 1);
        strip.right = Signals::noise (4096, 2);
        strip.channel.equalise (strip.pair(), rate);
        return Signals::rms (std::span (strip.left).last (3000))
               + Signals::rms (std::span (strip.right).last (3000));
    };
    const auto open = run();
    knobs.killLow = knobs.killMid = 1;
    const auto highAlone = run();
    EXPECT_TRUE (highAlone > 0.0 && highAlone < open);
    knobs.killHigh = 1;
    EXPECT_EQ (run(), 0.0);
    EXPECT_NE (strip.left[10], 0.0f) << "fades";

    knobs = {};
    strip.left.assign (4096, 1.0f);
    strip.right.assign (4096, 1.0f);
    strip.channel.equalise (strip.pair(), rate);
    EXPECT_LT (strip.left[0], 0.01);
    EXPECT_LT (Signals::largestStep (strip.left), 0.01);
    EXPECT_EQ (strip.left.back(), 1.0f);
}

TEST (Channel, AutogainIsPlayedUpToTheTracksPeak)
{
    for (const auto& [stored, peak, played] : { std::tuple { 2.0, 1.0, 1.0 },
                                                { 2.0, 0.8, 1.25 },
                                                { 2.0, 0.25, 2.0 },
                                                { 0.5, 1.0, 0.5 },
                                                { 15.8, 0.1, 10.0 } })
        EXPECT_NEAR (Channel::cappedAutogain (stored, peak), played, 1e-9) << stored << ' ' << peak;
}

TEST (Channel, TheCueTapAddsAtTheGainAndKeepsItsPeak)
{
    Strip strip (500);
    strip.left = Signals::noise (500, 1, 0.25);
    strip.right = Signals::noise (500, 2, 0.5);
    std::vector<float> monitorLeft (500, 0.125f), monitorRight (500);
    const ChannelPair monitor { monitorLeft.data(), monitorRight.data(), 500 };
    strip.channel.knobs.gain = 0.75;
    strip.channel.knobs.volume = 0.0;
    strip.channel.tapCue (strip.pair(), monitor, false);
    EXPECT_EQ (Signals::peak (monitorRight), 0.0);
    strip.channel.tapCue (strip.pair(), monitor, true);
    EXPECT_LT (std::abs (monitorRight[0]), 0.01) << "moves over 5 ms";
    for (size_t i = 221; i < 500; ++i)
    {
        EXPECT_NEAR (monitorLeft[i], 0.125 + 1.5 * strip.left[i], 1e-6);
        EXPECT_NEAR (monitorRight[i], 1.5 * strip.right[i], 1e-6);
    }
    const auto loudest = 1.5 * std::max (Signals::peak (strip.left), Signals::peak (strip.right));
    strip.left.assign (500, 0.0f);
    strip.right.assign (500, 0.0f);
    strip.channel.tapCue (strip.pair(), monitor, true);
    EXPECT_NEAR (strip.channel.cuePeak, loudest, 1e-6);
}

TEST (ChannelParameters, ManyAreMovedAndPutBackByTheTableAlone)
{
    Channel channel;
    std::vector<double> before;
    for (const auto& row : ChannelParameters::Rows::table)
        before.push_back (row.get (channel));
    for (const auto& row : ChannelParameters::Rows::table)
        for (const auto value : { 1.0, 0.0, row.rest, 7.0 })
        {
            row.set (channel, value);
            EXPECT_NEAR (row.get (channel), std::min (value, 1.0), 1e-9) << row.name;
            EXPECT_TRUE (row.text == nullptr || !row.text (channel).empty()) << row.name;
        }
    // Steps belong to the effect that is selected, so the selectors, which stand before them, come back first.
    for (const auto& row : ChannelParameters::Rows::table)
        row.set (channel, before[static_cast<size_t> (row.id)]);
    for (const auto& row : ChannelParameters::Rows::table)
        EXPECT_NEAR (row.get (channel), before[static_cast<size_t> (row.id)], 1e-9) << row.name;
}
