#include "fx/BandSplit.h"
#include "Response.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
struct Pairs
{
    std::vector<float> working, side;
};

/** The left channel of what comes out for an impulse, with the bands that a mask names switched on. */
Pairs responseOf (unsigned bands, double rate)
{
    BandSplit split;
    for (int band = 0; band < BandSplit::bandCount; ++band)
        split.setBand (static_cast<BandSplit::Band> (band), (bands >> band & 1) != 0);
    split.setSampleRate (rate);
    Pairs out { Response::impulse (32768), std::vector<float> (32768) };
    std::vector<float> right (32768), sideRight (32768);
    split.process (out.working.data(), right.data(), out.side.data(), sideRight.data(), 32768);
    EXPECT_EQ (Signals::peak (right), 0.0);
    return out;
}

constexpr std::array rates { 8000.0, 44100.0, 192000.0 };
}

TEST (BandSplit, WorkingAndSideTogetherAreFlatForAllButtons)
{
    for (const auto rate : rates)
        for (unsigned bands = 0; bands < 7; ++bands)
        {
            auto [working, side] = responseOf (bands, rate);
            for (size_t i = 0; i < working.size(); ++i)
                working[i] += side[i];
            for (double hertz = 20.0; hertz < std::min (20000.0, 0.49 * rate); hertz *= 1.2)
                ASSERT_NEAR (Response::decibels (std::abs (Response::at (working, hertz, rate))), 0.0, 0.01)
                    << rate << " " << bands << " " << hertz;
        }
}

TEST (BandSplit, EachBandHasTheSlopesOfFourthOrderCrossovers)
{
    for (const auto rate : rates)
        for (double hertz = 30.0; hertz < 0.45 * rate; hertz *= 1.5)
        {
            // A side of the crossover falls as 1 / (1 + ratio^4), the ratio taken where the bilinear transform puts it.
            const auto below = [&] (double corner)
            {
                const auto warped = [&] (double f) { return std::tan (0.5 * Response::turn * f / rate); };
                return 1.0 / (1.0 + std::pow (warped (hertz) / warped (corner), 4.0));
            };
            const std::array wanted { below (300.0), (1.0 - below (300.0)) * below (3000.0),
                                      (1.0 - below (300.0)) * (1.0 - below (3000.0)) };
            for (unsigned band = 0; band < 3; ++band)
            {
                const auto pairs = responseOf (1u << band, rate);
                EXPECT_NEAR (std::abs (Response::at (pairs.working, hertz, rate)), wanted[band], 1e-4)
                    << rate << " " << band << " " << hertz;
            }
        }
}

TEST (BandSplit, WithAllBandsOnTheInputPassesToTheBitAndSwitchesBackWithoutAStep)
{
    BandSplit split;
    std::array<float, 882> left, right, sideLeft, sideRight;
    const auto run = [&]
    {
        const auto in = Signals::sine (50.0, 44100.0, 882);
        std::copy (in.begin(), in.end(), left.begin());
        right = left;
        if (!split.process (left.data(), right.data(), sideLeft.data(), sideRight.data(), 882))
            sideLeft.fill (0.0f);
        return in;
    };
    const auto in = run();
    EXPECT_TRUE (std::equal (in.begin(), in.end(), left.begin()));
    auto last = left.back();
    for (const auto isOn : { false, true, false, true })
    {
        split.setBand (BandSplit::low, isOn);
        for (int block = 0; block < 2; ++block)
        {
            run();
            EXPECT_LT (std::abs (left[0] - last), 0.01);
            EXPECT_LT (Signals::largestStep (left), 0.01);
            last = left.back();
        }
        EXPECT_NEAR (Signals::rms (left), isOn ? 0.35 : 0.0, 0.02);
        EXPECT_NEAR (Signals::rms (sideLeft), isOn ? 0.0 : 0.35, 0.02);
    }
    run();
    EXPECT_TRUE (std::equal (in.begin(), in.end(), left.begin()));
}

TEST (BandSplit, FallsToRestInSilence)
{
    BandSplit split;
    split.setBand (BandSplit::mid, false);
    auto left = Signals::noise (4096, 1), right = Signals::noise (4096, 2);
    std::vector<float> side (4096), sideRight (4096);
    split.process (left.data(), right.data(), side.data(), sideRight.data(), 4096);
    EXPECT_FALSE (split.isAtRest());
    for (int i = 0; i < 8; ++i)
    {
        left.assign (4096, 0.0f);
        right.assign (4096, 0.0f);
        split.process (left.data(), right.data(), side.data(), sideRight.data(), 4096);
    }
    EXPECT_TRUE (split.isAtRest());
    EXPECT_EQ (Signals::peak (left), 0.0);
}
