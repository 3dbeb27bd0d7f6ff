#include "library/smart/SmartPlaylist.h"
#include "library/database/SongDatabase.h"
#include "library/smart/SmartField.h"

#include <gtest/gtest.h>

namespace
{
SmartPlaylist withRule (const SmartRule& rule)
{
    SmartPlaylist playlist;
    playlist.rules = { rule };
    return playlist;
}

SmartRule ruleOn (SongField field, SmartOperator op, const char* value1, const char* value2 = "")
{
    return { static_cast<int32_t> (field), static_cast<int32_t> (op), value1, value2 };
}

struct Operators
{
    std::initializer_list<SmartType> types;
    const char *value1, *value2;
    std::array<const char*, 13> conditions; ///< empty where the type has no such operator
};

const Operators tables[] {
    { { SmartType::text },
      "O'B%",
      "",
      { " LIKE '%O''B%%'", " NOT LIKE '%O''B%%'", " LIKE 'O''B%'", " NOT LIKE 'O''B%'", " LIKE 'O''B%%'",
        " LIKE '%O''B%'", "", "", "", "", "", "", "" } },
    { { SmartType::number, SmartType::rating, SmartType::time },
      "12",
      "34.5",
      { "", "", " = 12", " <> 12", "", "", " > 12", " < 12", "", "", "", "", " BETWEEN 12 AND 34.5" } },
    { { SmartType::date },
      "1000",
      "1",
      { "", "", " BETWEEN 1000 AND 87400", " NOT BETWEEN 1000 AND 87400", "", "", "", "", " > 87400",
        " < 1000", " BETWEEN strftime('%s','now') - 2592000000 AND strftime('%s','now')",
        " NOT BETWEEN strftime('%s','now') - 2592000000 AND strftime('%s','now')",
        " BETWEEN 1000 AND 86401" } },
};
}

TEST (SmartPlaylist, EveryFieldAndOperatorGivesItsConditionAndRunsInTheDatabase)
{
    SongDatabase database;
    ASSERT_EQ (database.open ({}, SongDatabase::Storage::memory), LibraryCode::ok);
    auto combinations = 0;
    for (int32_t field = 0; field < songFieldCount; ++field)
        for (const auto& table : tables)
            for (const auto type : table.types)
                for (int32_t op = 0; op < 13 && type == smartTypes[static_cast<size_t> (field)];
                     ++op, ++combinations)
                {
                    auto playlist = withRule ({ field, op, table.value1, table.value2 });
                    const juce::String condition (table.conditions[static_cast<size_t> (op)]);
                    const auto* column = nameOf (columnOf (static_cast<SongField> (field)));
                    const auto sql =
                        condition.isEmpty() ? juce::String (" ('1'); ") : " (" + (column + condition) + "); ";
                    EXPECT_EQ (buildSql (playlist), sql);

                    SmartPlaylist again;
                    EXPECT_TRUE (parseXml (buildXml (playlist), again));
                    EXPECT_EQ (again, playlist) << buildXml (playlist);

                    playlist.limited = true;
                    playlist.limit = 3;
                    int32_t id = -1;
                    SongList list (SongListKind::smartPlaylist);
                    EXPECT_EQ (
                        database.createSmartPlaylist ("x", buildSql (playlist), buildXml (playlist), 5, &id),
                        0);
                    EXPECT_EQ (database.fillSmartPlaylist (&list, id, SongField::title, false), 0) << sql;
                }
    EXPECT_EQ (combinations, 24 * 13);
}

