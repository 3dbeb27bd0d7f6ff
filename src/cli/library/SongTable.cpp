#include "cli/library/SongTable.h"

#include "cli/TerminalOutput.h"
#include "support/Suggestion.h"
#include "support/language/Translate.h"

#include <algorithm>

namespace
{
constexpr const char* usualColumns = "artist,title,album,genre,bpm,key,duration,rating,playcount,filename";

/** Records in memory at a time. */
constexpr int rowsAtOnce = 1000;

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

    std::vector<SongRecord> songs;
    for (int first = 0; first < list.size(); first += rowsAtOnce)
    {
        songs.clear();
        if (const auto code =
                database.readSongs (&list, first, first + rowsAtOnce, songs, SongDatabase::Presence::skipped);
            code != 0)
            return unreadable (code);
        for (const auto& song : songs)
        {
            cells.clearQuick();
            for (const auto column : columns)
                cells.add (oneLine (song[column]));
            printLine (cells.joinIntoString ("\t"));
        }
    }
    return ExitCode::success;
}
