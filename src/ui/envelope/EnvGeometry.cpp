#include "ui/envelope/EnvGeometry.h"

namespace
{
constexpr auto pointReach = static_cast<float> (static_cast<int> (EnvGeometry::handleSize / 1.5));
constexpr auto tensionReach = EnvGeometry::handleSize / 2.0f;
constexpr int mostPieces = 4096; // of one segment

bool isHeld (const EnvelopePoint& p)
{
    return p.type == static_cast<std::uint8_t> (SegmentShape::hold) || p.type >= SegmentShapes::names.size();
}
}

EnvGeometry::EnvGeometry (juce::Rectangle<float> area, EnvView v, float border)
    : inside (area.reduced (border)),
      view (v)
{
}

float EnvGeometry::x (double time) const noexcept
{
    return inside.getX()
           + static_cast<float> ((time - view.time.getStart()) / view.time.getLength()) * inside.getWidth();
}

float EnvGeometry::y (double level) const noexcept
{
    return inside.getBottom()
           - static_cast<float> ((level - view.level.getStart()) / view.level.getLength())
                 * inside.getHeight();
}

double EnvGeometry::time (float x) const noexcept
{
    const auto width = std::max (inside.getWidth(), 1.0f);
    return view.time.getStart() + (x - inside.getX()) / width * view.time.getLength();
}

double EnvGeometry::level (float y) const noexcept
{
    const auto height = std::max (inside.getHeight(), 1.0f);
    return view.level.getStart() + (inside.getBottom() - y) / height * view.level.getLength();
}

juce::Point<float> EnvGeometry::pointPlace (const Envelope& envelope, int point) const noexcept
{
    const auto p = envelope.point (point);
    return { x (p.time), y (p.value) };
}

juce::Point<float> EnvGeometry::tensionPlace (const Envelope& envelope, int point) const noexcept
{
    const auto p = envelope.point (point);
    const double from = envelope.point (point - 1).value;
    const auto share = SegmentShapes::isStepped (p.type) ? 0.5 : SegmentShapes::at (p, 0.5);
    return { 0.5f * (x (p.time - p.delta) + x (p.time)), y (from + share * (p.value - from)) };
}

EnvGeometry::Hit EnvGeometry::hit (const Envelope& envelope, juce::Point<float> place) const noexcept
{
    const auto count = envelope.pointCount();
    for (int i = count - 1; i >= 0; --i)
    {
        const auto away = pointPlace (envelope, i) - place;
        if (std::abs (away.x) < pointReach && std::abs (away.y) < pointReach)
            return { Hit::point, i };
    }
    for (int i = 1; i < count; ++i)
        if (tensionPlace (envelope, i).getDistanceFrom (place) <= tensionReach)
            return { Hit::tension, i };
    return {};
}

int EnvGeometry::segmentAt (const Envelope& envelope, double time) noexcept
{
    const auto points = envelope.allPoints();
    int i = 1;
    while (i < static_cast<int> (points.size()) && points[static_cast<size_t> (i)].time < time)
        ++i;
    return i;
}

juce::Path EnvGeometry::path (const Envelope& envelope, float step) const
{
    juce::Path line;
    const auto points = envelope.allPoints();
    if (points.empty())
        return line;
    line.startNewSubPath (x (points[0].time), y (points[0].value));
    for (size_t i = 1; i < points.size(); ++i)
    {
        const auto& p = points[i];
        const double from = points[i - 1].value;
        const auto left = x (points[i - 1].time), right = x (p.time);
        if (isHeld (p))
            line.lineTo (right, y (from));
        else if (p.sign != EnvelopePoint::straightLine
                 || p.type == static_cast<std::uint8_t> (SegmentShape::smooth))
        {
            // Beyond the edges of the plot nothing is seen of a bend.
            const auto first = juce::jlimit (left, std::max (left, right), inside.getX()),
                       last = juce::jlimit (left, std::max (left, right), inside.getRight());
            const auto pieces = juce::jlimit (0, mostPieces, static_cast<int> ((last - first) / step));
            for (int piece = 0; piece < pieces; ++piece)
            {
                const auto place = first + step * static_cast<float> (piece);
                const auto share = (place - left) / (right - left);
                line.lineTo (place, y (from + SegmentShapes::at (p, share) * (p.value - from)));
            }
        }
        line.lineTo (right, y (p.value));
    }
    return line;
}
