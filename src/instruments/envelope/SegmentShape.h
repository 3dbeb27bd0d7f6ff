#pragma once

#include "instruments/envelope/EnvelopePoint.h"
#include "support/AudioThread.h"

#include <array>

/** The shapes of a stretch between two points, by their stored numbers. */
enum class SegmentShape : std::uint8_t
{
    singleCurve,
    doubleCurve,
    hold,
    stairs,
    smoothStairs,
    pulse,
    wave,
    altSingleCurve,
    altDoubleCurve,
    halfSine,
    smooth
};

namespace SegmentShapes
{
inline constexpr std::array<const char*, 11> names {
    "Single Curve",     "Double Curve",     "Hold",      "Stairs", "Smooth Stairs", "Pulse", "Wave",
    "Alt Single Curve", "Alt Double Curve", "Half Sine", "Smooth"
};

/** True for the four shapes that go several ways between their ends: their middle says nothing about them. */
constexpr bool isStepped (std::uint8_t type)
{
    return type >= static_cast<std::uint8_t> (SegmentShape::stairs)
           && type <= static_cast<std::uint8_t> (SegmentShape::wave);
}

/** Derives sign and shape fields of a point from its type and tension; not those of a smooth one. */
void derive (EnvelopePoint&) noexcept;

/** The points around a smooth one, null beyond the ends of the envelope. */
struct Neighbours
{
    const EnvelopePoint* beforePrevious = nullptr;
    const EnvelopePoint* previous = nullptr;
    const EnvelopePoint* next = nullptr;
};

/** Derives the tangents of a smooth point so that its curve passes both ends without overshoot: the weighted harmonic
    mean of the neighbouring slopes (Fritsch and Butland's monotone cubic). @param around   previous must be there */
void deriveSmooth (EnvelopePoint&, const Neighbours& around) noexcept;

/** Share of the way from the previous value to the point's own.
    @param x   share of the stretch's time, 0 to 1
    @returns 0 to 1, but for stairs of positive tension, whose last step is reached at exactly 1 */
PX_AUDIO_THREAD double at (const EnvelopePoint&, double x) noexcept;
}
