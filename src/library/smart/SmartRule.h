#pragma once

#include "support/language/Translate.h"

#include <juce_core/juce_core.h>

#include <array>
#include <cstdint>
#include <string_view>

/** One condition of a smart playlist. Any number and any text may stand in it: a rule that makes no sense is a broken
    rule, which changes nothing. */
struct SmartRule
{
    /** The number of a SongField, -1 for an unknown one. */
    int32_t field = -1;

    /** The number of an operator, -1 for an unknown one. */
    int32_t operatorNumber = -1;

    juce::String value1, value2;

    bool operator== (const SmartRule&) const = default;
};

/** The operators of rules by their numbers. */
enum class SmartOperator : int32_t
{
    contains,
    doesNotContain,
    is,
    isNot,
    startsWith,
    endsWith,
    isGreaterThan,
    isLessThan,
    isAfter,
    isBefore,
    isInTheLast,
    isNotInTheLast,
    isInTheRange
};

/** The words of the operators, in views and documents, by their numbers. */
inline constexpr std::array<const char*, 13> operatorNames {
    N_ ("contains"),        N_ ("does not contain"), N_ ("is"),
    N_ ("is not"),          N_ ("starts with"),      N_ ("ends with"),
    N_ ("is greater than"), N_ ("is less than"),     N_ ("is after"),
    N_ ("is before"),       N_ ("is in the last"),   N_ ("is not in the last"),
    N_ ("is in the range")
};

/** The number of an operator's name, or -1. */
constexpr int32_t operatorOfName (std::string_view name)
{
    for (size_t i = 0; i < operatorNames.size(); ++i)
        if (name == operatorNames[i])
            return static_cast<int32_t> (i);
    return -1;
}

/** Seconds of a unit of "is in the last" and "is not in the last", by the number in a rule's second value. */
constexpr int64_t unitSeconds (int64_t unit)
{
    return unit == 0 ? 86400 : unit == 1 ? 2592000 : 31536000;
}
