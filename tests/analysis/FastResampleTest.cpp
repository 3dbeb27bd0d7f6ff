#include "analysis/signal/FastResample.h"

#include "analysis/AnalysisError.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace
{
constexpr double rate = 44100.0;
constexpr int block = 700;

std::unique_ptr<CFastResample> make (int channels, int order = 3)
{
    std::unique_ptr<CFastResample> made;
    EXPECT_EQ (CFastResample::create (made, channels, order, block), AnalysisError::none);
    return made;
}

struct Output
{
    std::vector<float> left, right;
    std::vector<double> positions; ///< of each frame, in input frames, as the caller reckons them
};

/** Two channels in blocks of changing length, each with the ratio that `ratioOf` gives for the frames taken so far. */
Output run (CFastResample& resampler, const std::vector<float>& left, const std::vector<float>& right,
            const std::function<double (size_t)>& ratioOf)
{
    Output all;
    std::vector<float> out[2] = { std::vector<float> (block * 16 + 16),
                                  std::vector<float> (block * 16 + 16) };
    float* const outs[] = { out[0].data(), out[1].data() };
    std::mt19937 random (1);
    double next = 0.0;
    for (size_t taken = 0; taken < left.size();)
    {
        const auto frames = std::min<size_t> (random() % block, left.size() - taken);
        const float* const ins[] = { left.data() + taken, right.data() + taken };
        const auto ratio = ratioOf (taken);
        const auto given = resampler.process (ins, static_cast<int> (frames), outs, ratio);
        all.left.insert (all.left.end(), out[0].begin(), out[0].begin() + given);
        all.right.insert (all.right.end(), out[1].begin(), out[1].begin() + given);
        for (int i = 0; i < given; ++i, next += ratio)
            all.positions.push_back (next);
        taken += frames;
    }
    return all;
}

double decibels (double ratio)
{
    return 20.0 * std::log10 (ratio);
}
}

TEST (FastResample, UnityIsTheInputDelayedBitForBit)
{
    for (int order = CFastResample::leastOrder; order <= CFastResample::greatestOrder; ++order)
    {
        const auto resampler = make (2, order);
        const auto left = Signals::noise (20000, 1), right = Signals::noise (20000, 2);
        const auto out = run (*resampler, left, right, [] (size_t) { return 1.0; });
        ASSERT_EQ (out.left.size(), left.size());
        const auto delay = static_cast<size_t> (resampler->latency());
        for (size_t i = delay; i < left.size(); ++i)
        {
            ASSERT_EQ (out.left[i], left[i - delay]);
            ASSERT_EQ (out.right[i], right[i - delay]);
        }
    }
}

TEST (FastResample, SinesKeepTheirLevelAndBringNothingElse)
{
    for (const auto ratio : { 0.25, 0.5, 0.94, 0.9701, 0.9999, 1.0003, 1.06, 1.4983, 2.0, 3.3, 4.0 })
        for (const auto frequency : { 40.0, 997.0, 5011.0, 10007.0, 15013.0, 18500.0 })
        {
            if (frequency * ratio > 0.45 * rate)
                continue;
            const auto resampler = make (2);
            const auto in = Signals::sine (frequency, rate, 40000);
            const auto out = run (*resampler, in, in, [=] (size_t) { return ratio; });
            const auto settled = std::span (out.left).subspan (200);
            const auto fit = Signals::fitSine (settled, rate, frequency * ratio);
            ASSERT_NEAR (fit.frequency, frequency * ratio, 0.01) << ratio << ' ' << frequency;
            ASSERT_LT (std::abs (decibels (fit.amplitude / 0.5)), 0.01) << ratio << ' ' << frequency;
            ASSERT_LT (decibels (fit.residualRms / Signals::rms (settled)), -80.0)
                << ratio << ' ' << frequency;
        }
}

