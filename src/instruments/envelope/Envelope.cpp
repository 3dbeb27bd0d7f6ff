#include "instruments/envelope/Envelope.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double longestDelta = 1e9;

/** The delta from one time to a later one which, when it is added, leads no less far. */
double deltaBetween (double from, double to) noexcept
{
    auto delta = std::max (to - from, 0.0);
    while (from + delta < to)
        delta = std::nextafter (delta, longestDelta);
    return delta;
}

EnvelopePoint smoothPoint (double delta, float value)
{
    EnvelopePoint point;
    point.delta = delta;
    point.value = value;
    point.tension = 0.0f;
    point.type = static_cast<std::uint8_t> (SegmentShape::smooth);
    return point;
}
}

Envelope::Envelope() : points { smoothPoint (0.0, 0.0f), smoothPoint (4.0, 1.0f) }
{
    recalculate();
}

bool Envelope::isIn (std::size_t segment, double time) const noexcept
{
    return time <= points[segment].time && (segment == 1 || time > points[segment - 1].time);
}

double Envelope::levelIn (std::size_t segment, double time) const noexcept
{
    const auto& end = points[segment];
    const auto start = points[segment - 1].value;
    const auto x = end.delta > 0.0 ? (time - (end.time - end.delta)) / end.delta : 0.0;
    return SegmentShapes::at (end, x) * (static_cast<double> (end.value) - start) + start;
}

double Envelope::evaluate (double time) const noexcept
{
    EnvelopeCursor cursor;
    return evaluate (time, cursor);
}

double Envelope::evaluate (double time, EnvelopeCursor& cursor) const noexcept
{
    const auto count = points.size();
    if (count < 2 || !(time <= points[count - 1].time))
        return 0.0;
    auto segment = cursor.segment;
    if (segment < 1 || segment >= count || !isIn (segment, time))
    {
        // The next one is the likely one; else the first that ends at or after the time.
        if (segment + 1 < count && segment >= 1 && isIn (segment + 1, time))
            ++segment;
        else
            segment = static_cast<std::size_t> (
                std::lower_bound (points.begin() + 1, points.end(), time,
                                  [] (const EnvelopePoint& p, double t) noexcept { return p.time < t; })
                - points.begin());
        cursor.segment = segment;
    }
    return levelIn (segment, time);
}

void Envelope::recalculate() noexcept
{
    auto time = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i)
    {
        auto& p = points[i];
        p.delta = p.delta > 0.0 ? std::min (p.delta, longestDelta) : 0.0;
        p.time = time += p.delta;
        if (i > 0)
            SegmentShapes::derive (p);
    }
    for (std::size_t i = 1; i < points.size(); ++i)
        if (points[i].type == static_cast<std::uint8_t> (SegmentShape::smooth))
            SegmentShapes::deriveSmooth (points[i], { i > 1 ? &points[i - 2] : nullptr, &points[i - 1],
                                                      i + 1 < points.size() ? &points[i + 1] : nullptr });
    deriveProgress();
}

void Envelope::deriveProgress() noexcept
{
    constexpr auto shortest = 1.0 / 65536.0;
    const auto count = pointCount();
    const auto decay = std::max (markerDecay, 0);
    const auto sustain = markerSustain < 0 ? count - 1 : markerSustain;
    const auto loopStart = markerLoopStart < 0 ? sustain : markerLoopStart;

    auto decayTime = 0.0, loopTime = 0.0, releaseTime = 0.0;
    hasSlidePoint = false;
    for (int i = 0; i < count; ++i)
    {
        const auto& p = points[static_cast<std::size_t> (i)];
        if (i <= decay)
            decayTime += p.delta;
        else if (i <= loopStart)
            loopTime += p.delta;
        if (i > sustain)
            releaseTime += p.delta;
        hasSlidePoint = hasSlidePoint || (p.flagA != 0 && i <= markerSustain);
    }

    auto decayRest = decayTime, sinceDecay = 0.0;
    std::optional<double> releaseRest;
    for (int i = 0; i < count; ++i)
    {
        auto& p = points[static_cast<std::size_t> (i)];
        if (i < decay)
            p.progress = static_cast<float> ((decayRest -= p.delta) / std::max (decayTime, shortest));
        else if (i == decay)
            p.progress = 0.0f;
        else
        {
            p.progress = 1.0f;
            if (i <= loopStart)
                p.progress = static_cast<float> ((sinceDecay += p.delta) / std::max (loopTime, shortest));
            if (i > sustain)
            {
                releaseRest = releaseRest.value_or (decayRest) - p.delta;
                p.progress = static_cast<float> (*releaseRest / std::max (releaseTime, shortest));
            }
        }
    }

    loopDegenerate = markerSustain >= 0 && markerLoopStart >= 0
                     && absoluteTime (markerSustain) - absoluteTime (markerLoopStart) <= 0.0;
    hasSlidePoint = hasSlidePoint && !loopDegenerate;
    hasTailAfterSustain = markerSustain < count - 1;
}

