#include "library/database/QueryText.h"

#include "library/sql/StoredText.h"

#include <algorithm>
#include <string_view>

namespace
{
constexpr std::string_view orderBy (" ORDER BY ");

/** Finds the last place of a word that is not inside a quoted value, or the end of the text. */
size_t findOutsideQuotes (const std::string& sql, std::string_view word)
{
    auto found = sql.size();
    auto quoted = false;
    for (size_t i = 0; i < sql.size(); ++i)
    {
        if (sql[i] == '\'')
            quoted = !quoted;
        else if (!quoted && sql.compare (i, word.size(), word) == 0)
            found = i;
    }
    return found;
}

/** The end of a statement's text, before its ";". */
size_t endOfStatement (const std::string& sql)
{
    const auto last = sql.find_last_not_of ("; \n\t\r");
    return last == std::string::npos ? 0 : last + 1;
}
}

std::string QueryText::sortClause (SongField field, bool ascending, const LinkTable* links)
{
    const std::string direction (ascending ? " asc" : " desc");
    if (!hasColumn (field))
        return links == nullptr ? std::string() : std::string (orderBy) + links->links + ".id" + direction;
    const auto& column = infoOf (columnOf (field));
    const std::string name (column.name);
    const auto text = "UPPER(" + name + ")";
    return std::string (orderBy)
           + (field == SongField::key               ? "KEY_ORDER(" + text + ")"
              : column.type == SongColumnType::text ? text
                                                    : name)
           + direction;
}

std::string QueryText::likeTerms (std::span<const SongField> fields, const juce::String& term)
{
    std::string text;
    for (const auto field : fields)
        text += std::string (text.empty() ? "" : " OR") + " " + nameOf (columnOf (field)) + " LIKE '%"
                + StoredText::escaped (term) + "%'";
    return text;
}

std::string QueryText::sortedSmartQuery (const std::string& stored, const std::string& sortClause)
{
    if (sortClause.empty())
        return stored;
    auto clause = sortClause;
    if (findOutsideQuotes (stored, orderBy) != stored.size())
        clause.replace (0, orderBy.size(), ",");
    const auto limit = findOutsideQuotes (stored, " LIMIT");
    const auto place = std::min (limit, endOfStatement (stored));
    return stored.substr (0, place) + clause + stored.substr (place);
}
