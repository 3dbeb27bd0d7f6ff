#include "analysis/signal/Resample.h"
#include "analysis/AnalysisError.h"
#include "analysis/signal/FastResample.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
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

/** Either resampler of floats, seen alike. */
class Subject
{
public:
    static Subject fast (int order = 3)
    {
        Subject made;
        EXPECT_EQ (CFastResample::create (made.fastOne, 2, order, block), AnalysisError::none);
        return made;
    }

    static Subject sinc()
    {
        Subject made;
        EXPECT_EQ (CResampleFloat::create (made.sincOne, 2, block), AnalysisError::none);
        return made;
    }

    /** @returns the highest frequency that must pass unharmed, in Hz */
    double passes (double ratio) const
    {
        if (fastOne)
            return std::min (0.42, 0.45 / ratio) * rate;
        return (ratio <= 1.0 ? 0.45 : 0.5 / ratio - std::max (0.05 / ratio, 0.026)) * rate;
    }

    int process (const float* const* in, int frames, float* const* out, double ratio)
    {
        return fastOne ? fastOne->process (in, frames, out, ratio)
                       : sincOne->process (in, out, frames, ratio);
    }

    int framesProduced (int frames, double ratio) const
    {
        return fastOne ? fastOne->framesProduced (frames, ratio) : sincOne->framesProduced (frames, ratio);
    }

    int framesNeeded (int frames, double ratio) const
    {
        return fastOne ? fastOne->framesNeeded (frames, ratio) : sincOne->framesNeeded (frames, ratio);
    }

    int latency() const { return fastOne ? fastOne->latency() : sincOne->latency(); }
    void reset() { fastOne ? fastOne->reset() : sincOne->reset(); }
    const char* name() const { return fastOne ? "fast" : "sinc"; }

private:
    std::unique_ptr<CFastResample> fastOne;
    std::unique_ptr<CResampleFloat> sincOne;
};

std::vector<Subject> both()
{
    std::vector<Subject> made;
    made.push_back (Subject::fast());
    made.push_back (Subject::sinc());
    return made;
}

struct Output
{
    std::vector<float> left, right;
    std::vector<double> positions; ///< of each frame, in input frames, as the caller reckons them
};

