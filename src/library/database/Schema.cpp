#include "library/database/Schema.h"

#include "library/songs/SongColumn.h"
#include "library/sql/StoredText.h"
#include "support/language/Translate.h"

namespace
{
constexpr const char* smartNames[] { N_ ("Recently Played"), N_ ("Recently Added"), N_ ("Top 25 Rated"),
                                     N_ ("Top 25 Most Played") };

const char* sqlTypeOf (SongColumnType type)
{
    switch (type)
    {
    case SongColumnType::text:
        return "TEXT DEFAULT ''";
    case SongColumnType::real:
        return "REAL DEFAULT 0";
    case SongColumnType::integer:
        break;
    }
    return "INTEGER DEFAULT 0";
}

Schema::Table songTable (const std::string& create, const std::string& name)
{
    auto text = create + name + " (id INTEGER PRIMARY KEY AUTOINCREMENT";
    for (const auto& column : songColumns)
        text += std::string (", ") + column.name + " " + sqlTypeOf (column.type);
    Schema::Table table { text + ");", {}, {} };

    table.indexes.push_back ("CREATE UNIQUE INDEX songs_filename_idx on " + name + " (filename);");
    for (const std::string column : { "album", "artist", "bpm", "genre", "key", "title" })
        table.indexes.push_back ("CREATE INDEX songs_" + column + "_idx on " + name + " (" + column + ");");
    return table;
}

Schema::Table playlistTable (const std::string& create, const std::string& name)
{
    return { create + name
                 + " (id INTEGER PRIMARY KEY, name TEXT, sort_order INTEGER, table_layout TEXT, "
                   "last_row_selected TEXT);",
             {},
             {} };
}

Schema::Table linkTable (const std::string& create, const std::string& name)
{
    return { create + name + " (id INTEGER PRIMARY KEY, playlist_id INTEGER, song_id INTEGER);", {}, {} };
}

Schema::Table settingsTable()
{
    Schema::Table table { "CREATE TABLE settings (id INTEGER PRIMARY KEY, keyname STRING, the_value STRING);",
                          {},
                          {} };
    const char* const rows[] { "1, 'version', 100",
                               "2, 'library_table_layout', ''",
                               "3, 'library_last_row_selected', 0",
                               "4, 'automix_table_layout', ''",
                               "5, 'automix_last_row_selected', 0",
                               "6, 'recommendation_table_layout', ''",
                               "7, 'recommendation_last_row_selected', 0" };
    for (const auto* row : rows)
        table.whenNew.push_back (std::string (" INSERT INTO settings VALUES (") + row + "); ");
    return table;
}

std::string smartPlaylist (int sortOrder, const juce::String& name, const juce::String& sql,
                           const juce::String& rule, const juce::String& order)
{
    const auto rules = "<?xml version=\"1.0\" encoding=\"UTF-8\"?> <smartplaylist><match>all</match><rule "
                       + rule + "/><limit>25</limit><order " + order + "</order></smartplaylist>";
    return " INSERT INTO smart_playlists VALUES (NULL, " + StoredText::quoted (name) + ", "
           + StoredText::quoted (sql) + ", " + StoredText::quoted (rules) + ", " + std::to_string (sortOrder)
           + ", '', 0); ";
}
}

const std::vector<std::string>& Schema::pragmas()
{
    static const std::vector<std::string> all {
        "PRAGMA synchronous=OFF",        "PRAGMA page_size=4096",        "PRAGMA auto_vacuum=0",
        "PRAGMA cache_size=1024",        "PRAGMA case_sensitive_like=0", "PRAGMA count_changes=0",
        "PRAGMA legacy_file_format=OFF", "PRAGMA temp_store=MEMORY",
    };
    return all;
}

const std::vector<Schema::Table>& Schema::tables()
{
    static const std::vector<Table> all {
        settingsTable(),
        songTable ("CREATE TABLE IF NOT EXISTS ", "songs"),
        playlistTable ("CREATE TABLE ", "playlists"),
        linkTable ("CREATE TABLE ", "playlists_songs"),
        { "CREATE TABLE smart_playlists (id INTEGER PRIMARY KEY, name TEXT, sql_query TEXT, rules TEXT, "
          "sort_order INTEGER, table_layout TEXT, last_row_selected TEXT);",
          defaultSmartPlaylists(),
          {} },
        songTable ("CREATE TEMP TABLE IF NOT EXISTS ", "itunes_songs"),
        playlistTable ("CREATE TEMP TABLE ", "itunes_playlists"),
        linkTable ("CREATE TEMP TABLE ", "itunes_playlists_songs"),
        { "CREATE TABLE automix_songs (id INTEGER PRIMARY KEY, song_id INTEGER);", {}, {} },
        { "CREATE TEMP TABLE IF NOT EXISTS recommendation_songs (id INTEGER PRIMARY KEY, song_id INTEGER);",
          {},
          {} },
    };
    return all;
}

const std::vector<std::string>& Schema::defaultSmartPlaylists()
{
    const juce::String random ("apply=\"no\" direction=\"ascending\">RANDOM()");
    static const std::vector<std::string> all {
        smartPlaylist (1, smartNames[0],
                       " (lastplayed BETWEEN strftime('%s','now') - 5184000 AND strftime('%s','now')); ",
                       "field=\"lastplayed\" operator=\"is in the last\" value1=\"2\" value2=\"1\"", random),
        smartPlaylist (2, smartNames[1],
                       " (dateadded BETWEEN strftime('%s','now') - 5184000 AND strftime('%s','now')); ",
                       "field=\"dateadded\" operator=\"is in the last\" value1=\"2\" value2=\"1\"", random),
        smartPlaylist (3, smartNames[2], " (rating > 3) ORDER BY rating DESC LIMIT 25; ",
                       "field=\"rating\" operator=\"is greater than\" value1=\"3\" value2=\"5\"",
                       "apply=\"yes\" direction=\"descending\">rating"),
        smartPlaylist (4, smartNames[3], " (playcount > 0) ORDER BY playcount DESC LIMIT 25; ",
                       "field=\"playcount\" operator=\"is greater than\" value1=\"0\" value2=\"0\"",
                       "apply=\"yes\" direction=\"descending\">playcount"),
    };
    return all;
}

std::span<const char* const> Schema::defaultSmartNames()
{
    return smartNames;
}
