#include "mixer/FaderLaws.h"

#include <gtest/gtest.h>

#include <cmath>

TEST (FaderLaws, CrossfaderFollowsItsLaws)
{
    struct Case
    {
        FaderLaws::Crossfader fader; ///< position, curve, smooth, reverse
        double left, right;
    };
    const Case cases[] {
        { { 0.0, 0.5, false, false }, 1.0, 0.0 },     { { 0.25, 0.5, false, false }, 1.0, 0.5 },
        { { 0.5, 0.0, false, false }, 1.0, 1.0 },     { { 0.9, 1.0, false, false }, 0.2, 1.0 },
        { { 0.9, 1.0, false, true }, 1.0, 0.2 },      { { 0.0, 0.5, false, true }, 0.0, 1.0 },
        { { 0.5, 0.5, true, false }, 0.777, 0.777 }, // the dip belongs to the curve
        { { 1.0, 0.5, true, false }, 0.0, 0.9839 },   { { 1.0, 0.5, true, true }, 0.9839, 0.0 },
        { { 0.25, 0.0, true, false }, 1.0, 1.0 }, // beyond the fraction's reach
        { { 0.002, 0.0, true, false }, 1.0, 0.9841 }, { { 0.5, 1.0, true, false }, 0.4654, 0.4654 },
    };
    for (const auto& [fader, left, right] : cases)
    {
        EXPECT_NEAR (FaderLaws::crossfaderGain (fader, 0), left, 5e-4) << fader.position;
        EXPECT_NEAR (FaderLaws::crossfaderGain (fader, 1), right, 5e-4) << fader.position;
    }
}

TEST (FaderLaws, EveryLawIsAllTheLouderTheFurtherItsFaderIsOpen)
{
    EXPECT_EQ (FaderLaws::faderGain (0.0), 0.0);
    EXPECT_EQ (FaderLaws::faderGain (1.0), 1.0);
    EXPECT_NEAR (FaderLaws::faderGain (0.5), 0.1 * (std::sqrt (11.0) - 1.0), 1e-12);
    EXPECT_EQ (FaderLaws::bandGainDb (0.0, false), -30.0);
    EXPECT_EQ (FaderLaws::bandGainDb (0.5, false), 0.0);
    EXPECT_EQ (FaderLaws::bandGainDb (1.0, false), 10.0);
    EXPECT_EQ (FaderLaws::bandGainDb (1.0, true), -78.0);
    for (double at = 0.0; at < 0.999; at += 0.01)
    {
        EXPECT_LT (FaderLaws::faderGain (at), FaderLaws::faderGain (at + 0.01));
        EXPECT_LT (FaderLaws::bandGainDb (at, false), FaderLaws::bandGainDb (at + 0.01, false));
        for (const bool smooth : { false, true })
            for (const double curve : { 0.0, 0.3, 1.0 })
                EXPECT_LE (FaderLaws::crossfaderGain ({ at, curve, smooth }, 1),
                           FaderLaws::crossfaderGain ({ at + 0.01, curve, smooth }, 1));
    }
}
