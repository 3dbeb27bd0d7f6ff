#pragma once

#include "instruments/envelope/Envelope.h"

#include <random>

/** Envelopes for tests. */
namespace Curves
{
inline EnvelopePoint point (double delta, float value, SegmentShape shape, float tension = 0.0f)
{
    EnvelopePoint p;
    p.delta = delta;
    p.value = value;
    p.tension = tension;
    p.type = static_cast<std::uint8_t> (shape);
    return p;
}

inline Envelope of (std::initializer_list<EnvelopePoint> points)
{
    Envelope envelope;
    envelope.setPoints (std::vector (points));
    return envelope;
}

/** From 0 to 1 over a time of 1 in one shape. */
inline Envelope rise (SegmentShape shape, float tension)
{
    return of ({ point (0.0, 0.0f, shape), point (1.0, 1.0f, shape, tension) });
}

/** All shapes, zero-length stretches among them, over a time of 4. */
inline Envelope random (unsigned seed, int points = 30)
{
    std::mt19937 engine (seed);
    std::uniform_real_distribution<float> unit (0.0f, 1.0f);
    std::vector<EnvelopePoint> all;
    for (int i = 0; i < points; ++i)
    {
        const auto shape = static_cast<SegmentShape> (engine() % SegmentShapes::names.size());
        const auto delta = i == 0 || engine() % 8 == 0 ? 0.0 : 4.0 / points;
        all.push_back (point (delta, unit (engine), shape, 2.0f * unit (engine) - 1.0f));
    }
    Envelope envelope;
    envelope.setPoints (all);
    return envelope;
}
}
