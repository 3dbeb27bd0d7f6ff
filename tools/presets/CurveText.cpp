#include "CurveText.h"

#include <charconv>
#include <cmath>
#include <sstream>
#include <vector>

namespace
{
using CurveText::Fault;

std::vector<std::string> wordsOf (std::string_view text)
{
    std::istringstream stream { std::string (text) };
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back (word);
    return words;
}

std::optional<double> numberOf (std::string_view word)
{
    double number = 0.0;
    const auto* end = word.data() + word.size();
    const auto [stopped, error] = std::from_chars (word.data(), end, number);
    if (error != std::errc {} || stopped != end || !std::isfinite (number))
        return {};
    return number;
}

double levelOf (const std::string& word, const CurveText::Names& names)
{
    auto level = numberOf (word);
    if (!level && names != nullptr)
        level = names (word);
    if (!level)
        throw Fault ("\"" + word + "\" is no level.");
    if (*level < 0.0 || *level > 1.0)
        throw Fault ("The level " + word + " is not between 0 and 1.");
    return *level;
}

SegmentShape shapeOf (const std::string& word)
{
    constexpr std::array<const char*, 11> words { "single",       "double", "hold",  "stairs",
                                                  "smoothstairs", "pulse",  "wave",  "alt",
                                                  "altdouble",    "sine",   "smooth" };
    for (size_t i = 0; i < words.size(); ++i)
        if (word == words[i])
            return static_cast<SegmentShape> (i);
    throw Fault ("There is no shape \"" + word + "\".");
}

/** The tension at which a shape repeats so many times: the inverse of the envelope's law for steps. */
double tensionOfRepeats (const std::string& word, SegmentShape shape)
{
    const auto count = numberOf (std::string_view (word).substr (1)).value_or (0.0);
    const auto given = std::abs (count);
    if (given < 1.0 || given > 500.0)
        throw Fault ("\"" + word + "\" is no number of repeats.");
    // Stairs have one step more for a positive tension, a wave half a turn more.
    const auto extra = shape == SegmentShape::stairs && count > 0.0 ? 2.0
                       : shape == SegmentShape::wave                ? 0.0
                                                                    : 1.0;
    const auto steps = std::max (0.0, given - extra);
    const auto tension = (1.0 - std::log (steps * 1000.0 + 1.0) / std::log (1000001.0)) / 0.6;
    return std::copysign (std::min (tension, 1.0), count);
}

EnvelopePoint pointOf (const std::string& text, const CurveText::Names& names)
{
    const auto words = wordsOf (text);
    if (words.size() < 2 || words.size() > 4)
        throw Fault ("\"" + text
                     + "\" is no point: it needs a place, a level and at most a shape with a tension.");
    const auto place = numberOf (words[0]);
    if (!place)
        throw Fault ("\"" + words[0] + "\" is no place.");
    EnvelopePoint point;
    point.delta = *place;
    point.value = static_cast<float> (levelOf (words[1], names));
    point.tension = 0.0f;
    if (words.size() > 2 && words[2] != "line")
    {
        const auto shape = shapeOf (words[2]);
        point.type = static_cast<std::uint8_t> (shape);
        if (words.size() > 3 && words[3].starts_with ('x'))
            point.tension = static_cast<float> (tensionOfRepeats (words[3], shape));
        else if (words.size() > 3)
            point.tension = static_cast<float> (numberOf (words[3]).value_or (2.0));
        if (!(std::abs (point.tension) <= 1.0f))
            throw Fault ("The tension " + words[3] + " is not between -1 and 1.");
    }
    return point;
}

Envelope envelopeOf (std::vector<EnvelopePoint> points, const CurveText::Ends& ends)
{
    auto before = 0.0;
    for (auto& point : points)
    {
        const auto place = point.delta;
        point.delta = (place - before) * ends.scale;
        if (point.delta < 0.0)
            throw Fault ("The places of a curve must rise.");
        before = place;
    }
    if (points.front().delta != 0.0 || before != ends.last)
        throw Fault ("A curve must go from 0 to the end.");
    Envelope envelope;
    envelope.setPoints (points);
    envelope.recalculate();
    return envelope;
}
}

Envelope CurveText::read (std::string_view text, const Ends& ends, const Names& names)
{
    std::vector<std::string> pieces;
    std::istringstream stream { std::string (text) };
    for (std::string piece; std::getline (stream, piece, ',');)
        pieces.push_back (piece);
    if (pieces.size() == 1 && wordsOf (pieces[0]).size() == 1)
    {
        const auto level = levelOf (wordsOf (pieces[0])[0], names);
        return step (level, ends.last, level, ends);
    }
    if (pieces.size() < 2)
        throw Fault ("A curve needs a level or at least two points.");
    std::vector<EnvelopePoint> points;
    for (const auto& piece : pieces)
        points.push_back (pointOf (piece, names));
    return envelopeOf (std::move (points), ends);
}

Envelope CurveText::step (double before, double place, double after, const Ends& ends)
{
    const auto held = [] (double at, double level)
    {
        EnvelopePoint point;
        point.delta = at;
        point.value = static_cast<float> (level);
        point.tension = 0.0f;
        point.type = static_cast<std::uint8_t> (SegmentShape::hold);
        return point;
    };
    std::vector<EnvelopePoint> points { held (0.0, before), held (place, after) };
    if (place < ends.last)
        points.push_back (held (ends.last, after));
    return envelopeOf (std::move (points), ends);
}
