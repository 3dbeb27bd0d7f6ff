#pragma once

#include "cli/VerbOptions.h"
#include "library/database/SongDatabase.h"
#include "support/language/Translate.h"

#include <optional>
#include <vector>

/** Prints songs as lines with tabs between the columns, below a line with the columns' names. Numbers stand as they are
    stored: durations in seconds, sizes in bytes, dates in seconds since 1970. */
class SongTable
{
public:
    inline static constexpr VerbOption columnsOption { "--columns", "NAMES",
                                                       N_ ("column names with commas between, or all") };

    /** @returns nothing, after a report, for a column that there isn't */
    static std::optional<SongTable> withColumns (const VerbOptions&);

    /** Reports that a list can't be read. @returns the exit code */
    static int unreadable (int code);

    /** @returns the exit code */
    int print (SongDatabase&, const SongList&) const;

private:
    std::vector<SongColumn> columns;
};
