#include "library/sql/SqlFunctions.h"

#include "library/sql/LetterCase.h"
#include "support/music/KeyName.h"

#include <sqlite3.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace
{
/** Longer patterns are refused, as SQLite does. */
constexpr int longestPattern = 50'000;

std::string_view textOf (sqlite3_value* value)
{
    const auto* text = reinterpret_cast<const char*> (sqlite3_value_text (value));
    return { text, static_cast<size_t> (sqlite3_value_bytes (value)) };
}

template <std::string (*convert) (std::string_view)>
void convertText (sqlite3_context* context, int, sqlite3_value** values)
{
    if (sqlite3_value_type (values[0]) == SQLITE_NULL)
        return;
    const auto text = convert (textOf (values[0]));
    sqlite3_result_text (context, text.data(), static_cast<int> (text.size()), SQLITE_TRANSIENT);
}

/** The statement keeps the pattern from row to row. */
const LetterCase::Pattern& patternOf (sqlite3_context* context, sqlite3_value* value)
{
    if (const auto* kept = static_cast<LetterCase::Pattern*> (sqlite3_get_auxdata (context, 0)))
        return *kept;
    sqlite3_set_auxdata (context, 0, new LetterCase::Pattern (textOf (value)),
                         [] (void* old) { delete static_cast<LetterCase::Pattern*> (old); });
    // SQLite keeps nothing where the pattern changes from row to row.
    if (const auto* kept = static_cast<LetterCase::Pattern*> (sqlite3_get_auxdata (context, 0)))
        return *kept;
    thread_local std::optional<LetterCase::Pattern> last;
    return last.emplace (textOf (value));
}

void like (sqlite3_context* context, int, sqlite3_value** values)
{
    if (sqlite3_value_type (values[0]) == SQLITE_NULL || sqlite3_value_type (values[1]) == SQLITE_NULL)
        return;
    if (sqlite3_value_bytes (values[0]) > longestPattern)
        return sqlite3_result_error (context, "LIKE pattern too long", -1);
    sqlite3_result_int (context, patternOf (context, values[0]).matches (textOf (values[1])) ? 1 : 0);
}
}

void SqlFunctions::add (sqlite3* handle)
{
    using Function = void (*) (sqlite3_context*, int, sqlite3_value**);
    struct Named
    {
        const char* name;
        int arguments;
        Function function;
    };
    for (const auto& [name, arguments, function] :
         { Named { "upper", 1, convertText<LetterCase::upper> },
           Named { "lower", 1, convertText<LetterCase::lower> },
           Named { "key_order", 1, convertText<KeyName::sortText> }, Named { "like", 2, like } })
        // Refused only without memory: then SQLite's own stay, and sorting by key fails.
        static_cast<void> (sqlite3_create_function_v2 (handle, name, arguments,
                                                       SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                                       nullptr, function, nullptr, nullptr, nullptr));
}