TEST (FastResample, ChangingRatiosFollowTheirPositionsWithoutAStep)
{
    std::mt19937 random (7);
    const std::function<double (size_t)> courses[] = {
        [] (size_t taken) { return 1.0 + 0.06 * std::sin (static_cast<double> (taken) / 3000.0); },
        [] (size_t taken) { return 0.25 * std::pow (16.0, static_cast<double> (taken) / 60000.0); },
        [&random] (size_t) { return 0.25 + random() % 3751 / 1000.0; },
    };
    for (const auto& course : courses)
        for (const auto frequency : { 500.0, 5000.0, 15000.0 })
        {
            const auto resampler = make (2);
            const auto in = Signals::sine (frequency, rate, 60000, 1.0);
            const auto out = run (*resampler, in, in, course);
            for (size_t i = 0; i < out.left.size(); ++i)
            {
                const auto heard = out.positions[i] - resampler->latency();
                if (heard < resampler->latency())
                    continue;
                const auto ideal = std::sin (2.0 * std::numbers::pi * frequency / rate * heard);
                ASSERT_NEAR (out.left[i], ideal, 2e-4) << frequency << ' ' << i;
                ASSERT_EQ (out.left[i], out.right[i]);
            }
        }
}

TEST (FastResample, FrameCountsAreToldBeforehandOverTenMillionFrames)
{
    const auto resampler = make (1, 1);
    const std::vector<float> in (block);
    std::vector<float> out (block * 17);
    const float* const ins[] = { in.data() };
    float* const outs[] = { out.data() };
    std::mt19937 random (3);
    int64_t taken = 0;
    long double reached = 0.0L;
    const double exact[] = { 1.0, 0.5, 1.0 / 3.0, 0.1, 0.7, 1.06 };
    while (taken < 10'000'000)
    {
        const auto ratio = random() % 2 ? exact[random() % 6] : 0.25 + random() * (3.75 / 4294967296.0);
        const auto frames = static_cast<int> (random() % (block + 1));
        const auto told = resampler->framesProduced (frames, ratio);
        if (told > 0)
        {
            const auto needed = resampler->framesNeeded (told, ratio);
            ASSERT_LE (needed, frames);
            ASSERT_GE (resampler->framesProduced (needed, ratio), told);
            ASSERT_LT (resampler->framesProduced (needed - 1, ratio), told);
        }
        ASSERT_EQ (resampler->process (ins, frames, outs, ratio), told);
        taken += frames;
        reached += told * static_cast<long double> (ratio);
        ASSERT_GT (reached - taken, -1e-6L);
        ASSERT_LT (reached - taken, 4.0L + 1e-6L);
    }
}

TEST (FastResample, WhatItCannotTakeIsRefusedOrLimited)
{
    std::unique_ptr<CFastResample> none;
    EXPECT_EQ (CFastResample::create (none, 0, 3, 64), AnalysisError::badChannelCount);
    for (const auto& [order, largest] : { std::pair (-1, 64), { 0, 64 }, { 5, 64 }, { 3, 0 }, { 3, -5 } })
        EXPECT_EQ (CFastResample::create (none, 1, order, largest), AnalysisError::badArgument);
    EXPECT_EQ (none, nullptr);

    const auto resampler = make (1);
    const auto noise = Signals::noise (block + 1, 4);
    std::vector<float> out (block * 17);
    const float* const ins[] = { noise.data() };
    float* const outs[] = { out.data() };
    EXPECT_EQ (resampler->process (ins, block + 1, outs, 1.0), -1);
    EXPECT_EQ (resampler->process (ins, -1, outs, 1.0), -1);
    EXPECT_EQ (resampler->process (ins, 0, outs, 1.0), 0);
    const auto infinity = std::numeric_limits<double>::infinity();
    for (const auto& [asked, given] :
         { std::pair (std::nan (""), 1.0), { 0.0, 1.0 / 16 }, { -2.0, 1.0 / 16 }, { infinity, 16.0 } })
    {
        resampler->reset();
        EXPECT_EQ (resampler->process (ins, block, outs, asked), std::ceil (block / given)) << asked;
    }
    resampler->reset();
    const auto once = resampler->process (ins, block, outs, 0.77);
    const std::vector<float> first (out.begin(), out.begin() + once);
    resampler->reset();
    ASSERT_EQ (resampler->process (ins, block, outs, 0.77), once);
    EXPECT_TRUE (std::equal (first.begin(), first.end(), out.begin()));
}
