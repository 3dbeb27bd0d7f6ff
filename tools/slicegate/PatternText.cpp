#include "PatternText.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace
{
constexpr double window = 4.0, reach = 8.0; // beats
constexpr double tiny = 1e-9;
constexpr int single = 0, hold = 2, stairs = 3;

/** A slice that is repeated more often than this is one stretch of stairs. */
constexpr int mostHolds = 64;

/** A value of the text: a number, or one that counts from the deck's own place. */
struct Value
{
    double number = 0.0;
    bool isOwn = false;
};

/** A stretch of a curve as it is written. */
struct Stretch
{
    Value from, to;
    double beats = 0.0;
    double speed = 1.0;  ///< of a stretch without an end of its own
    bool hasEnd = false; ///< `to` is given
    double slice = 0.0;  ///< repeated slices of this length; 0 for none
    std::string shape;   ///< "" is a line
    double tension = 0.0;
};

class Reader
{
public:
    Reader (std::string_view t, bool isVolume) : text (t), volume (isVolume) {}

    std::vector<Stretch> all()
    {
        auto stretches = sequence();
        if (at < text.size())
            fail ("a ) has no (");
        return stretches;
    }

private:
    [[noreturn]] void fail (const std::string& sentence) const
    {
        throw PatternFault { sentence + " at \"" + std::string (text.substr (at, 24)) + "\"" };
    }

    void skipBlanks()
    {
        while (at < text.size() && std::isspace (static_cast<unsigned char> (text[at])) != 0)
            ++at;
    }

    bool take (char c)
    {
        if (at >= text.size() || text[at] != c)
            return false;
        ++at;
        return true;
    }

    bool sees (std::string_view characters) const
    {
        return at < text.size() && characters.find (text[at]) != std::string_view::npos;
    }

    double plainNumber()
    {
        const auto begin = at;
        while (sees ("0123456789."))
            ++at;
        if (at == begin)
            fail ("a number is missing");
        return std::stod (std::string (text.substr (begin, at - begin)));
    }

    /** A decimal or a fraction, with a sign. */
    double number()
    {
        const auto sign = take ('-') ? -1.0 : (take ('+'), 1.0);
        const auto numerator = plainNumber();
        return sign * (take ('/') ? numerator / plainNumber() : numerator);
    }

    Value value()
    {
        if (!take ('='))
            return { number(), false };
        return { sees ("+-") ? number() : 0.0, true };
    }

    void readTail (Stretch& s)
    {
        if (take ('^'))
            s.speed = std::exp2 (number() / 12.0);
        if (take ('@'))
            s.speed = number();
        if (take ('~'))
        {
            while (at < text.size() && std::isalpha (static_cast<unsigned char> (text[at])) != 0)
                s.shape += text[at++];
            if (take ('('))
            {
                s.tension = number();
                if (!take (')'))
                    fail ("a shape's tension has no )");
            }
        }
    }

    std::vector<Stretch> sequence()
    {
        std::vector<Stretch> found;
        for (skipBlanks(); at < text.size() && text[at] != ')'; skipBlanks())
        {
            const auto next = item();
            found.insert (found.end(), next.begin(), next.end());
        }
        return found;
    }

    std::vector<Stretch> item()
    {
        if (take ('('))
        {
            const auto inner = sequence();
            if (!take (')'))
                fail ("a ( has no )");
            return repeated (inner);
        }
        Stretch s;
        s.from = s.to = value();
        skipBlanks();
        if (take ('['))
            return repeated (steps (s.from.number));
        if (take ('>'))
        {
            s.to = value();
            s.hasEnd = true;
        }
        else if (take ('|'))
        {
            s.slice = number();
        }
        if (!take (':'))
            fail ("a : is missing");
        s.beats = number();
        readTail (s);
        return { s };
    }

    std::vector<Stretch> repeated (const std::vector<Stretch>& once)
    {
        const auto times = take ('*') ? static_cast<int> (plainNumber()) : 1;
        std::vector<Stretch> all;
        for (int i = 0; i < times; ++i)
            all.insert (all.end(), once.begin(), once.end());
        return all;
    }

    /** A list of steps of one length; values count in steps. */
    std::vector<Stretch> steps (double length)
    {
        std::vector<Stretch> found;
        for (skipBlanks(); !take (']'); skipBlanks())
        {
            if (at >= text.size())
                fail ("a [ has no ]");
            if (volume && sees ("xosr."))
            {
                const auto letter = text[at++];
                letterSteps (letter, length, found);
                continue;
            }
            Stretch s;
            s.from = s.to = value();
            s.hasEnd = take ('>');
            if (s.hasEnd)
                s.to = value();
            readTail (s);
            s.beats = length;
            if (!volume)
            {
                s.from.number *= length;
                s.to.number *= length;
            }
            found.push_back (s);
        }
        return found;
    }

    static void letterSteps (char letter, double length, std::vector<Stretch>& found)
    {
        const auto level = [&] (double from, double to, double beats)
        {
            Stretch s;
            s.from.number = from;
            s.to.number = to;
            s.hasEnd = from != to;
            s.beats = beats;
            found.push_back (s);
        };
        switch (letter)
        {
        case 'x':
            return level (1.0, 1.0, length);
        case 'o':
            level (1.0, 1.0, length / 2.0);
            return level (0.0, 0.0, length / 2.0);
        case 's':
            return level (1.0, 0.0, length);
        case 'r':
            return level (0.0, 1.0, length);
        default:
            return level (0.0, 0.0, length);
        }
    }

    std::string_view text;
    const bool volume;
    size_t at = 0;
};

/** A stretch as a curve takes it: from one value to another in so many beats. */
struct Line
{
    double from, to, beats;
    int type = single;
    double tension = 0.0;
};

double shaped (const std::string& shape, double x)
{
    if (shape == "ease")
        return 0.5 - 0.5 * std::cos (x * std::numbers::pi);
    if (shape == "in")
        return x * x;
    if (shape == "out")
        return 1.0 - (1.0 - x) * (1.0 - x);
    throw PatternFault { "there is no shape \"" + shape + "\", only ease, in, out and curve" };
}

/** The tension of stairs with a number of equal levels: the inverse of the law of their steps. */
double tensionOfStairs (int levels)
{
    const auto steps = levels - 2.0;
    return std::clamp ((1.0 - std::log (steps * 1000.0 + 1.0) / std::log (1000001.0)) / 0.6, 0.0, 1.0);
}

class Curve
{
public:
    void add (const Line& line) { lines.push_back (line); }

    PatternCurve points() const
    {
        auto total = 0.0;
        for (const auto& line : lines)
            total += line.beats;
        if (std::abs (total - window) > tiny)
            throw PatternFault { "it is " + std::to_string (total) + " beats long instead of 4" };
        for (const auto& line : lines)
            if (!(inRange (line.from) && inRange (line.to)))
                throw PatternFault {
                    "it leaves what can be reached: the future, more than 8 beats back, or a level beyond 1"
                };

        PatternCurve made { { 0.0, limited (lines.front().from), 0.0, hold } };
        for (size_t i = 0; i < lines.size(); ++i)
        {
            const auto& line = lines[i];
            const auto next = i + 1 < lines.size() ? lines[i + 1].from : line.to;
            if (line.type == hold)
            {
                made.push_back ({ line.beats, limited (next), 0.0, hold });
                continue;
            }
            made.push_back ({ line.beats, limited (line.to), line.tension, line.type });
            if (std::abs (next - line.to) > tiny)
                made.push_back ({ 0.0, limited (next), 0.0, hold });
        }
        // Equal levels after each other are one.
        for (size_t i = made.size() - 1; i > 1; --i)
            if (made[i].type == hold && made[i - 1].type == hold && made[i - 1].value == made[i - 2].value)
            {
                made[i].delta += made[i - 1].delta;
                made.erase (made.begin() + static_cast<std::ptrdiff_t> (i) - 1);
            }
        endAtWindow (made);
        if (made.size() > 512)
            throw PatternFault { "it has more than 512 points" };
        return made;
    }

private:
    /** Past its last point a curve reads 0: the sums of thirds must not end before the window does. */
    static void endAtWindow (PatternCurve& made)
    {
        const auto sum = [&made]
        {
            auto time = 0.0;
            for (const auto& point : made)
                time += point.delta;
            return time;
        };
        auto last = made.end() - 1;
        while (last->delta == 0.0)
            --last;
        last->delta += window - sum();
        while (sum() < window)
            last->delta = std::nextafter (last->delta, window + 1.0);
    }

    static bool inRange (double v) { return v >= -tiny && v <= 1.0 + tiny; }
    static double limited (double v) { return std::clamp (v, 0.0, 1.0); }

    std::vector<Line> lines;
};

/** Adds a stretch whose ends are known; a shape of movement becomes a chain of lines. */
void addShaped (Curve& curve, const Stretch& s, double from, double to, const auto& valueAt)
{
    if (s.shape.empty() || s.shape == "curve")
    {
        const auto isLevel = std::abs (valueAt (from, 0.0) - valueAt (to, s.beats)) < tiny;
        curve.add (
            { valueAt (from, 0.0), valueAt (to, s.beats), s.beats, isLevel ? hold : single, s.tension });
        return;
    }
    const auto pieces = s.beats >= 0.25 ? 8 : 4;
    for (int i = 0; i < pieces; ++i)
    {
        const auto a = static_cast<double> (i) / pieces, b = static_cast<double> (i + 1) / pieces;
        curve.add ({ valueAt (from + (to - from) * shaped (s.shape, a), s.beats * a),
                     valueAt (from + (to - from) * shaped (s.shape, b), s.beats * b), s.beats / pieces });
    }
}

void addSlices (Curve& curve, const Stretch& s, double from, double time)
{
    const auto count = static_cast<int> (std::lround (s.beats / s.slice));
    if (count < 1 || std::abs (count * s.slice - s.beats) > tiny)
        throw PatternFault { "its slices don't fill the time that they are given" };
    const auto value = [&] (int k) { return 1.0 - (time + k * s.slice - from) / reach; };
    if (count > mostHolds)
        return curve.add ({ value (0), value (count - 1), s.beats, stairs, tensionOfStairs (count) });
    for (int k = 0; k < count; ++k)
        curve.add ({ value (k), value (k), s.slice, hold });
}
}