TEST (SmartPlaylist, RulesOrderAndLimitMakeOneQuery)
{
    const auto year = ruleOn (SongField::year, SmartOperator::is, "1999");
    const auto key = ruleOn (SongField::key, SmartOperator::startsWith, "A");
    const auto played = [] (const char* count, const char* unit)
    { return ruleOn (SongField::lastPlayed, SmartOperator::isNotInTheLast, count, unit); };
    const SmartRule broken[] { { -1, 2, "x", "" },
                               { 24, 2, "x", "" },
                               { 0, -1, "x", "" },
                               { 0, 13, "x", "" },
                               ruleOn (SongField::bpm, SmartOperator::is, ""),
                               ruleOn (SongField::bpm, SmartOperator::is, "1; DELETE FROM songs"),
                               ruleOn (SongField::bpm, SmartOperator::isInTheRange, "1", "or 1"),
                               ruleOn (SongField::bpm, SmartOperator::is, "1.2.3") };
    const std::pair<SmartPlaylist, const char*> playlists[] {
        { {}, "" },
        { { {}, true, true, 7, "album", true }, " ('1') ORDER BY album LIMIT 7; " },
        { { { year, key }, true }, " (year = 1999) AND (key LIKE 'A%'); " },
        { { { year, key }, false, true, 9, "RANDOM()", true },
          " (year = 1999) OR (key LIKE 'A%') ORDER BY RANDOM() LIMIT 9; " },
        { { { year }, true, true, 1, "bpm", false }, " (year = 1999) ORDER BY bpm DESC LIMIT 1; " },
        { { { year }, true, true, 1, "bpm; DROP TABLE songs", false }, " (year = 1999) LIMIT 1; " },
        { { { played ("3", "0") } },
          " (lastplayed NOT BETWEEN strftime('%s','now') - 259200 AND strftime('%s','now')); " },
        { { { played ("3", "2") } },
          " (lastplayed NOT BETWEEN strftime('%s','now') - 94608000 AND strftime('%s','now')); " },
        { { { played ("9223372036854775807", "1") } },
          " (lastplayed NOT BETWEEN strftime('%s','now') - 9223372036854775807 AND strftime('%s','now')); " },
    };
    for (const auto& [playlist, sql] : playlists)
        EXPECT_EQ (buildSql (playlist), sql);
    for (const auto& rule : broken)
    {
        auto playlist = withRule (rule);
        EXPECT_EQ (buildSql (playlist), " ('1'); ");
        playlist.matchAll = false;
        EXPECT_EQ (buildSql (playlist), " ('0'); ");
    }
}

TEST (SmartPlaylist, TheDefaultsComeOutOfTheBuilderToTheCharacter)
{
    const auto is = [] (SongField field, SmartOperator op, const char* value1, const char* value2,
                        bool limited, const char* order)
    {
        auto playlist = withRule (ruleOn (field, op, value1, value2));
        playlist.limit = 25;
        playlist.limited = limited;
        playlist.orderField = order;
        playlist.ascending = !limited;
        return playlist;
    };
    const std::pair<const char*, SmartPlaylist> defaults[] {
        { "Recently Played",
          is (SongField::lastPlayed, SmartOperator::isInTheLast, "2", "1", false, "RANDOM()") },
        { "Recently Added",
          is (SongField::dateAdded, SmartOperator::isInTheLast, "2", "1", false, "RANDOM()") },
        { "Top 25 Rated", is (SongField::rating, SmartOperator::isGreaterThan, "3", "5", true, "rating") },
        { "Top 25 Most Played",
          is (SongField::playCount, SmartOperator::isGreaterThan, "0", "0", true, "playcount") },
    };
    SongDatabase database;
    ASSERT_EQ (database.open ({}, SongDatabase::Storage::memory), LibraryCode::ok);
    std::vector<SourceItem> stored;
    database.listSmartPlaylists (stored);
    ASSERT_EQ (stored.size(), std::size (defaults));
    for (size_t i = 0; i < stored.size(); ++i)
    {
        const auto& [name, playlist] = defaults[i];
        juce::String rules;
        EXPECT_EQ (stored[i].name, name);
        EXPECT_EQ (database.getSmartRules (stored[i].id, rules), LibraryCode::ok);
        EXPECT_EQ (buildXml (playlist), rules);
        SmartPlaylist read;
        EXPECT_TRUE (parseXml (rules, read));
        EXPECT_EQ (read, playlist) << name;
    }
    EXPECT_EQ (buildSql (defaults[1].second),
               " (dateadded BETWEEN strftime('%s','now') - 5184000 AND strftime('%s','now')); ");
    EXPECT_EQ (buildSql (defaults[3].second), " (playcount > 0) ORDER BY playcount DESC LIMIT 25; ");
}

