#include "library/smart/SmartField.h"
#include "library/smart/SmartPlaylist.h"
#include "library/sql/StoredText.h"

#include <limits>

namespace
{
constexpr int64_t daySeconds = 86400;
constexpr const char* now = "strftime('%s','now')";

int64_t saturated (__int128 value)
{
    using Limits = std::numeric_limits<int64_t>;
    return value > Limits::max()   ? Limits::max()
           : value < Limits::min() ? Limits::min()
                                   : static_cast<int64_t> (value);
}

/** The number at the text's start, 0 if there is none; beyond 64 bits the nearest. */
int64_t integerOf (const juce::String& text)
{
    auto c = text.getCharPointer().findEndOfWhitespace();
    const auto isNegative = *c == '-';
    if (isNegative)
        ++c;
    int64_t value = 0;
    for (; *c >= '0' && *c <= '9'; ++c)
        value = saturated (static_cast<__int128> (value) * 10 + (isNegative ? '0' - *c : *c - '0'));
    return value;
}

juce::String dayAfter (const juce::String& seconds)
{
    return juce::String (saturated (static_cast<__int128> (integerOf (seconds)) + daySeconds));
}

/** The text if it is a plain number, else nothing. */
juce::String numberOf (const juce::String& text)
{
    const auto number = text.trim();
    const auto digits = number.startsWithChar ('-') ? number.substring (1) : number;
    const auto isNumber = digits.containsOnly ("0123456789.") && digits.containsAnyOf ("0123456789")
                          && digits.indexOfChar ('.') == digits.lastIndexOfChar ('.');
    return isNumber ? number : juce::String();
}

juce::String textCondition (const SmartRule& rule)
{
    const juce::String value (StoredText::escaped (rule.value1));
    switch (static_cast<SmartOperator> (rule.operatorNumber))
    {
    case SmartOperator::contains:
        return " LIKE '%" + value + "%'";
    case SmartOperator::doesNotContain:
        return " NOT LIKE '%" + value + "%'";
    case SmartOperator::is:
        return " LIKE '" + value + "'";
    case SmartOperator::isNot:
        return " NOT LIKE '" + value + "'";
    case SmartOperator::startsWith:
        return " LIKE '" + value + "%'";
    case SmartOperator::endsWith:
        return " LIKE '%" + value + "'";
    default:
        return {};
    }
}

juce::String numberCondition (const SmartRule& rule)
{
    const auto value1 = numberOf (rule.value1), value2 = numberOf (rule.value2);
    if (value1.isEmpty())
        return {};
    switch (static_cast<SmartOperator> (rule.operatorNumber))
    {
    case SmartOperator::is:
        return " = " + value1;
    case SmartOperator::isNot:
        return " <> " + value1;
    case SmartOperator::isGreaterThan:
        return " > " + value1;
    case SmartOperator::isLessThan:
        return " < " + value1;
    case SmartOperator::isInTheRange:
        return value2.isEmpty() ? juce::String() : " BETWEEN " + value1 + " AND " + value2;
    default:
        return {};
    }
}

juce::String dateCondition (const SmartRule& rule)
{
    const juce::String day (integerOf (rule.value1));
    const auto period =
        static_cast<__int128> (integerOf (rule.value1)) * unitSeconds (integerOf (rule.value2));
    const auto lately = juce::String (now) + " - " + juce::String (saturated (period)) + " AND " + now;
    switch (static_cast<SmartOperator> (rule.operatorNumber))
    {
    case SmartOperator::is:
        return " BETWEEN " + day + " AND " + dayAfter (rule.value1);
    case SmartOperator::isNot:
        return " NOT BETWEEN " + day + " AND " + dayAfter (rule.value1);
    case SmartOperator::isAfter:
        return " > " + dayAfter (rule.value1);
    case SmartOperator::isBefore:
        return " < " + day;
    case SmartOperator::isInTheLast:
        return " BETWEEN " + lately;
    case SmartOperator::isNotInTheLast:
        return " NOT BETWEEN " + lately;
    case SmartOperator::isInTheRange:
        return " BETWEEN " + day + " AND " + dayAfter (rule.value2);
    default:
        return {};
    }
}

/** A rule's condition on its column, or nothing for a broken rule. */
juce::String conditionOf (const SmartRule& rule)
{
    const auto field = static_cast<SongField> (rule.field);
    if (!hasColumn (field))
        return {};
    const auto type = smartTypes[static_cast<size_t> (rule.field)];
    const auto condition = type == SmartType::text   ? textCondition (rule)
                           : type == SmartType::date ? dateCondition (rule)
                                                     : numberCondition (rule);
    return condition.isEmpty() ? condition : nameOf (columnOf (field)) + condition;
}

/** True for what may stand in an order clause: the text may come out of any document. */
bool isOrder (const juce::String& field)
{
    return field == randomOrder || fieldOfColumn (field.toStdString()).has_value();
}
}

juce::String buildSql (const SmartPlaylist& playlist)
{
    if (playlist.rules.empty() && !playlist.limited)
        return {};

    juce::StringArray conditions;
    for (const auto& rule : playlist.rules)
    {
        const auto condition = conditionOf (rule);
        const auto neutral = playlist.matchAll ? "'1'" : "'0'";
        conditions.add ("(" + (condition.isEmpty() ? juce::String (neutral) : condition) + ")");
    }
    if (conditions.isEmpty())
        conditions.add ("('1')"); // a limit alone takes from all songs

    auto sql = " " + conditions.joinIntoString (playlist.matchAll ? " AND " : " OR ");
    if (playlist.limited)
    {
        if (isOrder (playlist.orderField))
            sql << " ORDER BY " << playlist.orderField << (playlist.ascending ? "" : " DESC");
        sql << " LIMIT " << playlist.limit;
    }
    return sql + "; ";
}