PatternCurve timeCurve (std::string_view text)
{
    Curve curve;
    auto time = 0.0;
    for (const auto& s : Reader (text, false).all())
    {
        const auto place = [] (const Value& v, double own) { return v.isOwn ? own + v.number : v.number; };
        const auto from = place (s.from, time);
        const auto to = s.hasEnd ? place (s.to, time + s.beats) : from + s.speed * s.beats;
        if (s.slice > 0.0)
            addSlices (curve, s, from, time);
        else if (s.hasEnd && s.from.isOwn && s.to.isOwn)
            // The distance from the deck's own place is what is shaped.
            addShaped (curve, s, s.from.number, s.to.number,
                       [] (double distance, double) { return 1.0 + distance / reach; });
        else
            addShaped (curve, s, from, to,
                       [&] (double where, double since) { return 1.0 - (time + since - where) / reach; });
        time += s.beats;
    }
    return curve.points();
}

PatternCurve volumeCurve (std::string_view text)
{
    Curve curve;
    for (const auto& s : Reader (text, true).all())
        addShaped (curve, s, s.from.number, s.hasEnd ? s.to.number : s.from.number,
                   [] (double level, double) { return level; });
    return curve.points();
}

PatternGroup patternGroup (std::string_view text)
{
    PatternGroup group;
    auto lineNumber = 0;
    std::string* open = nullptr; ///< what an indented line goes on with
    const auto fail = [&] (const std::string& sentence)
    { throw PatternFault { "line " + std::to_string (lineNumber) + ": " + sentence }; };

    while (!text.empty())
    {
        ++lineNumber;
        auto line = text.substr (0, text.find ('\n'));
        text.remove_prefix (std::min (text.size(), line.size() + 1));
        const auto isIndented = line.starts_with (' ');
        line.remove_prefix (std::min (line.size(), line.find_first_not_of (' ')));
        if (line.empty() || line.front() == '#')
            continue;
        const auto space = std::min (line.size(), line.find (' '));
        const auto word = line.substr (0, space);
        auto rest = line.substr (space);
        rest.remove_prefix (std::min (rest.size(), rest.find_first_not_of (' ')));

        if (!isIndented && word == "group")
        {
            group.name = rest;
        }
        else if (!isIndented && word == "menu")
        {
            group.menuPlace = std::stoi (std::string (rest));
        }
        else if (!isIndented && word == "sets-flags")
        {
            group.setsFlags = true;
        }
        else if (!isIndented)
        {
            if (word.find_first_not_of ("0123456789") != std::string_view::npos || rest.empty())
                fail ("a pattern begins with its number and its name");
            group.patterns.emplace_back();
            group.patterns.back().id = std::stoi (std::string (word));
            group.patterns.back().name = rest;
            open = nullptr;
        }
        else if (group.patterns.empty())
        {
            fail ("there is no pattern yet");
        }
        else if (word == "time" || word == "volume")
        {
            open = word == "time" ? &group.patterns.back().timeText : &group.patterns.back().volumeText;
            *open = rest;
        }
        else if (open != nullptr)
        {
            *open += ' ';
            *open += line;
        }
        else
        {
            fail ("only time and volume belong to a pattern");
        }
    }
    for (auto& pattern : group.patterns)
        try
        {
            pattern.time = pattern.timeText.empty()
                               ? PatternCurve { { 0.0, 1.0, 0.0, hold }, { window, 1.0, 0.0, single } }
                               : timeCurve (pattern.timeText);
            pattern.volume = volumeCurve (pattern.volumeText.empty() ? "1:4" : pattern.volumeText);
        }
        catch (const PatternFault& fault)
        {
            throw PatternFault { std::to_string (pattern.id) + " " + pattern.name + ": " + fault.sentence };
        }
    return group;
}
