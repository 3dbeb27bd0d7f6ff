#include "Curves.h"
#include "instruments/envelope/ShapeMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <random>
#include <set>

using enum SegmentShape;

namespace
{
/** The exponential bend in double precision. */
double bend (double x, double tension)
{
    const auto k = std::exp (std::log (1'000'001.0) * std::abs (tension)) - 1.0;
    return tension > 0.0 ? 1.0 - (std::pow (1.0 + k, 1.0 - x) - 1.0) / k : (std::pow (1.0 + k, x) - 1.0) / k;
}

double power (double x, double tension)
{
    const auto w = tension > 0.0 ? 1.0 - x : x;
    return x - tension * (std::pow (w, 6.0) - w);
}

double mirrored (const std::function<double (double)>& one, double x)
{
    return x < 0.5 ? one (2.0 * x) / 2.0 : 1.0 - one (2.0 - 2.0 * x) / 2.0;
}
}

TEST (SegmentShape, FollowsItsClosedForm)
{
    struct Case
    {
        SegmentShape shape;
        float tension;
        std::function<double (double)> expected;
    };
    constexpr auto pi = std::numbers::pi;
    for (const auto& c :
         std::vector<Case> {
             { singleCurve, 0.0f, [] (double x) { return x; } },
             { singleCurve, 0.5f, [] (double x) { return bend (x, 0.5); } },
             { singleCurve, -0.5f, [] (double x) { return bend (x, -0.5); } },
             { singleCurve, 1.0f, [] (double x) { return bend (x, 1.0); } },
             { doubleCurve, 0.3f,
               [] (double x) { return mirrored ([] (double u) { return bend (u, 0.3); }, x); } },
             { doubleCurve, -0.3f,
               [] (double x) { return mirrored ([] (double u) { return bend (u, -0.3); }, x); } },
             { hold, 0.7f, [] (double) { return 0.0; } },
             { stairs, 1.0f, [] (double x) { return x < 0.5 ? 0.0 : 1.0; } },
             { stairs, -1.0f, [] (double x) { return x < 1.0 ? 0.5 : 1.0; } },
             { smoothStairs, 1.0f,
               [] (double x) { return x < 0.5 ? 4.0 * x * x * x : 1.0 + 4.0 * std::pow (x - 1.0, 3.0); } },
             { pulse, 1.0f, [] (double x) { return x < 0.5 ? 0.0 : 1.0; } },
             { pulse, -1.0f, [] (double x) { return x < 0.5 ? 1.0 : 0.0; } },
             { wave, 1.0f, [] (double x) { return x; } },
             { wave, -1.0f, [=] (double x) { return 0.5 - 0.5 * std::cos (pi * x); } },
             { altSingleCurve, 0.4f, [] (double x) { return power (x, 0.4f); } },
             { altSingleCurve, -0.4f, [] (double x) { return power (x, -0.4f); } },
             { altDoubleCurve, 0.4f,
               [] (double x) { return mirrored ([] (double u) { return power (u, 0.4f); }, x); } },
             { halfSine, 1.0f, [=] (double x) { return std::sin (0.5 * pi * x); } },
             { halfSine, -1.0f, [=] (double x) { return 1.0 - std::cos (0.5 * pi * x); } },
             { smooth, 0.0f, [] (double x) { return x * x * (3.0 - 2.0 * x); } },
             { smooth, 1.0f, [] (double x) { return x; } } })
    {
        const auto envelope = Curves::rise (c.shape, c.tension);
        for (const auto x : { 0.0, 0.01, 0.2, 0.499, 0.55, 0.8, 0.999 })
            EXPECT_NEAR (envelope.evaluate (x), c.expected (x), 2e-6)
                << SegmentShapes::names[static_cast<size_t> (c.shape)] << " " << c.tension << " at " << x;
    }
}

TEST (ShapeMath, IsTheLibrarysFunctionsAndExactAtTheEndsOfSegments)
{
    std::mt19937 random (3);
    for (const auto range : { 1.0, 20.0, 7000.0, 1e12 })
        for (int i = 0; i < 20'000; ++i)
        {
            const auto x = std::uniform_real_distribution (-range, range) (random);
            EXPECT_EQ (ShapeMath::floorOf (x), std::floor (x));
            EXPECT_NEAR (ShapeMath::sineOf (x), std::sin (x), 1e-12 + 1e-15 * std::abs (x)) << x;
            EXPECT_NEAR (ShapeMath::sineOfQuarterTurns (x), std::sin (0.5 * std::numbers::pi * x),
                         1e-12 + 1e-15 * std::abs (x))
                << x;
            if (range > 100.0)
                continue;
            EXPECT_NEAR (ShapeMath::exponentialLessOne (x) / std::expm1 (x), 1.0, 1e-12) << x;
        }
    for (const auto x : { -1.0, 0.0, 1.0 })
        EXPECT_EQ (ShapeMath::sineOfQuarterTurns (x), x);
    EXPECT_EQ (ShapeMath::exponentialLessOne (0.0), 0.0);
    EXPECT_TRUE (std::isnan (ShapeMath::sineOf (NAN)) && std::isnan (ShapeMath::exponentialLessOne (NAN)));
}

TEST (SegmentShape, StepsFollowTheTension)
{
    for (const auto& [shape, tension, levels] : std::vector<std::tuple<SegmentShape, float, size_t>> {
             { stairs, 1.0f, 2 }, { stairs, 0.75f, 3 + 1 }, { stairs, -0.75f, 2 + 1 }, { pulse, 0.5f, 2 } })
    {
        const auto envelope = Curves::rise (shape, tension);
        std::set<double> found;
        for (double x = 0.0; x < 1.0; x += 1.0 / 4096.0)
            found.insert (envelope.evaluate (x));
        EXPECT_EQ (found.size(), levels) << tension;
    }
}

TEST (SegmentShape, SmoothCurvesNeverOvershootAndDontJump)
{
    std::mt19937 engine (3);
    std::uniform_real_distribution<float> unit (0.0f, 1.0f);
    for (int round = 0; round < 300; ++round)
    {
        std::vector<EnvelopePoint> points;
        for (int i = 0; i < 8; ++i)
            points.push_back (Curves::point (i == 0 ? 0.0 : 0.01 + unit (engine), unit (engine), smooth,
                                             round % 3 == 0 ? 0.0f : unit (engine)));
        if (round % 5 == 0)
            points[4].value = points[3].value;
        Envelope envelope;
        envelope.setPoints (points);
        for (int i = 1; i < 8; ++i)
        {
            const auto start = envelope.absoluteTime (i - 1), length = envelope.point (i).delta;
            const double from = points[static_cast<size_t> (i - 1)].value,
                         to = points[static_cast<size_t> (i)].value;
            auto last = from;
            for (int step = 1; step <= 200; ++step)
            {
                const auto level = envelope.evaluate (start + length * step / 200.0);
                EXPECT_GE ((level - last) * (to >= from ? 1.0 : -1.0), -2e-6);
                EXPECT_LE (std::abs (level - last), 0.06 * std::abs (to - from) + 2e-6);
                last = level;
            }
            EXPECT_NEAR (last, to, 2e-6);
            EXPECT_TRUE (from != to || envelope.evaluate (start + length / 3.0) == from);
        }
    }
}