TEST (SmartPlaylist, DocumentsOfAnyKindAreReadOrLeftAlone)
{
    const auto start = ruleOn (SongField::title, SmartOperator::contains, "kept");
    for (const auto* text :
         { "", "<other/>", "<smartplaylist>", "<smartplaylist/><smartplaylist/>", "<a><smartplaylist/></a>" })
    {
        auto playlist = withRule (start);
        EXPECT_FALSE (parseXml (text, playlist)) << text;
        EXPECT_EQ (playlist, withRule (start)) << text;
    }
    SmartPlaylist playlist = withRule (start);
    EXPECT_TRUE (
        parseXml ("<smartplaylist><!-- --><match>one</match><rule field='none' operator='odd'/><rule/>"
                  "<rule field='title' value1='&#10;&apos;&lt;' operator='is'><rule/></rule>"
                  "<limit>99999999999999999999</limit></smartplaylist>",
                  playlist));
    const SmartPlaylist expected {
        { {}, {}, ruleOn (SongField::title, SmartOperator::is, "\n'<") }, false, true, 2147483647
    };
    EXPECT_EQ (playlist, expected);
    EXPECT_TRUE (buildXml (playlist).contains ("value1=\"&#10;&apos;&lt;\""));
    EXPECT_TRUE (parseXml ("<smartplaylist><limit>-5</limit></smartplaylist>", playlist));
    EXPECT_FALSE (playlist.limited);
}

TEST (SmartPlaylist, ALimitSelectsByItsOwnOrderAndADayIsWhole)
{
    SongDatabase database;
    ASSERT_EQ (database.open ({}, SongDatabase::Storage::memory), LibraryCode::ok);
    const char* titles[] { "d", "a", "c", "b" };
    for (int i = 0; i < 4; ++i)
    {
        SongRecord record;
        record[SongColumn::title] = titles[i];
        record[SongColumn::filename] = juce::String (titles[i]) + "'s.mp3";
        record[SongColumn::rating] = juce::String (i < 1 ? 1 : 5);
        ASSERT_EQ (database.insertSong (record), 0);
        database.setIntField (SongField::lastPlayed, i + 1, 86400 * i + 1000);
    }
    const auto titlesOf = [&] (const SmartPlaylist& playlist)
    {
        int32_t id = -1;
        SongList list;
        juce::String all;
        EXPECT_EQ (database.createSmartPlaylist ("x", buildSql (playlist), buildXml (playlist), 5, &id), 0);
        EXPECT_EQ (database.fillSmartPlaylist (&list, id, SongField::title, true), 0);
        for (const auto& entry : list.entries())
            all += titles[entry.songId - 1];
        return all;
    };
    EXPECT_EQ (titlesOf ({ {}, true, true, 2, "rating", false }), "ab");
    EXPECT_EQ (titlesOf ({ {}, true, true, 2, "rating", true }), "da");
    EXPECT_EQ (titlesOf (withRule (ruleOn (SongField::filename, SmartOperator::contains, "c'S"))), "c");
    EXPECT_EQ (titlesOf (withRule (ruleOn (SongField::lastPlayed, SmartOperator::is, "86400"))), "a");
    EXPECT_EQ (titlesOf (withRule (ruleOn (SongField::lastPlayed, SmartOperator::isAfter, "86400"))), "bc");
    EXPECT_EQ (titlesOf (withRule (ruleOn (SongField::rating, SmartOperator::isInTheRange, "5", "1"))), "");
}
