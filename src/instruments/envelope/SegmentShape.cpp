#include "instruments/envelope/SegmentShape.h"

#include "instruments/envelope/ShapeMath.h"

#include <cmath>

namespace
{
constexpr float epsilon = 1.0f / 16'777'216.0f; // 2^-24, the spacing of floats below 1
constexpr float twoPi = 6.2831855f;

/** Grows from 0 to a million over a tension of 0 to 1. Single precision, so that one plus it is exact again. */
float exponentialOf (float amount)
{
    return std::exp (std::log (1'000'001.0f) * amount) - 1.0f;
}

/** Steps of the stepped shapes: 1000 without tension, none at full tension. */
float stepsOf (float tension)
{
    const auto steps = exponentialOf (1.0f - 0.6f * std::abs (tension)) * 0.001f;
    return std::trunc (std::floor (steps + 0.5f));
}

PX_AUDIO_THREAD double roundHalfUp (double v) noexcept
{
    return ShapeMath::floorOf (v + 0.5);
}

/** The exponential bend of single and double curves. */
PX_AUDIO_THREAD double bend (const EnvelopePoint& p, double x) noexcept
{
    if (p.shapeA > 0.0f)
        return 1.0 - ShapeMath::exponentialLessOne ((1.0 - x) * p.shapeC) * p.shapeB;
    if (p.shapeA < 0.0f)
        return ShapeMath::exponentialLessOne (x * p.shapeC) * p.shapeB;
    return x;
}

/** The polynomial bend of the two alternatives. */
PX_AUDIO_THREAD double bendAlternative (const EnvelopePoint& p, double x) noexcept
{
    const auto w = p.sign > 0.0f ? 1.0 - x : x;
    const auto cube = w * w * w;
    return x - p.shapeA * (cube * cube - w);
}

/** Mirrors a bend around the middle of the stretch. */
template <class Bend>
PX_AUDIO_THREAD double twice (double x, Bend one) noexcept
{
    return x < 0.5 ? 0.5 * one (2.0 * x) : 1.0 - 0.5 * one (2.0 * (1.0 - x));
}

PX_AUDIO_THREAD double smoothStairs (const EnvelopePoint& p, double x) noexcept
{
    const auto b = p.shapeA * x - 0.5, r = ShapeMath::floorOf (b), y = 2.0 * (b - r) - 1.0;
    const auto side = y >= 0.0 ? 1.0 : -1.0, rest = 1.0 - std::abs (y);
    const auto within = p.sign >= 0.0f ? y * y * y : side * (1.0 - rest * rest * rest);
    return (r + 1.0 + 0.5 * within) * p.shapeB;
}

PX_AUDIO_THREAD double pulse (const EnvelopePoint& p, double x) noexcept
{
    const auto step = roundHalfUp (p.shapeA * x - p.shapeC);
    return step - 2.0 * ShapeMath::floorOf (0.5 * step);
}

PX_AUDIO_THREAD double wave (const EnvelopePoint& p, double x) noexcept
{
    const auto a = p.shapeA * x;
    if (p.sign < 0.0f)
        return (ShapeMath::sineOf ((a + 0.75) * p.shapeB) + 1.0) * 0.5;
    const auto b = a - 0.5;
    return std::abs (2.0 * (b - ShapeMath::floorOf (b)) - 1.0);
}

PX_AUDIO_THREAD double halfSine (const EnvelopePoint& p, double x) noexcept
{
    const auto bent =
        p.sign > 0.0f ? ShapeMath::sineOfQuarterTurns (x) : 1.0 - ShapeMath::sineOfQuarterTurns (1.0 - x);
    return x - p.shapeA * (x - bent);
}

PX_AUDIO_THREAD double smooth (const EnvelopePoint& p, double x) noexcept
{
    const auto toEnd = x - 1.0;
    const auto spline =
        x * x * toEnd * p.tangentEnd + (3.0 * x * x - 2.0 * x * x * x) + toEnd * toEnd * x * p.tangentStart;
    return x + (spline - x) * p.splineAmount;
}

/** The mean of two slopes that keeps a cubic monotone; 0 where they point different ways. */
float harmonicMean (float a, float b, float h1, float h2)
{
    if (a * b <= 0.0f)
        return 0.0f;
    const auto w1 = h1 + 2.0f * h2, w2 = 2.0f * h1 + h2;
    return a * b * (w1 + w2) / (a * w2 + b * w1);
}
}

