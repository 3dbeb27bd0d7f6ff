#include "LibraryFixture.h"

#include "library/database/QueryText.h"

using SmartLists = LibraryFixture;

TEST (SmartQuery, TheViewsSortGoesWhereItBelongs)
{
    const std::string sort (" ORDER BY UPPER(title) asc");
    const struct
    {
        const char *stored, *sorted;
    } rows[] {
        { " (a > 3) ORDER BY a DESC LIMIT 25; ", " (a > 3) ORDER BY a DESC,UPPER(title) asc LIMIT 25; " },
        { " (a > 3) LIMIT 25; ", " (a > 3) ORDER BY UPPER(title) asc LIMIT 25; " },
        { " (a > 3); ", " (a > 3) ORDER BY UPPER(title) asc; " },
        { " (a > 3)", " (a > 3) ORDER BY UPPER(title) asc" },
        { " (a LIKE 'NO LIMIT ORDER BY it''s'); ",
          " (a LIKE 'NO LIMIT ORDER BY it''s') ORDER BY UPPER(title) asc; " },
        { " (a LIKE 'x LIMIT') ORDER BY RANDOM() LIMIT 2; ",
          " (a LIKE 'x LIMIT') ORDER BY RANDOM(),UPPER(title) asc LIMIT 2; " },
        { "", " ORDER BY UPPER(title) asc" },
    };
    for (const auto& row : rows)
    {
        EXPECT_EQ (QueryText::sortedSmartQuery (row.stored, sort), row.sorted);
        EXPECT_EQ (QueryText::sortedSmartQuery (row.stored, ""), row.stored);
    }
}

TEST_F (SmartLists, DefaultsShowWhatTheySay)
{
    for (int i = 1; i <= 30; ++i)
    {
        const auto id = add ("/" + juce::String (i), { { SongColumn::rating, i % 2 == 0 ? "5" : "4" } });
        EXPECT_TRUE (i > 3 || database.markPlayed (id) == 0);
    }
    EXPECT_EQ (database.setIntField (SongField::dateAdded, 5, 1000), 0);
    const int sizes[] { 3, 29, 25, 3 };
    for (int id = 1; id <= 4; ++id)
    {
        SongList list;
        EXPECT_EQ (database.fillSmartPlaylist (&list, id, SongField::filename, true), 0);
        EXPECT_EQ (list.size(), sizes[id - 1]);
        EXPECT_EQ (database.fillSmartPlaylist (&list, id, SongField::listOrder, true), 0);
        EXPECT_EQ (list.size(), sizes[id - 1]);
    }
    SongList rated;
    EXPECT_EQ (database.fillSmartPlaylist (&rated, 3, SongField::filename, false), 0);
    EXPECT_EQ (rated[0].songId, 8) << "the best first, then by the view's sort";
}

TEST_F (SmartLists, AQueryOfTheFileCanOnlyRead)
{
    add ("/a");
    SongList list;
    for (const auto* sql : { "1; DROP TABLE songs; ", "nonsense (", "", "1 UNION SELECT 1,2", "'" })
    {
        int32_t id = -1;
        juce::String rules;
        ok ({ database.createSmartPlaylist ("x", "0", "r", 9, &id), database.setSmartSql (id, sql),
              database.setSmartRules (id, "it's"), database.getSmartRules (id, rules) });
        EXPECT_EQ (rules, "it's");
        const auto code = database.fillSmartPlaylist (&list, id, SongField::listOrder, true);
        EXPECT_TRUE (code == 0 || list.isEmpty()) << sql;
        EXPECT_EQ (database.countSongs(), 1) << sql;
    }
    EXPECT_GT (database.fillSmartPlaylist (&list, 4711, SongField::title, true), 0);
    EXPECT_EQ (database.countDistinct (SongField::title), 1);
}
