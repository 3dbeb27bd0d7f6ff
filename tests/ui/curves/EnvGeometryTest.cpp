#include "ui/envelope/EnvGeometry.h"
#include "ui/envelope/EnvEdit.h"

#include <gtest/gtest.h>

namespace
{
EnvelopePoint point (double delta, float value, SegmentShape shape, float tension = 0.0f)
{
    EnvelopePoint p;
    p.delta = delta;
    p.value = value;
    p.tension = tension;
    p.type = static_cast<std::uint8_t> (shape);
    return p;
}

/** Points at the times 0, 1, 2 and 4. */
Envelope fourPoints (SegmentShape shape = SegmentShape::singleCurve)
{
    Envelope envelope;
    envelope.setPoints (std::vector { point (0.0, 1.0f, shape), point (1.0, 0.5f, shape),
                                      point (1.0, 0.25f, shape), point (2.0, 1.0f, shape) });
    return envelope;
}
}

TEST (EnvGeometry, PixelsAndTimesAreEachOthersInverse)
{
    const EnvGeometry place ({ 10.0f, 20.0f, 412.0f, 212.0f }, { { 1.0, 3.0 }, { 0.25, 0.75 } });
    EXPECT_EQ (place.x (1.0), 16.0f);
    EXPECT_EQ (place.x (3.0), 416.0f);
    EXPECT_EQ (place.y (0.25), 226.0f);
    for (const auto at : { 1.0, 1.7, 4.0 })
        EXPECT_NEAR (place.time (place.x (at)), at, 1e-5);
    for (const auto at : { 0.0, 0.3, 1.0 })
        EXPECT_NEAR (place.level (place.y (at)), at, 1e-5);
}

TEST (EnvGeometry, FindsPointsBeforeHandlesAndTheLastPointFirst)
{
    using Hit = EnvGeometry::Hit;
    const EnvGeometry place ({ 412.0f, 212.0f }, {});
    const auto envelope = fourPoints();
    const auto at = [&] (int i) { return place.pointPlace (envelope, i); };
    EXPECT_EQ (place.hit (envelope, at (1).translated (7.0f, -7.0f)), (Hit { Hit::point, 1 }));
    EXPECT_EQ (place.hit (envelope, at (1).translated (8.0f, 0.0f)).kind, Hit::nothing);
    EXPECT_EQ (place.hit (envelope, place.tensionPlace (envelope, 3).translated (0.0f, 6.4f)),
               (Hit { Hit::tension, 3 }));
    EXPECT_EQ (place.hit (envelope, place.tensionPlace (envelope, 3).translated (0.0f, 6.6f)).kind,
               Hit::nothing);

    auto stacked = envelope;
    EnvEdit::movePoint (stacked, 1, { 2.0, 0.25 }, {});
    EXPECT_EQ (place.hit (stacked, place.pointPlace (stacked, 2)).index, 2);
    EXPECT_EQ (place.tensionPlace (fourPoints (SegmentShape::stairs), 3).y, place.y (0.625));
    EXPECT_EQ (place.tensionPlace (fourPoints (SegmentShape::hold), 3).y, place.y (0.25));
}

TEST (EnvGeometry, ThePathRunsThroughTheCurve)
{
    const EnvGeometry place ({ 412.0f, 212.0f }, {});
    for (size_t type = 0; type < SegmentShapes::names.size(); ++type)
    {
        auto envelope = fourPoints (static_cast<SegmentShape> (type));
        EnvEdit::setTension (envelope, 3, 0.9);
        const auto path = place.path (envelope, 0.5f);
        for (const auto time : { 0.5, 1.5, 2.2, 3.1, 3.7 })
        {
            juce::Point<float> nearest;
            const juce::Point<float> wanted (place.x (time), place.y (envelope.evaluate (time)));
            path.getNearestPoint (wanted, nearest);
            EXPECT_LT (nearest.getDistanceFrom (wanted), 1.0f)
                << SegmentShapes::names[type] << " at " << time;
        }
    }
}

TEST (EnvEdit, APointStaysBetweenItsNeighboursAndLaterOnesStay)
{
    struct Case
    {
        int index;
        double time, level;
        EnvEdit::Rules rules;
        std::array<double, 4> times;
        float value;
    };
    const EnvEdit::Rules free {}, snap { true, true }, sliding { false, false, true };
    for (const auto& c :
         { Case { 1, 1.4, 0.8, free, { 0.0, 1.4, 2.0, 4.0 }, 0.8f },
           Case { 1, 9.0, 2.0, free, { 0.0, 2.0, 2.0, 4.0 }, 1.0f },
           Case { 2, 0.2, -1.0, free, { 0.0, 1.0, 1.0, 4.0 }, 0.0f },
           Case { 1, 1.4, 0.8, snap, { 0.0, 1.5, 2.0, 4.0 }, 0.8125f },
           Case { 1, 1.5, 0.8, sliding, { 0.0, 1.5, 2.5, 4.5 }, 0.8f },
           Case { 0, 1.5, 0.8, free, { 0.0, 1.0, 2.0, 4.0 }, 0.8f },
           Case { 3, 3.5, 0.8, free, { 0.0, 1.0, 2.0, 4.0 }, 0.8f },
           Case { 3, 3.5, 0.8, { false, false, false, false }, { 0.0, 1.0, 2.0, 3.5 }, 0.8f } })
    {
        auto envelope = fourPoints();
        EnvEdit::movePoint (envelope, c.index, { c.time, c.level }, c.rules);
        for (int i = 0; i < 4; ++i)
            EXPECT_NEAR (envelope.absoluteTime (i), c.times[static_cast<size_t> (i)], 1e-12)
                << c.index << " " << c.time;
        EXPECT_FLOAT_EQ (envelope.point (c.index).value, c.value);
    }
}

TEST (EnvEdit, ANewPointLeavesTheOthersWhereTheyAre)
{
    for (const auto& [time, index] :
         { std::pair { 0.5, 1 }, { 1.0, 1 }, { 1.01, 2 }, { 3.9, 3 }, { 5.0, 4 } })
    {
        auto envelope = fourPoints();
        EXPECT_EQ (EnvEdit::insertPoint (envelope, { time, 0.5 }, 7, {}), index);
        EXPECT_NEAR (envelope.absoluteTime (index), time, 1e-12);
        EXPECT_EQ (envelope.point (index).type, 7);
        EXPECT_NEAR (envelope.absoluteTime (index == 4 ? 3 : 4), 4.0, 1e-12);
    }
    Envelope full;
    full.setPointCount (Envelope::maxPoints);
    EXPECT_EQ (EnvEdit::insertPoint (full, { 0.5, 0.5 }, 0, {}), -1);
}
