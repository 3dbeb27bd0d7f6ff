#include "ui/envelope/EnvEdit.h"

#include "ui/envelope/EnvGeometry.h"

namespace
{
double toMultiple (double number, double step)
{
    return std::round (number / step) * step;
}
}

EnvEdit::Place EnvEdit::snapped (Place place, const Rules& rules)
{
    if (rules.snapX)
        place.time = toMultiple (place.time, snapTime);
    if (rules.snapY)
        place.level = toMultiple (place.level, snapLevel);
    return { std::max (place.time, 0.0), juce::jlimit (0.0, 1.0, place.level) };
}

void EnvEdit::movePoint (Envelope& envelope, int index, Place place, const Rules& rules)
{
    place = snapped (place, rules);
    const auto last = envelope.pointCount() - 1;
    auto moved = envelope.point (index);
    moved.value = static_cast<float> (place.level);
    const auto movesInTime = index > 0 && !(index == last && rules.pinLast);
    const auto takesLaterAlong = rules.sliding || index == last;
    if (movesInTime && takesLaterAlong)
        moved.delta = std::max (place.time - envelope.absoluteTime (index - 1), 0.0);
    envelope.setPoint (index, moved);
    if (movesInTime && !takesLaterAlong)
        envelope.movePoint (index, place.time);
}

int EnvEdit::insertPoint (Envelope& envelope, Place place, std::uint8_t type, const Rules& rules)
{
    if (envelope.pointCount() >= Envelope::maxPoints)
        return -1;
    place = snapped (place, rules);
    const auto index = std::min (EnvGeometry::segmentAt (envelope, place.time), envelope.pointCount());
    EnvelopePoint added;
    added.delta = 0.0;
    added.value = static_cast<float> (place.level);
    added.tension = 0.0f;
    added.type = type;
    const auto isLast = index == envelope.pointCount();
    if (isLast)
        added.delta = std::max (place.time - envelope.absoluteTime (index - 1), 0.0);
    envelope.insertPoint (index, added);
    if (!isLast)
        envelope.movePoint (index, place.time);
    return index;
}

bool EnvEdit::canDelete (const Envelope& envelope, int index, const Rules& rules)
{
    const auto count = envelope.pointCount();
    return index >= 1 && index < count && count >= 3 && !(rules.pinLast && index == count - 1);
}

void EnvEdit::setTension (Envelope& envelope, int index, double tension)
{
    auto p = envelope.point (index);
    p.tension = static_cast<float> (juce::jlimit (-1.0, 1.0, tension));
    envelope.setPoint (index, p);
}

void EnvEdit::setType (Envelope& envelope, int index, std::uint8_t type)
{
    auto p = envelope.point (index);
    p.type = type;
    envelope.setPoint (index, p);
}

void EnvEdit::setLevel (Envelope& envelope, int index, float level)
{
    auto p = envelope.point (index);
    p.value = juce::jlimit (0.0f, 1.0f, level);
    envelope.setPoint (index, p);
}