/** Two channels in blocks of changing length, each with the ratio that `ratioOf` gives for the frames taken so far. */
Output run (Subject& resampler, const std::vector<float>& left, const std::vector<float>& right,
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

TEST (Resample, UnityIsTheInputDelayedBitForBit)
{
    auto subjects = both();
    for (int order = CFastResample::leastOrder; order <= CFastResample::greatestOrder; ++order)
        subjects.push_back (Subject::fast (order));
    for (auto& resampler : subjects)
    {
        const auto left = Signals::noise (5000, 1), right = Signals::noise (5000, 2);
        const auto out = run (resampler, left, right, [] (size_t) { return 1.0; });
        ASSERT_EQ (out.left.size(), left.size());
        const auto delay = resampler.latency();
        EXPECT_TRUE (std::equal (out.left.begin() + delay, out.left.end(), left.begin()));
        EXPECT_TRUE (std::equal (out.right.begin() + delay, out.right.end(), right.begin()));
    }
}

TEST (Resample, SinesInThePassBandKeepTheirLevelAndBringNothingElse)
{
    for (const auto ratio : { 0.25, 0.5, 0.94, 0.9701, 0.9999, 1.0003, 1.06, 1.4983, 2.0, 3.3, 8.0 })
        for (auto& resampler : both())
            for (const auto part : { 0.002, 0.05, 0.23, 0.4, 0.61, 0.86, 1.0 })
            {
                const auto frequency = part * resampler.passes (ratio);
                resampler.reset();
                const auto in = Signals::sine (frequency, rate, 24000);
                const auto out = run (resampler, in, in, [=] (size_t) { return ratio; });
                const auto settled = std::span (out.left).subspan (static_cast<size_t> (130 / ratio));
                const auto fit = Signals::fitSine (settled, rate, frequency * ratio);
                SCOPED_TRACE (testing::Message() << resampler.name() << ' ' << ratio << ' ' << frequency);
                ASSERT_NEAR (fit.frequency, frequency * ratio, 0.02);
                ASSERT_LT (std::abs (decibels (fit.amplitude / 0.5)), 0.01);
                ASSERT_LT (decibels (fit.residualRms / Signals::rms (settled)),
                           resampler.name()[0] == 'f' ? -80.0 : -95.0);
            }
}

TEST (Resample, WhatWouldFoldIsTakenOutBeforeItDoes)
{
    for (const auto ratio : { 1.3, 1.97, 2.5, 4.0, 8.0 })
        for (const auto part : { 0.0, 0.1, 0.5, 0.97 })
        {
            auto resampler = Subject::sinc();
            const auto least = 0.5 / ratio + std::max (0.05 / ratio, 0.026);
            const auto in = Signals::sine ((least + part * (0.5 - least)) * rate, rate, 20000);
            const auto out = run (resampler, in, in, [=] (size_t) { return ratio; });
            const auto settled = std::span (out.left).subspan (130);
            ASSERT_LT (decibels (Signals::rms (settled) / 0.35), -95.0) << ratio << ' ' << part;
        }
}

TEST (Resample, ChangingRatiosFollowTheirPositionsWithoutAStep)
{
    std::mt19937 random (7);
    const std::function<double (size_t)> courses[] = {
        [] (size_t taken) { return 1.0 + 0.06 * std::sin (static_cast<double> (taken) / 3000.0); },
        [] (size_t taken) { return 0.25 * std::pow (16.0, static_cast<double> (taken) / 60000.0); },
        [&random] (size_t) { return 0.25 + random() % 3751 / 1000.0; },
    };
    for (const auto& course : courses)
        for (const auto frequency : { 500.0, 4000.0, 15000.0 })
            for (auto& resampler : both())
            {
                // The one moves its cut-off with the ratio, and so would take 15 kHz out at the upper end.
                if (frequency > 4000.0 && resampler.name()[0] != 'f')
                    continue;
                const auto in = Signals::sine (frequency, rate, 60000, 1.0);
                const auto out = run (resampler, in, in, course);
                for (size_t i = 0; i < out.left.size(); ++i)
                {
                    const auto heard = out.positions[i] - resampler.latency();
                    if (heard < resampler.latency())
                        continue;
                    const auto ideal = std::sin (2.0 * std::numbers::pi * frequency / rate * heard);
                    ASSERT_NEAR (out.left[i], ideal, 2e-4) << resampler.name() << frequency << ' ' << i;
                    ASSERT_EQ (out.left[i], out.right[i]);
                }
            }
}

TEST (Resample, FrameCountsAreToldBeforehandOverTenMillionFrames)
{
    auto resampler = Subject::fast (1);
    const std::vector<float> in (block);
    std::vector<float> out (block * 17);
    const float* const ins[] = { in.data(), in.data() };
    float* const outs[] = { out.data(), out.data() };
    std::mt19937 random (3);
    int64_t taken = 0;
    long double reached = 0.0L;
    const double exact[] = { 1.0, 0.5, 1.0 / 3.0, 0.1, 0.7, 1.06 };
    while (taken < 10'000'000)
    {
        const auto ratio = random() % 2 ? exact[random() % 6] : 0.25 + random() * (3.75 / 4294967296.0);
        const auto frames = static_cast<int> (random() % (block + 1));
        const auto told = resampler.framesProduced (frames, ratio);
        if (told > 0)
        {
            const auto needed = resampler.framesNeeded (told, ratio);
            ASSERT_LE (needed, frames);
            ASSERT_GE (resampler.framesProduced (needed, ratio), told);
            ASSERT_LT (resampler.framesProduced (needed - 1, ratio), told);
        }
        ASSERT_EQ (resampler.process (ins, frames, outs, ratio), told);
        taken += frames;
        reached += told * static_cast<long double> (ratio);
        ASSERT_GT (reached - taken, -1e-6L);
        ASSERT_LT (reached - taken, 4.0L + 1e-6L);
    }
}

TEST (Resample, WhatItCannotTakeIsRefusedOrLimited)
{
    std::unique_ptr<CFastResample> noFast;
    std::unique_ptr<CResampleInt> noInt;
    EXPECT_EQ (CFastResample::create (noFast, 0, 3, 64), AnalysisError::badChannelCount);
    for (const auto& [order, largest] : { std::pair (-1, 64), { 0, 64 }, { 5, 64 }, { 3, 0 }, { 3, -5 } })
        EXPECT_EQ (CFastResample::create (noFast, 1, order, largest), AnalysisError::badArgument);
    EXPECT_EQ (CResampleInt::create (noInt, 0, 64), AnalysisError::badChannelCount);
    EXPECT_EQ (CResampleInt::create (noInt, 1, 0), AnalysisError::badArgument);
    EXPECT_TRUE (noFast == nullptr && noInt == nullptr);

    const auto noise = Signals::noise (block + 1, 4);
    std::vector<float> out (block * 17), other (block * 17);
    const float* const ins[] = { noise.data(), noise.data() };
    float* const outs[] = { out.data(), other.data() };
    for (auto& resampler : both())
    {
        EXPECT_EQ (resampler.process (ins, block + 1, outs, 1.0), -1);
        EXPECT_EQ (resampler.process (ins, -1, outs, 1.0), -1);
        EXPECT_EQ (resampler.process (ins, 0, outs, 1.0), 0);
        const auto infinity = std::numeric_limits<double>::infinity();
        for (const auto& [asked, given] :
             { std::pair (std::nan (""), 1.0), { 0.0, 1.0 / 16 }, { -2.0, 1.0 / 16 }, { infinity, 16.0 } })
        {
            resampler.reset();
            EXPECT_EQ (resampler.process (ins, block, outs, asked), std::ceil (block / given)) << asked;
        }
        resampler.reset();
        const auto once = resampler.process (ins, block, outs, 0.77);
        const auto first = out;
        resampler.reset();
        EXPECT_EQ (resampler.process (ins, block, outs, 0.77), once);
        EXPECT_EQ (first, out);
    }
}

TEST (Resample, SixteenBitSamplesAreTheFloatsRoundedAndLimited)
{
    std::unique_ptr<CResampleInt> whole;
    std::unique_ptr<CResampleFloat> floats;
    ASSERT_EQ (CResampleInt::create (whole, 1, block), AnalysisError::none);
    ASSERT_EQ (CResampleFloat::create (floats, 1, block), AnalysisError::none);
    std::mt19937 random (5);
    std::vector<int16_t> in (block), out (block * 5);
    std::vector<float> floatIn (block), floatOut (block * 5);
    for (const auto ratio : { 1.0, 0.3, 0.97, 1.4, 4.0 })
    {
        // The extremes alone: between them the kernel overshoots both.
        for (size_t i = 0; i < in.size(); ++i)
            floatIn[i] = in[i] = random() % 2 ? 32767 : -32768;
        const int16_t* const ins[] = { in.data() };
        const float* const floatIns[] = { floatIn.data() };
        int16_t* const outs[] = { out.data() };
        float* const floatOuts[] = { floatOut.data() };
        const auto given = whole->process (ins, outs, block, ratio);
        ASSERT_EQ (floats->process (floatIns, floatOuts, block, ratio), given);
        for (size_t i = 0; i < static_cast<size_t> (given); ++i)
            ASSERT_NEAR (out[i], std::clamp (floatOut[i], -32768.0f, 32767.0f), 0.5) << ratio << ' ' << i;
    }
}
