#include "library/query/QueryTerms.h"

#include "library/query/FoldedText.h"

#include <array>
#include <cmath>
#include <limits>

namespace
{
constexpr auto noLimit = std::numeric_limits<double>::infinity();

enum class Meaning
{
    number,
    choice,
    word
};

struct Prefix
{
    const char* name;
    SongField field;
    Meaning meaning;
};

constexpr std::array prefixes {
    Prefix { "bpm", SongField::bpm, Meaning::number },
    Prefix { "year", SongField::year, Meaning::number },
    Prefix { "rating", SongField::rating, Meaning::number },
    Prefix { "grid", SongField::analyzed, Meaning::number },
    Prefix { "key", SongField::key, Meaning::choice },
    Prefix { "artist", SongField::artist, Meaning::word },
    Prefix { "title", SongField::title, Meaning::word },
    Prefix { "album", SongField::album, Meaning::word },
    Prefix { "genre", SongField::genre, Meaning::word },
    Prefix { "comment", SongField::comment, Meaning::word },
    Prefix { "grouping", SongField::grouping, Meaning::word },
    Prefix { "file", SongField::filename, Meaning::word },
};

/** Parts at blanks that are not within quotes; the quotes go. */
juce::StringArray partsOf (const juce::String& typed)
{
    juce::StringArray parts;
    juce::String part;
    auto isQuoted = false;
    for (auto c = typed.getCharPointer(); !c.isEmpty(); ++c)
    {
        if (*c == '"')
            isQuoted = !isQuoted;
        else if (c.isWhitespace() && !isQuoted)
        {
            parts.add (part);
            part.clear();
        }
        else
            part += *c;
    }
    parts.add (part);
    parts.removeEmptyStrings();
    return parts;
}

/** A number as it is typed. @param step   1 for a whole number, 0.1 and so on with decimals */
struct Number
{
    double value = 0.0, step = 1.0;
};

std::optional<Number> numberOf (const juce::String& text)
{
    const auto typed = text.trim().replaceCharacter (',', '.');
    if (typed.isEmpty() || !typed.containsOnly ("0123456789.")
        || typed.indexOfChar ('.') != typed.lastIndexOfChar ('.'))
        return {};
    const auto decimals =
        typed.containsChar ('.') ? typed.fromLastOccurrenceOf (".", false, false).length() : 0;
    return Number { typed.getDoubleValue(), std::pow (10.0, -decimals) };
}

/** "120-126", ">3", "128". @returns nothing for what is no number; no limits for what is still being typed */
std::optional<QueryTerms::Range> rangeOf (SongField field, const juce::String& text)
{
    QueryTerms::Range range { field, -noLimit, noLimit };
    const auto comparison = text.initialSectionContainingOnly ("<>=");
    const auto rest = text.substring (comparison.length());
    if (rest.isEmpty())
        return range;
    // A tempo shown as 128 lies within half a step of it; years and stars have no parts.
    const auto halfOf = [field] (const Number& number)
    { return field == SongField::bpm ? 0.5 * number.step : 0.0; };
    const auto least = [&] (const Number& number) { return number.value - halfOf (number); };
    const auto most = [&] (const Number& number)
    { return std::nextafter (number.value + halfOf (number), halfOf (number) > 0.0 ? 0.0 : noLimit); };
    if (comparison.isNotEmpty() && comparison != "=")
    {
        const auto number = numberOf (rest);
        if (!number)
            return {};
        if (comparison == ">")
            range.least = std::nextafter (number->value, noLimit);
        else if (comparison == "<")
            range.most = std::nextafter (number->value, -noLimit);
        else if (comparison == ">=")
            range.least = number->value;
        else if (comparison == "<=")
            range.most = number->value;
        else
            return {};
        return range;
    }
    if (const auto dash = rest.indexOfChar ('-'); dash >= 0)
    {
        const auto from = rest.substring (0, dash), to = rest.substring (dash + 1);
        auto low = numberOf (from), high = numberOf (to);
        if ((from.isNotEmpty() && !low) || (to.isNotEmpty() && !high))
            return {};
        if (low && high && low->value > high->value)
            std::swap (low, high); // typed the other way round
        if (low)
            range.least = low->value;
        if (high)
            range.most = most (*high);
        return range;
    }
    const auto number = numberOf (rest);
    if (!number)
        return {};
    range.least = least (*number);
    range.most = most (*number);
    return range;
}

/** @returns false if the part is no condition after all */
bool takeCondition (const Prefix& prefix, const juce::String& value, QueryTerms& terms)
{
    switch (prefix.meaning)
    {
    case Meaning::number:
    {
        const auto range = rangeOf (prefix.field, value);
        if (range)
            terms.ranges.push_back (*range);
        return range.has_value();
    }
    case Meaning::choice:
    {
        QueryTerms::Choice choice { prefix.field, {} };
        for (const auto& each : juce::StringArray::fromTokens (value, ",", {}))
            if (each.trim().isNotEmpty())
                choice.folded.push_back (FoldedText::of (each.trim().toStdString()));
        if (!choice.folded.empty())
            terms.choices.push_back (choice);
        return true;
    }
    case Meaning::word:
        break;
    }
    if (value.isNotEmpty())
        terms.words.push_back ({ FoldedText::of (value.toStdString()), prefix.field });
    return true;
}

bool takeAsCondition (const juce::String& part, QueryTerms& terms)
{
    const auto colon = part.indexOfChar (':');
    for (const auto& prefix : prefixes)
        if (part.substring (0, juce::jmax (0, colon)).equalsIgnoreCase (prefix.name))
            return takeCondition (prefix, part.substring (colon + 1), terms);
    return false;
}
}

QueryTerms QueryTerms::parse (const juce::String& typed)
{
    QueryTerms terms;
    for (const auto& part : partsOf (typed))
        if (!takeAsCondition (part, terms))
            if (auto folded = FoldedText::of (part.toStdString()); !folded.empty())
                terms.words.push_back ({ std::move (folded) });
    return terms;
}
