#include "analysis/loudness/Autogain.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace
{
double gainOf (const std::vector<float>& samples, double rate)
{
    LoudnessMeter meter (rate);
    meter.add (samples.data(), samples.data(), static_cast<int> (samples.size()));
    return meter.gainDb().value_or (std::numeric_limits<double>::quiet_NaN());
}

std::vector<float> sineOf (double hertz, double levelDb, double rate)
{
    return Signals::sine (hertz, rate, static_cast<int> (rate * 2.0), std::pow (10.0, levelDb / 20.0));
}

/** The root-mean-square level in dB of a sine in 16-bit steps. */
double sineDb (double levelDb)
{
    return levelDb + 20.0 * std::log10 (32767.0 / std::numbers::sqrt2);
}

/** Equal power in each octave from 200 to 3600 Hz: all of the rates carry it. */
std::vector<float> pinkBand (double rate)
{
    std::mt19937 random (1);
    std::uniform_real_distribution<double> phase (0.0, 2.0 * std::numbers::pi);
    std::vector<float> samples (static_cast<size_t> (rate * 3.0));
    for (double hertz = 200.0; hertz < 3600.0; hertz *= 1.061)
        for (double i = 0.0, start = phase (random); auto& sample : samples)
            sample +=
                0.02f * static_cast<float> (std::sin (start + 2.0 * std::numbers::pi * hertz * i++ / rate));
    return samples;
}
}

TEST (Loudness, FollowsTheEqualLoudnessCurve)
{
    struct Row
    {
        double hertz, curveDb, toleranceDb;
    };
    // The 80 dB curve turned upside down, 0 at its most sensitive frequency. Below 1 kHz the published fit is a coarse one
    // whose middle is the curve's; at 150 Hz and below the high-pass's 3 dB and 12 dB per octave are on top of it.
    constexpr Row rows[] = { { 400.0, -6.8, 1.3 },   { 1000.0, -10.0, 1.8 }, { 1500.0, -9.0, 1.1 },
                             { 2000.0, -7.0, 1.2 },  { 2500.0, -4.0, 0.6 },  { 3000.0, -1.5, 0.3 },
                             { 3700.0, 0.0, 0.8 },   { 5000.0, -4.0, 0.2 },  { 6000.0, -9.0, 0.7 },
                             { 8000.0, -16.0, 0.5 }, { 10000.0, -15.0, 1.0 } };
    for (const auto rate : { 32000.0, 44100.0, 48000.0, 88200.0, 96000.0, 192000.0, 384000.0 })
    {
        for (const auto& row : rows)
            EXPECT_NEAR (64.82 - gainOf (sineOf (row.hertz, -14.0, rate), rate) - sineDb (-14.0), row.curveDb,
                         row.toleranceDb)
                << rate << " " << row.hertz;
        const auto middle = gainOf (sineOf (600.0, -14.0, rate), rate);
        EXPECT_NEAR (gainOf (sineOf (150.0, -14.0, rate), rate) - middle, 3.0 - 0.2, 0.4) << rate;
        EXPECT_NEAR (gainOf (sineOf (40.0, 0.0, rate), rate) - middle, 23.0 - 14.0 - 0.2, 0.6) << rate;
    }
}

TEST (Loudness, IsLinearInDecibelsDownToTheLimit)
{
    const auto full = gainOf (sineOf (1000.0, 0.0, 48000.0), 48000.0);
    for (const auto levelDb : { -3.0, -10.0, -20.0, -35.0 })
        EXPECT_NEAR (gainOf (sineOf (1000.0, levelDb, 48000.0), 48000.0), full - levelDb, 0.015) << levelDb;
    EXPECT_EQ (gainOf (sineOf (1000.0, -60.0, 48000.0), 48000.0), 24.0);
    EXPECT_EQ (gainOf (sineOf (3700.0, 24.0, 48000.0), 48000.0), -24.0);
}

TEST (Loudness, RatesAgreeOnTheSameSound)
{
    const auto reference = gainOf (pinkBand (44100.0), 44100.0);
    for (const auto rate : { 8000.0, 11025.0, 12000.0, 16000.0, 22050.0, 24000.0, 32000.0, 48000.0, 96000.0 })
        EXPECT_NEAR (gainOf (pinkBand (rate), rate), reference, 0.5) << rate;
}

