#include "mixer/Equaliser.h"
#include "mixer/FaderLaws.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <numbers>

namespace
{
using Complex = std::complex<double>;
constexpr double pi = std::numbers::pi;

/** The cookbook's analogue prototypes at a frequency of the digital filter, through the bilinear transform. */
Complex prototype (int band, double gainDb, double frequency, double rate)
{
    constexpr double corners[] { 100.0, 1000.0, 10000.0 };
    const Complex s (0.0, std::tan (pi * frequency / rate) / std::tan (pi * corners[band] / rate));
    const auto a = std::pow (10.0, gainDb / 40.0), q = 1.5, root = std::sqrt (a) / q;
    switch (band)
    {
    case Equaliser::low:
        return a * (s * s + root * s + a) / (a * s * s + root * s + 1.0);
    case Equaliser::mid:
        return (s * s + a / q * s + 1.0) / (s * s + s / (a * q) + 1.0);
    default:
        return a * (a * s * s + root * s + 1.0) / (s * s + root * s + a);
    }
}

Complex measured (const std::vector<float>& impulseResponse, double frequency, double rate)
{
    Complex sum;
    for (size_t n = 0; n < impulseResponse.size(); ++n)
        sum += static_cast<double> (impulseResponse[n])
               * std::polar (1.0, -2.0 * pi * frequency / rate * static_cast<double> (n));
    return sum;
}

struct Stereo
{
    std::vector<float> left, right;
};

Stereo filtered (Equaliser& equaliser, Stereo in, int block = 0)
{
    const auto frames = static_cast<int> (in.left.size());
    for (int done = 0; done < frames;)
    {
        const auto piece = block > 0 ? std::min (block, frames - done) : frames;
        equaliser.process (in.left.data() + done, in.right.data() + done, piece);
        done += piece;
    }
    return in;
}

Stereo noise (int frames)
{
    return { Signals::noise (frames, 1), Signals::noise (frames, 2) };
}
}

TEST (Equaliser, RespondsAsTheCookbooksPrototypes)
{
    const Equaliser::Gains cases[] {
        { 10.0, 0.0, -30.0 }, { -30.0, 10.0, 0.0 }, { 0.0, -30.0, 10.0 },
        { 3.0, -7.5, 1.25 },  { -78.0, 10, -78 },   { 0.0, -78.0, 0.0 },
    };
    for (const double rate : { 44100.0, 96000.0 })
        for (const auto& gains : cases)
        {
            SCOPED_TRACE (testing::Message()
                          << gains[0] << " " << gains[1] << " " << gains[2] << " " << rate);
            Equaliser equaliser;
            equaliser.setGains (gains, rate);
            Stereo impulse { std::vector<float> (32768), std::vector<float> (32768) };
            impulse.left[0] = 1.0f;
            const auto out = filtered (equaliser, impulse, 500);
            for (const double frequency :
                 { 10.0, 50.0, 100.0, 200.0, 700.0, 1000.0, 1500.0, 5000.0, 10000.0, 15000.0, 20000.0 })
            {
                auto expected = Complex (1.0);
                for (int band = 0; band < Equaliser::bandCount; ++band)
                    expected *= prototype (band, gains[static_cast<size_t> (band)], frequency, rate);
                EXPECT_LT (std::abs (measured (out.left, frequency, rate) - expected),
                           1e-3 * std::abs (expected) + 2e-6)
                    << frequency;
            }
            EXPECT_EQ (Signals::peak (out.right), 0.0) << "the sides are apart";
        }
}

TEST (Equaliser, FlatChangesNothingAndBlocksMakeNoDifference)
{
    const auto in = noise (5000);
    Equaliser flat;
    flat.setGains ({}, 44100.0);
    const auto same = filtered (flat, in, 64);
    for (size_t i = 0; i < in.left.size(); ++i)
        ASSERT_NEAR (same.left[i], in.left[i], 1e-7);

    std::vector<Stereo> outs;
    for (const int block : { 1, 64, 5000 })
    {
        Equaliser equaliser;
        equaliser.setGains ({ 10.0, -30.0, 4.0 }, 44100.0);
        outs.push_back (filtered (equaliser, in, block));
        EXPECT_EQ (outs.back().left, outs.front().left) << block;
        EXPECT_EQ (outs.back().right, outs.front().right) << block;
    }
}

