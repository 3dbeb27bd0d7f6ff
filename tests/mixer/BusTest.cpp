#include "mixer/MasterLimiter.h"
#include "mixer/Meters.h"
#include "mixer/Monitor.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
/** A limiter's output for a signal on both sides, without its delay, in blocks of changing length. */
std::vector<float> limited (MasterLimiter& limiter, std::vector<float> left, double volume = 1.0,
                            std::vector<float>* other = nullptr)
{
    const auto delay = static_cast<size_t> (limiter.latency());
    left.resize (left.size() + delay);
    auto right = other != nullptr ? *other : left;
    right.resize (left.size());
    for (size_t done = 0, block = 1; done < left.size(); done += block, block = block * 7 % 509)
    {
        block = std::min (block, left.size() - done);
        limiter.process (left.data() + done, right.data() + done, static_cast<int> (block), volume);
    }
    if (other != nullptr)
        other->assign (right.begin() + static_cast<std::ptrdiff_t> (delay), right.end());
    return { left.begin() + static_cast<std::ptrdiff_t> (delay), left.end() };
}
}

TEST (MasterLimiter, WhatStaysBelowFullScalePassesAsItIsAMillisecondAndAHalfLater)
{
    const auto in = Signals::noise (20'000, 1, 0.999);
    for (const double volume : { 1.0, 0.5, 0.0 })
    {
        MasterLimiter limiter;
        limiter.setRate (44100.0);
        EXPECT_EQ (limiter.latency(), 66);
        const auto out = limited (limiter, in, volume);
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_EQ (out[i], static_cast<float> (in[i] * volume));
    }
}

TEST (MasterLimiter, NoSamplePassesFullScaleAndTheGainMovesWithoutAStep)
{
    for (const double rate : { 8000.0, 44100.0, 192000.0 })
        for (const double level : { 1.001, 1.5, 8.0 })
        {
            MasterLimiter limiter;
            limiter.setRate (rate);
            auto in = Signals::noise (30'000, 2, level);
            for (size_t i = 0; i < in.size(); ++i) // bursts with rests between them, and lone peaks
                in[i] *= i / 3000 % 2 == 0 ? 1.0f : i % 499 == 0 ? 1.0f : 0.1f;
            auto right = in;
            for (auto& sample : right)
                sample *= -0.25f;
            const auto out = limited (limiter, in, 1.0, &right);
            auto gain = static_cast<double> (out[0] / in[0]);
            for (size_t i = 0; i < out.size(); ++i)
            {
                ASSERT_LE (std::abs (out[i]), 1.0f) << rate << ' ' << level << ' ' << i;
                ASSERT_NEAR (right[i], -0.25 * out[i], 1e-6) << "both sides alike";
                if (std::abs (in[i]) < 1e-3)
                    continue;
                const auto next = static_cast<double> (out[i] / in[i]);
                ASSERT_LE (std::abs (next - gain), 1e-3 + 2.0 / (MasterLimiter::lookAheadSeconds * rate))
                    << i;
                gain = next;
            }
            EXPECT_NEAR (Signals::peak (out), 1.0, 0.02);
        }
}

TEST (MasterLimiter, LetsGoInATenthOfASecondAndOutlivesBadNumbers)
{
    MasterLimiter limiter;
    limiter.setRate (44100.0);
    std::vector<float> in (44'100, 0.1f);
    in[100] = 3.0f;
    const auto out = limited (limiter, in);
    EXPECT_NEAR (out[100], 1.0, 1e-6);
    EXPECT_NEAR (out[100 + 100 + 4366], 0.1 / (1.0 + 2.0 * std::exp (-1.0)), 5e-4);
    EXPECT_NEAR (out.back(), 0.1, 1e-4);
    limited (limiter,
             { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), -1e30f });
    EXPECT_NEAR (limited (limiter, std::vector<float> (100, 0.5f)).back(), 0.5, 1e-4);
}

TEST (Meters, RiseAtOnceAndFallByFullScaleInThreeTenthsOfASecond)
{
    for (const auto& [rate, block] : { std::pair { 44100.0, 64 }, { 44100.0, 4096 }, { 96000.0, 441 } })
    {
        Meters meters;
        meters.setRate (rate);
        std::vector<float> loud (static_cast<size_t> (block), 0.1f), quiet (loud.size(), 9e-9f);
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
}

TEST (Meters, HoldAClippedSideForTwoSecondsAfterItsLastFullSample)
{
    for (const auto& [gain, isClipped] : { std::pair { 1.9f, false }, { 2.0f, true }, { -2.0f, false } })
    {
        Meters meters;
        meters.setRate (44100.0);
        const std::vector<float> left (441, 0.5f), right (441, 0.1f), silence (441, 0.0f);
        meters.update (left.data(), right.data(), 441, gain);
        EXPECT_EQ (meters.hasClipped (0), isClipped) << gain;
        EXPECT_FALSE (meters.hasClipped (1));
        int blocks = 0;
        for (; meters.hasClipped (0) && blocks < 1000; ++blocks)
            meters.update (silence.data(), silence.data(), 441);
        EXPECT_NEAR (blocks, isClipped ? 200 : 0, 1);
    }
}

TEST (Monitor, MixesBySettings)
{
    struct Case
    {
        Monitor::Settings settings; ///< mix, volume, split, overdrive
        double left, right;         ///< of cue 0.3, -0.2 and master 0.7, 0.1
    };
    const Case cases[] {
        { { 0.5, 1.0 }, 1.0, -0.1 },
        { { 0.25, 1.0 }, 0.65, -0.15 },
        { { 0.75, 0.5 }, 0.25 * 0.85, 0.25 * 0.0 },
        { { 0.5, 0.0 }, 0.0, 0.0 },
        { { 0.0, 0.5, true }, 0.075, 0.025 },
        { { 0.0, 1.0, false, true }, 0.3 * 2.7 / (0.09 + 0.42 + 1.0), -0.2 * 2.6 / (0.04 + 0.28 + 1.0) },
    };
    constexpr int delay = 66, frames = 1000;
    Monitor monitor;
    monitor.setRate (44100.0, delay);
    std::vector<float> cue (frames), cueRight (frames);
    const std::vector<float> master (frames, 0.7f), masterRight (frames, 0.1f);
    const float* const masters[] { master.data(), masterRight.data() };
    for (const auto& c : cases)
    {
        cue.assign (frames, 0.3f);
        cueRight.assign (frames, -0.2f);
        float* const cues[] { cue.data(), cueRight.data() };
        monitor.process (c.settings, cues, masters, frames);
        EXPECT_NEAR (cue.back(), c.left, 1e-6) << c.settings.mix;
        EXPECT_NEAR (cueRight.back(), c.right, 1e-6) << c.settings.mix;
    }
}

TEST (Monitor, TheCueComesAsLateAsTheMaster)
{
    Monitor monitor;
    monitor.setRate (44100.0, 66);
    std::vector<float> left (200), right (200), silence (200);
    left[10] = right[20] = 1.0f;
    float* const cues[] { left.data(), right.data() };
    const float* const masters[] { silence.data(), silence.data() };
    monitor.process ({}, cues, masters, 200);
    EXPECT_EQ (left[76], 1.0f);
    EXPECT_EQ (right[86], 1.0f);
    EXPECT_EQ (Signals::rms (left), Signals::rms (right));
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