void SegmentShapes::derive (EnvelopePoint& p) noexcept
{
    const auto direction = p.tension >= 0.0f ? 1.0f : -1.0f;
    p.sign = p.tension > 0.0f ? 1.0f : p.tension < 0.0f ? -1.0f : 0.0f;
    switch (static_cast<SegmentShape> (p.type))
    {
    case SegmentShape::singleCurve:
    case SegmentShape::doubleCurve:
        p.shapeA = direction * exponentialOf (std::abs (p.tension));
        p.shapeB = p.shapeA == 0.0f ? 0.0f : 1.0f / std::abs (p.shapeA);
        p.shapeC = std::log (1.0f + std::abs (p.shapeA));
        break;
    case SegmentShape::stairs:
        p.shapeA = stepsOf (p.tension) + (p.tension >= 0.0f ? 2.0f : 1.0f);
        p.shapeB = 1.0f / (p.shapeA - direction);
        p.shapeC = 0.5f * direction;
        return;
    case SegmentShape::smoothStairs:
        p.shapeA = stepsOf (p.tension) + 1.0f;
        p.shapeB = 1.0f / p.shapeA;
        return;
    case SegmentShape::pulse:
        p.shapeA = 2.0f * (stepsOf (p.tension) + 1.0f);
        p.shapeB = twoPi;
        p.shapeC = 0.5f * direction;
        return;
    case SegmentShape::wave:
        p.shapeA = stepsOf (p.tension) + 0.5f;
        p.shapeB = twoPi;
        if (p.tension > 0.0f && p.shapeA < 1.0f)
            p.sign = EnvelopePoint::straightLine;
        return;
    case SegmentShape::altSingleCurve:
    case SegmentShape::altDoubleCurve:
        p.shapeA = p.tension;
        break;
    case SegmentShape::halfSine:
        p.shapeA = std::abs (p.tension);
        break;
    case SegmentShape::hold:
    case SegmentShape::smooth:
        return;
    default:
        return;
    }
    if (p.tension == 0.0f)
        p.sign = EnvelopePoint::straightLine;
}

void SegmentShapes::deriveSmooth (EnvelopePoint& p, const Neighbours& around) noexcept
{
    constexpr auto smoothType = static_cast<std::uint8_t> (SegmentShape::smooth);
    const auto length = std::max (static_cast<float> (p.delta), epsilon);
    const auto start = around.previous->value, end = p.value;

    auto lengthBefore = 1.0f, before = start;
    if (around.previous->type == smoothType)
    {
        lengthBefore = static_cast<float> (around.previous->delta) / length;
        before = around.beforePrevious != nullptr ? around.beforePrevious->value : start;
    }
    auto lengthAfter = 1.0f, after = end;
    if (around.next != nullptr && around.next->type == smoothType)
    {
        lengthAfter = static_cast<float> (around.next->delta) / length;
        after = around.next->value;
    }

    const auto rise = end - start;
    auto unit = 1.0f;
    if (std::abs (rise) < epsilon)
    {
        p.sign = EnvelopePoint::straightLine;
        unit = rise;
    }
    else
    {
        before = (before - start) / rise;
        after = (after - start) / rise;
    }
    lengthBefore = std::max (lengthBefore, epsilon);
    lengthAfter = std::max (lengthAfter, epsilon);
    p.tangentEnd = harmonicMean ((after - unit) / lengthAfter, unit, lengthAfter, 1.0f);
    p.tangentStart = harmonicMean (unit, -before / lengthBefore, 1.0f, lengthBefore);
    p.splineAmount = 1.0f - std::abs (p.tension);
}

double SegmentShapes::at (const EnvelopePoint& p, double x) noexcept
{
    if (p.type == static_cast<std::uint8_t> (SegmentShape::smooth))
        return smooth (p, x);
    if (p.sign == EnvelopePoint::straightLine)
        return x;
    switch (static_cast<SegmentShape> (p.type))
    {
    case SegmentShape::singleCurve:
        return bend (p, x);
    case SegmentShape::doubleCurve:
        return twice (x, [&p] (double u) noexcept { return bend (p, u); });
    case SegmentShape::stairs:
        return roundHalfUp (p.shapeA * x - p.shapeC) * p.shapeB;
    case SegmentShape::smoothStairs:
        return smoothStairs (p, x);
    case SegmentShape::pulse:
        return pulse (p, x);
    case SegmentShape::wave:
        return wave (p, x);
    case SegmentShape::altSingleCurve:
        return bendAlternative (p, x);
    case SegmentShape::altDoubleCurve:
        return twice (x, [&p] (double u) noexcept { return bendAlternative (p, u); });
    case SegmentShape::halfSine:
        return halfSine (p, x);
    case SegmentShape::hold:
    default:
        return 0.0;
    }
}