TEST (Loudness, LoudestTwentiethOfATrackDecides)
{
    for (const auto& [loudPart, decides] : { std::pair { 0.03, false }, { 0.08, true }, { 0.5, true } })
    {
        auto samples = Signals::sine (1000.0, 48000.0, 48000 * 10, 0.02);
        const auto loud = Signals::sine (1000.0, 48000.0, static_cast<int> (480000 * loudPart), 0.2);
        const auto quietGain = gainOf (samples, 48000.0), loudGain = gainOf (loud, 48000.0);
        std::ranges::copy (loud, samples.begin() + 48000);
        EXPECT_NEAR (gainOf (samples, 48000.0), decides ? loudGain : quietGain, 0.02) << loudPart;
    }
}

TEST (Loudness, SamplesOf16BitsAndPiecesOfAnyLengthGiveTheSame)
{
    const auto source = Signals::noise (100000, 3);
    std::vector<int16_t> shorts (source.size());
    std::ranges::transform (source, shorts.begin(),
                            [] (float x) { return static_cast<int16_t> (std::lround (x * 32767.0f)); });
    for (const auto rate : { 44100.0, 88200.0 })
    {
        LoudnessMeter pieces (rate), whole (rate);
        whole.add (shorts.data(), shorts.data(), 100000);
        for (int done = 0, count = 1; done < 100000; done += count, count = count * 7 % 5003)
            pieces.add (shorts.data() + done, shorts.data() + done, std::min (count, 100000 - done));
        EXPECT_EQ (pieces.gainDb(), whole.gainDb());
        EXPECT_NEAR (whole.gainDb().value(), gainOf (source, rate), 0.02);
    }
}

TEST (Loudness, OneChannelCountsHalf)
{
    const auto sine = sineOf (1000.0, -10.0, 44100.0);
    const std::vector<float> silence (sine.size());
    for (const auto leftIsSilent : { false, true })
    {
        LoudnessMeter meter (44100.0);
        const auto* left = leftIsSilent ? silence.data() : sine.data();
        meter.add (left, leftIsSilent ? sine.data() : silence.data(), static_cast<int> (sine.size()));
        EXPECT_NEAR (meter.gainDb().value() - gainOf (sine, 44100.0), 3.01, 0.02);
    }
}

TEST (Loudness, NothingIsSaidOfWhatCannotBeMeasured)
{
    const auto tone = sineOf (1000.0, -6.0, 48000.0);
    EXPECT_TRUE (std::isnan (gainOf (std::vector<float> (48000), 48000.0))) << "silence";
    EXPECT_TRUE (std::isnan (gainOf (std::vector<float> (tone.begin(), tone.begin() + 2399), 48000.0)))
        << "too short";
    EXPECT_FALSE (std::isnan (gainOf (std::vector<float> (tone.begin(), tone.begin() + 2400), 48000.0)));
    for (const auto rate : { 0.0, -44100.0, 50000.0, 768000.0, std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity() })
        EXPECT_TRUE (std::isnan (gainOf (tone, rate))) << rate;

    // NaN and infinity spoil no more than their own windows.
    auto spoiled = tone;
    spoiled[100] = std::numeric_limits<float>::quiet_NaN();
    spoiled[200] = std::numeric_limits<float>::infinity();
    EXPECT_NEAR (gainOf (spoiled, 48000.0), gainOf (tone, 48000.0), 0.1);
}

TEST (Autogain, IsTheGainRaisedBySixDecibelsAndStopsWhenCancelled)
{
    EXPECT_NEAR (Autogain::factorFor (-6.0), 1.0, 1e-12);
    EXPECT_NEAR (Autogain::factorFor (14.0), 10.0, 1e-12);
    EXPECT_EQ (Autogain::factorFor (30.0), Autogain::factorFor (24.0));

    Pacing pacing (Pacing::Mode::offline);
    Relaxed<int32_t> cancel { 0 };
    const auto tone = sineOf (1000.0, -6.0, 44100.0);
    const auto measure = [&]
    {
        return Autogain::measure (tone.data(), tone.data(), static_cast<int> (tone.size()), 44100.0, pacing,
                                  cancel);
    };
    EXPECT_DOUBLE_EQ (measure().value(), Autogain::factorFor (gainOf (tone, 44100.0)));
    cancel = 1;
    EXPECT_FALSE (measure().has_value());
}
