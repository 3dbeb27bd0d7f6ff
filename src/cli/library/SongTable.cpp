#include "cli/library/SongTable.h"

#include "cli/TerminalOutput.h"
#include "library/sql/StoredText.h"
#include "support/Suggestion.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace
{
constexpr const char* usualColumns = "artist,title,album,genre,bpm,key,duration,rating,playcount,filename";

/** Lines in memory at a time. */
constexpr int rowsAtOnce = 5000;

/** Adds what the row has in a column to a line, as oneLine() leaves it. */
void addCell (std::string& line, const SqlRow& row, int at, SongColumn column)
{
    if (infoOf (column).type == SongColumnType::real)
    {
        line += StoredText::withTwoDecimals (row.real (at)).toRawUTF8();
        return;
    }
    // Most cells need no look at their letters one by one.
    const auto bytes = row.bytes (at);
    if (std::all_of (bytes.begin(), bytes.end(), [] (char c) { return c >= ' ' && c <= '~'; }))
        line += bytes;
    else
        line += oneLine (row.text (at)).toRawUTF8();
}

std::optional<SongColumn> columnNamed (const juce::String& name)
{
    const auto found = std::find_if (songColumns.begin(), songColumns.end(),
                                     [&name] (const SongColumnInfo& info) { return name == info.name; });
    if (found == songColumns.end())
        return {};
    return static_cast<SongColumn> (found - songColumns.begin());
}
}

std::optional<SongTable> SongTable::withColumns (const VerbOptions& given)
{
    SongTable table;
    const auto wanted = given.has ("--columns") ? given.valueOf ("--columns") : juce::String (usualColumns);
    if (wanted == "all")
    {
        for (int i = 0; i < songColumnCount; ++i)
            table.columns.push_back (static_cast<SongColumn> (i));
        return table;
    }
    for (const auto& name : juce::StringArray::fromTokens (wanted, ",", {}))
    {
        const auto column = columnNamed (name.trim());
        if (!column)
        {
            juce::StringArray names;
            for (const auto& info : songColumns)
                names.add (info.name);
            failWith (tr ("There is no column %1; there are %2.%3", name.trim().quoted(),
                          names.joinIntoString (", "), didYouMean (name.trim(), names)));
            return {};
        }
        table.columns.push_back (*column);
    }
    return table;
}

int SongTable::unreadable (int code)
{
    return failWith (tr ("The list can't be read (code %1).", code));
}

int SongTable::print (SongDatabase& database, const SongList& list) const
{
    juce::StringArray cells;
    for (const auto column : columns)
        cells.add (nameOf (column));
    printLine (cells.joinIntoString ("\t"));

    for (int first = 0; first < list.size(); first += rowsAtOnce)
    {
        // Of a song that is gone meanwhile.
        const std::string nothing (std::max<size_t> (columns.size(), 1) - 1, '\t');
        std::vector<std::string> lines (static_cast<size_t> (std::min (rowsAtOnce, list.size() - first)),
                                        nothing);
        const auto code =
            database.scanEntries (list, first, first + rowsAtOnce, columns,
                                  [&] (int place, const SqlRow& row)
                                  {
                                      auto& line = lines[static_cast<size_t> (place - first)];
                                      line.clear();
                                      for (int i = 0; i < static_cast<int> (columns.size()); ++i)
                                      {
                                          if (i > 0)
                                              line += '\t';
                                          addCell (line, row, i, columns[static_cast<size_t> (i)]);
                                      }
                                  });
        if (code != LibraryCode::ok)
            return unreadable (code);
        std::string text;
        for (const auto& line : lines)
            text += line + '\n';
        std::fwrite (text.data(), 1, text.size(), stdout);
    }
    return ExitCode::success;
}
