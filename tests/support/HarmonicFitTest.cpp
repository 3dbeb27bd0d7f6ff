#include "support/music/HarmonicFit.h"

#include <gtest/gtest.h>

TEST (Fit, TemposMeetByTheSmallestChangeWithHalfAndDouble)
{
    struct Case
    {
        double bpm, other, change;
        int octave;
    };
    for (const auto& [bpm, other, change, octave] :
         { Case { 120, 120, 0.0, 0 }, Case { 126, 120, 0.05, 0 }, Case { 120, 61, -1.0 / 61, -1 },
           Case { 87, 172, 1.0 / 86, 1 }, Case { 100, 140, -2.0 / 7, 0 } })
    {
        const auto relation = Fit::tempoRelation (bpm, other);
        EXPECT_TRUE (relation.isKnown);
        EXPECT_NEAR (relation.change, change, 1e-9) << bpm << " and " << other;
        EXPECT_EQ (relation.octave, octave) << bpm << " and " << other;
    }
    EXPECT_FALSE (Fit::tempoRelation (0.0, 120.0).isKnown);
    EXPECT_EQ (Fit::tempoDistance (120.0, 0.0), 1.0);
    EXPECT_NEAR (Fit::tempoDistance (120.0, 60.0), 0.0, 1e-9);
}

TEST (Fit, KeysAreCountedRoundTheCircle)
{
    constexpr int c = 0, d = 2, e = 4, fSharp = 6, g = 7, f = 5, aMinor = 21, eMinor = 16;
    EXPECT_EQ (Fit::fifthsBetween (c, g), 1);
    EXPECT_EQ (Fit::fifthsBetween (c, f), -1);
    EXPECT_EQ (Fit::fifthsBetween (c, d), 2);
    EXPECT_EQ (Fit::fifthsBetween (d, e), 2);
    EXPECT_EQ (std::abs (Fit::fifthsBetween (c, fSharp)), 6);
    EXPECT_EQ (Fit::fifthsBetween (c, aMinor), 0);
    EXPECT_EQ (Fit::fifthsBetween (g, eMinor), 0);
    for (int key = 0; key < 24; ++key)
        for (int other = 0; other < 24; ++other)
        {
            EXPECT_EQ (Fit::keyDistance (key, other), Fit::keyDistance (other, key));
            EXPECT_EQ (Fit::keyDistance (key, other) == 0.0, key == other);
        }
    EXPECT_LT (Fit::keyDistance (c, aMinor), Fit::keyDistance (c, g));
    EXPECT_LT (Fit::keyDistance (c, g), Fit::keyDistance (c, d));
    EXPECT_EQ (Fit::keyDistance (-1, c), 0.5);
}
