#include "mixer/MasterLimiter.h"
#include "mixer/Meters.h"
#include "mixer/Monitor.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
struct Limited
{
    explicit Limited (double rate)
    {
        RandGeneratorLCG random;
        noise.fill (random);
        limiter.setRate (rate);
    }

    /** The limiter's left output for inputs held over some frames. */
    std::vector<float> hold (float left, float right, int frames, double volume = 1.0)
    {
        std::vector<float> l (static_cast<size_t> (frames), left), r (l.size(), right);
        limiter.process (l.data(), r.data(), frames, volume, noise);
        return l;
    }

    NoiseTable noise;
    MasterLimiter limiter;
};
}

TEST (MasterLimiter, WhatStaysBelowFullScalePassesAsItIs)
{
    Limited bus (44100.0);
    const auto in = Signals::noise (20'000, 1, 0.999);
    for (const double volume : { 1.0, 0.5, 0.0 })
    {
        auto left = in, right = in;
        bus.limiter.process (left.data(), right.data(), 20'000, volume, bus.noise);
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_EQ (left[i], static_cast<float> (in[i] * volume));
    }
}

TEST (MasterLimiter, TakesHoldAndLetsGoInItsTimes)
{
    for (const double rate : { 44100.0, 192000.0 })
    {
        Limited bus (rate);
        EXPECT_EQ (bus.limiter.envelope(), 1.0);
        int attack = 0;
        for (; bus.limiter.envelope() < 3.0 - 2.0 * std::exp (-1.0); ++attack)
            bus.hold (-1.0f, 3.0f, 1);
        EXPECT_NEAR (attack, 0.0001 * rate, 1.0);
        bus.hold (-1.0f, 3.0f, static_cast<int> (0.01 * rate));
        EXPECT_NEAR (bus.limiter.envelope(), 3.0, 1e-9);

        // Both sides fall by the same, and it lets go by and by.
        EXPECT_NEAR (bus.hold (0.3f, 3.0f, 1)[0], 0.1, 1e-6);
        int release = 0;
        for (; bus.limiter.envelope() > 3.0 * std::exp (-1.0); ++release)
            bus.hold (0.0f, 0.0f, 1);
        EXPECT_NEAR (release, 0.099 * rate, 2.0);
    }
}

TEST (MasterLimiter, NothingPassesAboveFullScaleButWhatTheAttackAllows)
{
    for (const float level : { 1.5f, 4.0f, 20.0f })
    {
        Limited bus (44100.0);
        bus.hold (0.9f, 0.9f, 4410);
        const auto out = bus.hold (level, level, 4410);
        EXPECT_LT (out[0], level);
        EXPECT_LE (out[44], 1.0001f * level / (level - (level - 0.9f) * std::exp (-10.0f)));
        EXPECT_NEAR (out.back(), 1.0, 1e-5);
        for (size_t i = 1; i < out.size(); ++i)
            ASSERT_LE (out[i], out[i - 1] + 1e-6f);
    }
    Limited bus (44100.0);
    bus.hold (std::numeric_limits<float>::quiet_NaN(), 0.0f, 10);
    bus.hold (0.0f, std::numeric_limits<float>::infinity(), 10);
    EXPECT_EQ (bus.hold (0.5f, 0.5f, 10).back(), 0.5f);
}

TEST (Meters, RiseAtOnceAndFallByFullScaleInThreeTenthsOfASecond)
{
    for (const double rate : { 44100.0, 96000.0 })
        for (const int block : { 64, 441, 4096 })
        {
            Meters meters;
            meters.setRate (rate);
            std::vector<float> loud (static_cast<size_t> (block), 0.1f), quiet (loud.size());
            loud[static_cast<size_t> (block / 2)] = -7.0f;
            meters.update (loud.data(), quiet.data(), block);
            EXPECT_EQ (meters.level (0), 1.0f);
            EXPECT_EQ (meters.level (1), 0.0f);
            int frames = 0;
            while (meters.level (0) > 0.0f && frames < 10 * rate)
            {
                const auto before = meters.level (0);
                meters.update (quiet.data(), quiet.data(), block);
                meters.update (quiet.data(), quiet.data(), 0);
                EXPECT_LT (meters.level (0), before);
                frames += block;
            }
            EXPECT_NEAR (frames, 0.3 * rate, block + 1.0);
            meters.update (loud.data(), loud.data(), block / 2); // the peak lies beyond
            EXPECT_EQ (meters.level (1), 0.1f);
        }
    Meters meters;
    const float tiny[] { 9e-9f };
    meters.update (tiny, tiny, 1);
    EXPECT_EQ (meters.level (0), 0.0f);
}

TEST (Monitor, MixesBySettings)
{
    struct Case
    {
        Monitor::Settings settings; ///< mix, volume, split, overdrive
        double left, right;         ///< of cue 0.3, -0.2 and master 0.7, 0.1
    };
    const Case cases[] {
        { { 0.0, 1.0 }, 0.3, -0.2 },
        { { 1.0, 1.0 }, 0.7, 0.1 },
        { { 0.5, 1.0 }, 1.0, -0.1 },
        { { 0.25, 1.0 }, 0.65, -0.15 },
        { { 0.75, 0.5 }, 0.25 * 0.85, 0.25 * 0.0 },
        { { 0.5, 0.0 }, 0.0, 0.0 },
        { { 0.9, 1.0, true }, 0.3, 0.1 },
        { { 0.0, 0.5, true }, 0.075, 0.025 },
        { { 0.0, 1.0, false, true }, 0.3 * 2.7 / (0.09 + 0.42 + 1.0), -0.2 * 2.6 / (0.04 + 0.28 + 1.0) },
    };
    for (const auto& c : cases)
    {
        float left[] { 0.3f }, right[] { -0.2f };
        const float masterLeft[] { 0.7f }, masterRight[] { 0.1f };
        float* const monitor[] { left, right };
        const float* const master[] { masterLeft, masterRight };
        Monitor::process (c.settings, monitor, master, 1);
        EXPECT_NEAR (left[0], c.left, 1e-6) << c.settings.mix;
        EXPECT_NEAR (right[0], c.right, 1e-6) << c.settings.mix;
    }
}

TEST (Monitor, OverdriveIsSteepAtRestAndBoundedFarOut)
{
    EXPECT_NEAR (Monitor::overdriven (1e-6), 2.4e-6, 1e-11);
    EXPECT_EQ (Monitor::overdriven (1.0), 1.0);
    for (double x = 0.0; x < 100.0; x += 0.01)
    {
        EXPECT_LE (Monitor::overdriven (x), 1.15);
        EXPECT_EQ (Monitor::overdriven (-x), -Monitor::overdriven (x));
    }
}