EnvelopePoint Envelope::point (int index) const noexcept
{
    return index >= 0 && index < pointCount() ? points[static_cast<std::size_t> (index)] : EnvelopePoint();
}

void Envelope::setPoint (int index, const EnvelopePoint& next)
{
    if (index < 0 || index >= pointCount())
        return;
    points[static_cast<std::size_t> (index)] = next;
    recalculate();
}

void Envelope::setPoints (std::span<const EnvelopePoint> next)
{
    next = next.first (std::min (next.size(), static_cast<std::size_t> (maxPoints)));
    points.assign (next.begin(), next.end());
    recalculate();
}

void Envelope::setPointCount (int count)
{
    points.resize (static_cast<std::size_t> (std::clamp (count, 0, maxPoints)));
    recalculate();
}

void Envelope::moveMarkers (int index, int step) noexcept
{
    for (auto* marker : { &markerDecay, &markerLoopStart, &markerSustain })
        if (*marker >= 1 && *marker >= index)
            *marker += step;
}

void Envelope::movePoint (int index, double time)
{
    if (index < 0 || index + 1 >= pointCount())
        return;
    auto& moved = points[static_cast<std::size_t> (index)];
    auto& next = points[static_cast<std::size_t> (index) + 1];
    const auto before = absoluteTime (index - 1);
    moved.delta = std::clamp (time, before, next.time) - before;
    next.delta = deltaBetween (before + moved.delta, next.time);
    recalculate();
}

void Envelope::insertPoint (int index, const EnvelopePoint& next)
{
    if (index < 0 || index > pointCount() || pointCount() >= maxPoints)
        return;
    points.insert (points.begin() + index, next);
    moveMarkers (index, 1);
    recalculate();
}

void Envelope::deletePoint (int index)
{
    if (index < 0 || index >= pointCount())
        return;
    const auto at = points.begin() + index;
    if (index + 1 < pointCount())
        (at + 1)->delta = deltaBetween (absoluteTime (index - 1), (at + 1)->time);
    points.erase (at);
    moveMarkers (index, -1);
    recalculate();
}

double Envelope::absoluteTime (int index) const noexcept
{
    if (index < 0 || points.empty())
        return 0.0;
    return points[static_cast<std::size_t> (std::min (index, pointCount() - 1))].time;
}

void Envelope::flip()
{
    for (auto& p : points)
        p.value = 1.0f - p.value;
    recalculate();
}

void Envelope::normalise()
{
    auto greatest = 0.0f;
    for (const auto& p : points)
        greatest = std::max (greatest, p.value);
    if (greatest <= 0.0f || greatest >= 1.0f)
        return;
    const auto factor = 1.0f / greatest;
    for (auto& p : points)
        p.value = std::clamp (p.value * factor, 0.0f, 1.0f);
    recalculate();
}

void Envelope::assign (const Envelope& other)
{
    points = other.points;
    tailFlags = other.tailFlags;
    markerZero = other.markerZero;
    markerDecay = other.markerDecay;
    markerLoopStart = other.markerLoopStart;
    markerSustain = other.markerSustain;
    recalculate();
}

bool Envelope::isSameCurve (const Envelope& other) const
{
    return blob() == other.blob();
}
