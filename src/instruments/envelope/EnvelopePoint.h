#pragma once

#include <cstdint>

/** A breakpoint, and the shape of the stretch that ends at it. The fields up to flagC are the user's and are stored; the
    others are derived by Envelope::recalculate(). */
struct EnvelopePoint
{
    double delta = 1.0;    ///< time since the previous point, at least 0; the first point's is its own time
    float value = 1.0f;    ///< level, 0 to 1
    float tension = 0.5f;  ///< bends the shape, -1 to 1
    std::uint8_t type = 0; ///< a SegmentShape; a greater number holds the previous value
    std::uint8_t flagA = 0, flagB = 0, flagC = 0;

    float sign = 0.0f; ///< of the tension: 1, 0 or -1; straightLine if the stretch is one
    float tangentEnd = 0.0f, tangentStart = 0.0f, splineAmount = 0.0f;
    float progress = 0.0f; ///< of the stage between two markers; kept for readers elsewhere
    float shapeA = 0.0f, shapeB = 0.0f, shapeC = 0.0f;
    double time = 0.0; ///< since the envelope's start: the sum of the deltas up to here

    static constexpr float straightLine = 2.0f;
};
