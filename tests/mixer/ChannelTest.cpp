#include "mixer/Channel.h"

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

TEST (Channel, TheMetersShowTheGainOfEachSideAndNotTheFader)
{
    Strip strip (441);
    std::fill (strip.right.begin(), strip.right.end(), -0.25f);
    strip.right.back() = 0.0f; // a meter of single samples would show this
    strip.channel.knobs.gain = 0.25;
    strip.channel.followAutogain (1.5, false, 0.01);
    strip.channel.applyFader (strip.pair(), 0.0, smoothing);
    EXPECT_NEAR (strip.channel.meters.level (0), 0.75f, 1e-6);
    EXPECT_NEAR (strip.channel.meters.level (1), 0.1875f, 1e-6);
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

TEST (Channel, AutogainIsPlayedUpToTheTracksPeak)
{
    for (const auto& [stored, peak, played] : { std::tuple { 2.0, 1.0, 1.0 },
                                                { 2.0, 0.8, 1.25 },
                                                { 2.0, 0.25, 2.0 },
                                                { 0.5, 1.0, 0.5 },
                                                { 15.8, 0.1, 10.0 } })
        EXPECT_NEAR (Channel::cappedAutogain (stored, peak), played, 1e-9) << stored << ' ' << peak;
}
