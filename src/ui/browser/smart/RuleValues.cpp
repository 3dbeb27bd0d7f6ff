#include "ui/browser/smart/RuleValues.h"

#include <array>

namespace RuleValues
{
namespace
{
using O = SmartOperator;

constexpr std::array textOperators { O::contains, O::doesNotContain, O::is,
                                     O::isNot,    O::startsWith,     O::endsWith };
constexpr std::array numberOperators { O::is, O::isNot, O::isGreaterThan, O::isLessThan, O::isInTheRange };
constexpr std::array dateOperators { O::is,          O::isNot,          O::isAfter,     O::isBefore,
                                     O::isInTheLast, O::isNotInTheLast, O::isInTheRange };

constexpr juce::int64 msPerSecond = 1000;

juce::String storedDate (const juce::String& typed)
{
    const auto parts = juce::StringArray::fromTokens (typed, "-./", {});
    if (parts.size() != 3)
        return {};
    const auto day = parts[0].getIntValue(), month = parts[1].getIntValue(), year = parts[2].getIntValue();
    if (day < 1 || day > 31 || month < 1 || month > 12 || year < 1970 || year > 9999)
        return {};
    return juce::String (juce::Time (year, month - 1, day, 0, 0).toMilliseconds() / msPerSecond);
}

juce::String storedTime (const juce::String& typed)
{
    const auto minutes = typed.upToFirstOccurrenceOf (":", false, false).trim(),
               seconds = typed.fromFirstOccurrenceOf (":", false, false).trim();
    if (minutes.isEmpty() || !(minutes + seconds).containsOnly ("0123456789"))
        return {};
    return juce::String (minutes.getIntValue() * 60 + seconds.getIntValue());
}
}

std::span<const SmartOperator> operatorsOf (SmartType type)
{
    if (type == SmartType::text)
        return textOperators;
    return type == SmartType::date ? std::span<const SmartOperator> (dateOperators)
                                   : std::span<const SmartOperator> (numberOperators);
}

Form formOf (SmartType type, SmartOperator how)
{
    switch (type)
    {
    case SmartType::text:
        return Form::text;
    case SmartType::number:
        return Form::number;
    case SmartType::date:
        return how == O::isInTheLast || how == O::isNotInTheLast ? Form::lately : Form::date;
    case SmartType::rating:
        return Form::stars;
    case SmartType::time:
        return Form::time;
    }
    return Form::text;
}

juce::String toField (const juce::String& stored, Form form)
{
    if (stored.isEmpty())
        return {};
    if (form == Form::date)
        return juce::Time (stored.getLargeIntValue() * msPerSecond).formatted ("%d-%m-%Y");
    if (form == Form::time)
        return juce::String (stored.getIntValue() / 60).paddedLeft ('0', 2) + ":"
               + juce::String (stored.getIntValue() % 60).paddedLeft ('0', 2);
    return stored;
}

juce::String fromField (const juce::String& typed, Form form)
{
    if (form == Form::date)
        return storedDate (typed);
    return form == Form::time ? storedTime (typed) : typed;
}
}
