// The sound: levels, frequencies, onsets, the stereo image.

#include "StretcherDriver.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
using Channels = StretcherDriver::Channels;

std::span<const float> part (const std::vector<float>& x, int from, int count)
{
    return std::span (x).subspan (static_cast<size_t> (from), static_cast<size_t> (count));
}

double decibels (double ratio)
{
    return 20.0 * std::log10 (std::max (ratio, 1e-12));
}

double differenceDb (std::span<const float> a, std::span<const float> b)
{
    std::vector<float> difference (a.size());
    std::transform (a.begin(), a.end(), b.begin(), difference.begin(), std::minus<> {});
    return decibels (Signals::rms (difference) / Signals::rms (b));
}
}

TEST (StretchedSound, UnityIsTheInputDelayedByLatency)
{
    const Channels noise { Signals::noise (60'000, 1), Signals::noise (60'000, 2) };
    for (const int channels : { 1, 2, 5 })
    {
        StretcherDriver driver (channels);
        driver.render (noise, 40'000);
        const auto latency = static_cast<int> (driver->getLatency());
        for (size_t c = 0; c < std::min<size_t> (2, driver.out.size()); ++c)
            EXPECT_LT (differenceDb (part (driver.out[c], latency, 39'000), part (noise[c], 0, 39'000)),
                       -100.0);
    }
}

TEST (StretchedSound, UnityComesBackAfterTempoAndResetForgets)
{
    const auto tone = Signals::sine (441.3, 44100.0, 1 << 20);
    StretcherDriver driver;
    driver.set (1.06, 1.0);
    driver.render ({ tone, tone }, 60'000);
    driver.set (1.0, 1.0);
    driver.render ({ tone, tone }, 60'000 + 44'100 * 12);
    const auto end = static_cast<int> (driver.out[0].size()) - 10'000;
    const auto heard = driver->getInputPositionOfOutput() - 10'000.0;
    EXPECT_NEAR (heard, std::round (heard), 1e-6);
    EXPECT_LT (differenceDb (part (driver.out[0], end, 8000), part (tone, static_cast<int> (heard), 8000)),
               -90.0);

    driver->reset();
    driver.out = { {}, {} };
    driver.taken = 0;
    driver.render ({ tone, tone }, 20'000);
    EXPECT_LT (differenceDb (part (driver.out[0], 0, 20'000), part (tone, 0, 20'000)), -100.0);
}

TEST (StretchedSound, SinesKeepFrequencyLevelAndPurity)
{
    for (const auto& [stretch, pitch] : { std::pair { 1.06, 1.0 },
                                          { 0.94, 1.0 },
                                          { 1.0 / 1.04, 1.0 },
                                          { 0.67, 1.0 },
                                          { 1.5, 1.0 },
                                          { 2.0, 1.0 },
                                          { 3.0, 1.0 },
                                          { 1.06, 1.0 / 1.06 },
                                          { 1.0, 1.0595 },
                                          { 1.0, 0.8909 },
                                          { 0.96, 1.2599 },
                                          { 2.0, 0.5 },
                                          { 0.5, 2.0 },
                                          { 0.3, 0.7 } })
    {
        for (const double frequency : { 55.0, 439.7, 6'011.0 })
        {
            StretcherDriver driver (1);
            driver.set (stretch, pitch);
            const auto factor = static_cast<double> (static_cast<float> (pitch));
            driver.render ({ Signals::sine (frequency, 44100.0, 250'000) }, 70'000);
            const auto fit =
                Signals::fitSine (part (driver.out[0], 20'000, 50'000), 44100.0, frequency * factor);
            SCOPED_TRACE (testing::Message() << stretch << ' ' << pitch << ' ' << frequency);
            EXPECT_NEAR (1200.0 * std::log2 (fit.frequency / (frequency * factor)), 0.0, 0.1);
            EXPECT_NEAR (decibels (fit.amplitude / 0.5), 0.0, 0.2);
            EXPECT_LT (decibels (fit.residualRms / fit.amplitude), frequency < 100.0 ? -35.0 : -50.0);
        }
    }
}

TEST (StretchedSound, NoiseKeepsItsLevel)
{
    const Channels noise { Signals::noise (300'000, 1), Signals::noise (300'000, 2) };
    for (const auto stretch : { 0.94, 1.06, 1.5 })
    {
        StretcherDriver driver;
        driver.set (stretch, 1.0);
        driver.render (noise, 250'000);
        const auto level = [] (std::span<const float> left, std::span<const float> right)
        { return std::hypot (Signals::rms (left), Signals::rms (right)); };
        const auto heard =
            level (part (driver.out[0], 120'000, 120'000), part (driver.out[1], 120'000, 120'000));
        EXPECT_NEAR (decibels (heard / level (noise[0], noise[1])), 0.0, 0.2) << stretch;
    }
}

TEST (StretchedSound, ClicksStayWholeSingleAndInTime)
{
    // A second tone goes on through them, which must not be chopped for their sake.
    for (const double withTone : { 0.0, 0.2 })
    {
        for (const double stretch : { 1.0 / 1.06, 1.0 / 0.94, 1.04 })
        {
            auto in = Signals::sine (330.0, 44100.0, 220'000, withTone);
            std::vector<int> at;
            for (int click = 20'000; click < 200'000; click += 9'973)
            {
                at.push_back (click);
                in[static_cast<size_t> (click)] += 0.6f;
                in[static_cast<size_t> (click + 1)] += 0.6f;
            }
            StretcherDriver driver (1);
            driver.set (stretch, 1.0);
            driver.render ({ in }, static_cast<int> (200'000 * stretch));
            const auto& out = driver.out[0];
            SCOPED_TRACE (testing::Message() << stretch << ' ' << withTone);

            for (const auto click : at)
            {
                const auto due = static_cast<int> (std::lround (click * stretch));
                if (due + 4'000 > static_cast<int> (out.size()))
                    break;
                // A tone has no second difference to speak of, a click has.
                auto energy = [&] (int from, int to)
                {
                    auto sum = 0.0;
                    for (auto i = static_cast<size_t> (due + from); i < static_cast<size_t> (due + to); ++i)
                    {
                        const auto sharp = out[i] - 0.5 * (out[i - 1] + out[i + 1]);
                        sum += sharp * sharp;
                    }
                    return sum;
                };
                const auto all = energy (-4'000, 4'000), whole = 0.36;
                EXPECT_GT (energy (-16, 16), 0.9 * all) << click; // single, within 0.4 ms of its time
                EXPECT_NEAR (10.0 * std::log10 (all / whole), 0.0, withTone > 0.0 ? 1.0 : 0.1)
                    << click; // none lost
                EXPECT_LT (10.0 * std::log10 (energy (-4'000, -40) / all), withTone > 0.0 ? -20.0 : -50.0)
                    << click;
            }
        }
    }
}

TEST (StretchedSound, TheStereoImageStays)
{
    const auto common = Signals::noise (120'000, 1), own = Signals::noise (120'000, 2),
               tone = Signals::sine (500.0, 44100.0, 120'000);
    Channels wide { common, common };
    for (size_t i = 0; i < own.size(); ++i)
        wide[1][i] = 0.8f * common[i] + 0.6f * own[i];
    for (const int mode : { 0, 1 })
    {
        StretcherDriver mono, oneSided, spread;
        for (auto* driver : { &mono, &oneSided, &spread })
        {
            EXPECT_EQ ((*driver)->setStereoMode (mode), 0);
            driver->set (1.06, 1.0);
        }
        mono.render ({ common, common }, 100'000);
        EXPECT_LT (differenceDb (mono.out[0], mono.out[1]), -110.0);

        // From the middle to the left: what turned as middle and side must not come out on the right.
        auto left = tone, right = tone;
        std::fill (right.begin() + 60'000, right.end(), 0.0f);
        oneSided.render ({ left, right }, 100'000);
        EXPECT_LT (decibels (Signals::rms (part (oneSided.out[1], 75'000, 20'000)) / 0.35), -100.0);

        spread.render (wide, 100'000);
        EXPECT_NEAR (
            Signals::correlation (part (spread.out[0], 20'000, 70'000), part (spread.out[1], 20'000, 70'000)),
            Signals::correlation (wide[0], wide[1]), 0.02);
    }
}

TEST (StretchedSound, SweptFactorsMakeNoStep)
{
    const auto tone = Signals::sine (200.0, 44100.0, 4'200'000, 0.5);
    StretcherDriver driver;
    const auto frames = 44'100 * 60;
    driver.render ({ tone, tone }, frames,
                   [&] (int made)
                   {
                       const auto t = made / 44100.0;
                       driver.set (1.0 / (1.0 + 0.3 * std::sin (0.7 * t)),
                                   t < 20.0 ? 1.0 : std::exp2 (std::sin (1.3 * t) / 4.0));
                   });
    // The steepest that a sine of this level gets, at the highest pitch; a step would stand out of it.
    const auto steepest = 0.5 * 2.0 * std::numbers::pi * 200.0 * std::exp2 (0.25) / 44100.0;
    EXPECT_LT (Signals::largestStep (driver.out[0]), 1.25 * steepest);
    for (int from = 5'000; from + 2'205 < frames; from += 2'205)
        ASSERT_NEAR (decibels (Signals::rms (part (driver.out[0], from, 2'205)) / 0.35355), 0.0, 1.0)
            << from / 44100.0;
}
