#include "Curves.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using enum SegmentShape;

TEST (Envelope, ReadsZeroPastItsEndAndWithoutPoints)
{
    auto envelope = Curves::of ({ Curves::point (0.0, 1.0f, hold), Curves::point (4.0, 1.0f, hold) });
    EXPECT_EQ (envelope.evaluate (4.0), 1.0);
    for (const auto time : { std::nextafter (4.0, 5.0), 1e300, std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN() })
        EXPECT_EQ (envelope.evaluate (time), 0.0) << time;
    envelope.setPointCount (1);
    EXPECT_EQ (envelope.evaluate (0.0), 0.0);
    envelope.setPointCount (0);
    EXPECT_EQ (envelope.evaluate (0.0), 0.0);
}

TEST (Envelope, TheStepOfAHoldFallsJustAfterItsEnd)
{
    const auto envelope = Curves::of ({ Curves::point (0.0, 0.25f, hold), Curves::point (2.0, 0.75f, hold),
                                        Curves::point (2.0, 1.0f, hold) });
    EXPECT_EQ (envelope.evaluate (2.0), 0.25);
    EXPECT_EQ (envelope.evaluate (std::nextafter (2.0, 3.0)), 0.75);
}

TEST (Envelope, ACursorChangesNoBit)
{
    for (unsigned seed = 0; seed < 40; ++seed)
    {
        const auto envelope = Curves::random (seed, 1 + static_cast<int> (seed));
        std::mt19937 engine (seed);
        std::uniform_real_distribution<double> anywhere (-0.5, 4.5);
        EnvelopeCursor cursor { seed % 3 == 0 ? 99u : 0u };
        for (int i = 0; i < 4000; ++i)
        {
            const auto time = i % 1000 < 900 ? i / 1000.0
                              : i % 7 == 0   ? envelope.absoluteTime (i % 30)
                                             : anywhere (engine);
            ASSERT_EQ (envelope.evaluate (time, cursor), envelope.evaluate (time)) << seed << " at " << time;
        }
    }
}

TEST (Envelope, EditsKeepTimesAndMoveMarkers)
{
    auto envelope = Curves::random (1, 10);
    envelope.markerDecay = 3;
    envelope.markerLoopStart = 0;
    envelope.markerSustain = 7;
    const auto time = envelope.absoluteTime (8);

    auto added = Curves::point (0.1, 0.5f, smooth);
    envelope.insertPoint (4, added);
    EXPECT_EQ (envelope.markerDecay, 3);
    EXPECT_EQ (envelope.markerLoopStart, 0);
    EXPECT_EQ (envelope.markerSustain, 8);
    EXPECT_DOUBLE_EQ (envelope.absoluteTime (9), time + 0.1);

    envelope.deletePoint (2);
    EXPECT_EQ (envelope.markerDecay, 2);
    EXPECT_EQ (envelope.markerSustain, 7);
    EXPECT_DOUBLE_EQ (envelope.absoluteTime (8), time + 0.1);
    EXPECT_EQ (envelope.absoluteTime (-1), 0.0);
    EXPECT_EQ (envelope.point (99).tension, 0.5f);

    // However often points are moved to odd places, the end does not come earlier.
    const auto last = envelope.pointCount() - 1;
    const auto end = envelope.absoluteTime (last);
    for (int i = 0; i < 2000; ++i)
    {
        envelope.movePoint (1 + i % (last - 1), end * (i * 379 % 748) / 748.0);
        ASSERT_GE (envelope.absoluteTime (last), end) << i;
    }
    EXPECT_NEAR (envelope.absoluteTime (last), end, 1e-9);
}

TEST (Envelope, FlipsAndNormalises)
{
    auto envelope = Curves::of ({ Curves::point (0.0, 1.0f, hold), Curves::point (1.0, 0.75f, hold) });
    envelope.flip();
    EXPECT_EQ (envelope.point (1).value, 0.25f);
    envelope.normalise();
    EXPECT_EQ (envelope.point (1).value, 1.0f);
    EXPECT_EQ (envelope.point (0).value, 0.0f);
}

TEST (Envelope, DerivesStagesBetweenMarkers)
{
    Envelope envelope;
    envelope.setPoints (std::vector (6, Curves::point (1.0, 1.0f, hold)));
    envelope.markerDecay = 1;
    envelope.markerLoopStart = 2;
    envelope.markerSustain = 3;
    auto flagged = envelope.point (2);
    flagged.flagA = 1;
    envelope.setPoint (2, flagged);
    EXPECT_TRUE (envelope.hasSlidePoint && envelope.hasTailAfterSustain && !envelope.loopDegenerate);
    const std::array expected { 0.5f, 0.0f, 1.0f, 1.0f, 0.0f, -0.5f };
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ (envelope.point (i).progress, expected[static_cast<size_t> (i)]) << i;

    envelope.markerSustain = envelope.markerLoopStart;
    envelope.recalculate();
    EXPECT_TRUE (envelope.loopDegenerate && !envelope.hasSlidePoint);
}

TEST (Envelope, SurvivesTimesThatAreNone)
{
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    const auto envelope =
        Curves::of ({ Curves::point (0.0, 0.5f, hold), Curves::point (-3.0, 0.5f, singleCurve),
                      Curves::point (std::nan (""), 1.0f, hold), Curves::point (infinity, 0.0f, wave) });
    EXPECT_EQ (envelope.absoluteTime (2), 0.0);
    EXPECT_TRUE (std::isfinite (envelope.evaluate (1.0)));
}
