#include "LibraryFixture.h"

#include "library/sql/StoredText.h"

namespace
{
juce::String bytes (const std::string& text)
{
    return { juce::CharPointer_UTF8 (text.data()), juce::CharPointer_UTF8 (text.data() + text.size()) };
}

/** Texts that tags, paths and users really have, and those that only an attacker has. */
std::vector<juce::String> oddTexts()
{
    return { "it's",
             "''",
             "'; DROP TABLE songs; --",
             "100%_\\%s%d%n",
             "\"quoted\" `ticks` [brackets] :a ?1 @b $c",
             "line\nline\r\ttab",
             bytes ("\xc3\xa9 \xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x8e\xa7"),
             bytes ("latin \xe9t\xe9"),
             bytes ("\xff\xfe\xe2'\xf0\x9f'\xc3"),
             bytes (std::string ("cut\0 here'", 10)),
             juce::String::repeatedString ("x'", 50'000),
             "ORDER BY LIMIT" };
}

using OddText = LibraryFixture;
}

TEST_F (OddText, SurvivesEveryOperation)
{
    constexpr SongField everyText[] { SongField::title, SongField::artist, SongField::grouping };
    constexpr auto sort = SongField::title;
    for (const auto& text : oddTexts())
    {
        SCOPED_TRACE (text.substring (0, 30));
        const auto shown = StoredText::read (text.toRawUTF8());
        const auto path = "/" + text;
        Values values;
        for (int i = 0; i < songColumnCount; ++i)
            if (const auto column = static_cast<SongColumn> (i);
                infoOf (column).type == SongColumnType::text && column != SongColumn::filename)
                values.emplace_back (column, text);
        const auto id = add (path, values);
        ASSERT_GT (id, 0);
        SongRecord song;
        EXPECT_EQ (database.readSong (id, song), 0);
        for (const auto& value : values)
            EXPECT_EQ (song[value.first], shown);

        song[SongColumn::filename] = path;
        ok ({ database.updateSong (song), database.setTextField (SongField::grouping, id, text) });
        EXPECT_EQ (this->text (id, SongField::grouping), shown);
        EXPECT_EQ (database.countFilename (path), 1);
        EXPECT_EQ (database.countWhere (SongField::grouping, text), 1);
        SongListEntry entry;
        EXPECT_EQ (database.findByFilename (path, entry), 0);
        EXPECT_EQ (entry.songId, id);

        SongList list (SongListKind::album);
        EXPECT_EQ (database.fillByField (text, SongField::grouping, &list, sort, true), 0);
        EXPECT_EQ (list.songIds(), std::vector<int32_t> { id });
        juce::String longest;
        EXPECT_EQ (database.longestValue (SongField::title, &list, longest), 0);
        EXPECT_EQ (longest, shown);
        juce::StringArray distinct;
        EXPECT_EQ (database.listDistinct (SongField::grouping, distinct), 0);
        EXPECT_TRUE (distinct.contains (shown));

        // Patterns end at 50,000 bytes.
        const auto term = text.getNumBytesAsUTF8() < 50'000;
        const auto found = [&] (int code)
        {
            EXPECT_EQ (code == 0, term);
            const auto ids = list.songIds();
            return !term || std::find (ids.begin(), ids.end(), id) != ids.end();
        };
        EXPECT_TRUE (found (database.searchLibrary (&list, everyText, text, sort, true)));
        EXPECT_TRUE (found (
            database.searchWithinField (&list, SongField::grouping, text, everyText, text, sort, true)));

        int32_t playlist = -1, smart = -1;
        ok ({ database.createPlaylist (text, nullptr, 1, &playlist), database.renamePlaylist (playlist, text),
              database.createForeignPlaylist (text, nullptr, 1),
              database.addFilesToPlaylist (playlist, { path }) });
        EXPECT_TRUE (found (database.searchPlaylist (&list, playlist, everyText, text, sort, true)));
        std::vector<SourceItem> items;
        EXPECT_EQ (database.listPlaylists (items), 0);
        EXPECT_EQ (items.back().name, shown);

        const juce::String condition (" (grouping = " + juce::String (StoredText::quoted ("x")) + "); ");
        ok ({ database.createSmartPlaylist (text, condition, text, 1, &smart),
              database.renameSmartPlaylist (smart, text) });
        juce::String rules;
        ok ({ database.setSmartRules (smart, text), database.getSmartRules (smart, rules) });
        EXPECT_EQ (rules, shown);
        EXPECT_EQ (database.setSmartSql (smart, " (grouping = " + bytes (StoredText::quoted (text)) + "); "),
                   0);
        const auto code = database.fillSmartPlaylist (&list, smart, sort, true);
        EXPECT_TRUE (shown != text || (code == 0 && list.size() == 1)) << code;

        const SongList layoutOf (SongListKind::library);
        ok ({ database.saveLayout (&layoutOf, text, text), database.loadSelection (&layoutOf, rules) });
        EXPECT_EQ (rules, shown);

        auto foreign = song;
        ok ({ database.insertForeignSong (foreign), database.readForeignSong (id, foreign) });
        EXPECT_EQ (foreign[SongColumn::title], shown);
        ok ({ database.deletePlaylist (playlist), database.deleteSong (id), database.countFilename (path) });
    }
    EXPECT_EQ (database.countSongs(), 0);
    EXPECT_EQ (ask ("PRAGMA integrity_check"), "ok");
}

TEST_F (OddText, WhatOtherProgramsStoredCanBeRead)
{
    const auto id = add ("/a");
    SqlConnection other;
    ASSERT_EQ (other.open (file.getFullPathName()), 0);
    const struct
    {
        const char *stored, *shown;
    } rows[] { { "CAST(x'61006227' AS TEXT)", "a" },
               { "x'c3a9ff'", "\xc3\x83\xc2\xa9\xc3\xbf" },
               { "NULL", "" },
               { "12345678901", "12345678901" },
               { "1.5", "1.5" },
               { "x'e2'", "\xc3\xa2" } };
    for (const auto& row : rows)
    {
        ASSERT_EQ (other.run (std::string ("UPDATE songs SET title = ") + row.stored
                              + ", duration = " + row.stored + ", bpm = " + row.stored),
                   0);
        SongRecord song;
        EXPECT_EQ (database.readSong (id, song), 0);
        EXPECT_EQ (song[SongColumn::title], juce::CharPointer_UTF8 (row.shown));
        for (int field = 0; field <= songFieldCount; ++field)
            juce::ignoreUnused (SongDatabase::fieldText (song, static_cast<SongField> (field)));
        EXPECT_EQ (database.updateSong (song), 0);
    }
}