TEST (Equaliser, TakesOnlyMovesThatAreWorthIt)
{
    const auto outOf = [] (double then)
    {
        Equaliser equaliser;
        equaliser.setGains ({ 0.0, 5.0, 0.0 }, 44100.0);
        filtered (equaliser, noise (500));
        equaliser.setGains ({ 0.0, then, 0.0 }, 44100.0);
        return filtered (equaliser, noise (500)).left;
    };
    EXPECT_EQ (outOf (5.019), outOf (5.0));
    EXPECT_NE (outOf (5.021), outOf (5.0));
    EXPECT_NE (outOf (4.979), outOf (5.0));
}

TEST (Equaliser, DiesAwayToExactSilenceAndOutlivesBadNumbers)
{
    for (const Equaliser::Gains& gains : { Equaliser::Gains { -30.0, -30.0, -30.0 }, { 10.0, -78.0, 10.0 } })
    {
        Equaliser equaliser;
        equaliser.setGains (gains, 44100.0);
        filtered (equaliser, noise (4096), 128);
        const std::vector<float> nothing (4 * 44100);
        const auto tail = filtered (equaliser, { nothing, nothing }, 128).left;
        EXPECT_GT (Signals::peak ({ tail.data(), 10 }), 0.0);
        EXPECT_EQ (Signals::peak ({ tail.data() + 3 * 44100, 44100 }), 0.0);

        for (const float bad :
             { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity() })
        {
            auto broken = noise (64);
            broken.left[5] = bad;
            filtered (equaliser, broken);
            const auto after = filtered (equaliser, noise (64));
            EXPECT_TRUE (std::isfinite (Signals::rms (after.left)) && Signals::rms (after.right) > 0.0);
        }
    }
}

TEST (Equaliser, ABandThatIsKilledOrComesBackNeitherThumpsNorClicks)
{
    constexpr int half = 11025;
    for (const auto& gains : { Equaliser::Gains { -78.0, 0.0, 0.0 },
                               { 0.0, -78.0, 0.0 },
                               { 0.0, 0.0, -78.0 },
                               { 10.0, 3.0, -30.0 } })
        for (const bool back : { false, true })
            for (double frequency = 20.0; frequency < 15000.0; frequency *= 1.3)
            {
                Equaliser equaliser;
                auto sound = Signals::sine (frequency, 44100.0, 2 * half);
                equaliser.setGains (back ? gains : Equaliser::Gains {}, 44100.0);
                equaliser.process (sound.data(), sound.data(), half);
                equaliser.setGains (back ? Equaliser::Gains {} : gains, 44100.0);
                equaliser.process (sound.data() + half, sound.data() + half, half);
                // The louder of the two steady sounds, and at most 1 dB while one becomes the other.
                const std::span all (sound);
                const auto steady = std::max (Signals::peak (all.subspan (half / 2, half / 2)),
                                              Signals::peak (all.last (half / 2)));
                EXPECT_LT (Signals::peak (all.subspan (half, 1000)), 1.12 * steady)
                    << frequency << ' ' << back;
            }
}

TEST (Equaliser, StaysStableAtEveryRateAndWhileAHandTurns)
{
    for (const double rate : { 8000.0, 11025.0, 16000.0, 20000.0, 22050.0, 48000.0, 192000.0 })
    {
        Equaliser equaliser;
        unsigned state = 7;
        const auto value = [&state] { return (state = state * 1664525u + 1013904223u) / 4294967296.0; };
        double loudest = 0.0;
        for (int block = 0; block < 2000; ++block)
        {
            const auto knob = [&value] { return FaderLaws::bandGainDb (value(), value() < 0.1); };
            equaliser.setGains ({ knob(), knob(), knob() }, rate);
            loudest = std::max (loudest, Signals::peak (filtered (equaliser, noise (64)).left));
        }
        EXPECT_LT (loudest, 30.0) << rate; // three bands of +10 dB would be 32 times the noise of 0.5 at most
        EXPECT_GT (loudest, 0.1) << rate;
    }
}
