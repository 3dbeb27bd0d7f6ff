#include "LibraryFixture.h"
#include "support/music/KeyName.h"

namespace
{
/** Songs with random values in every column, each twice in the playlist and so on. */
struct Sorting : LibraryFixture
{
    static constexpr int songs = 60;
    std::vector<int32_t> ids;
    int32_t playlist = -1, foreign = -1;

    Sorting()
    {
        juce::Random random (3);
        for (int i = 0; i < songs; ++i)
        {
            auto song = record ("/" + juce::String (random.nextInt (1000)) + "/" + juce::String (i));
            for (int c = 0; c < songColumnCount; ++c)
                if (const auto column = static_cast<SongColumn> (c); column != SongColumn::filename)
                    song[column] = infoOf (column).type == SongColumnType::text
                                       ? juce::String::charToString (static_cast<juce::juce_wchar> (
                                           (random.nextBool() ? 'a' : 'A') + random.nextInt (26)))
                                       : juce::String (random.nextInt (150));
            song.id = 100 + i;
            ok ({ database.insertSong (song), database.updateSong (song),
                  database.insertForeignSong (song) });
            ids.push_back (song.id);
        }
        auto shuffled = ids;
        for (int i = songs; --i > 0;)
            std::swap (shuffled[static_cast<size_t> (i)],
                       shuffled[static_cast<size_t> (random.nextInt (i + 1))]);
        shuffled.push_back (shuffled.front());
        const auto list = listOf (SongListKind::library, -1, shuffled);
        ok ({ database.createPlaylist ("p", &list, 1, &playlist),
              database.createForeignPlaylist ("f", &list, 1, &foreign), database.addListToAutomix (&list),
              database.addListToRecommendation (&list),
              database.createSmartPlaylist ("s", " (year >= 0); ", "", 9) });
    }

    int readField (int32_t id, SongField field, juce::String& value, bool foreignSongs)
    {
        return foreignSongs ? database.readForeignField (field, id, value)
                            : database.readField (field, id, value);
    }

    /** Compares numbers by value, text by its upper case, keys around the circle of fifths. */
    bool isBefore (int32_t a, int32_t b, SongField field, bool foreignSongs)
    {
        juce::String first, second;
        EXPECT_EQ (readField (a, field, first, foreignSongs) + readField (b, field, second, foreignSongs), 0);
        if (field == SongField::key)
            return KeyName::sortText (first.toUpperCase().toStdString())
                   < KeyName::sortText (second.toUpperCase().toStdString());
        return infoOf (columnOf (field)).type == SongColumnType::text
                   ? first.toUpperCase() < second.toUpperCase()
                   : first.getDoubleValue() < second.getDoubleValue();
    }

    SongList filled (SongListKind kind, SongField sort, bool up)
    {
        SongList list (kind, kind == SongListKind::foreignPlaylist ? foreign
                             : kind == SongListKind::smartPlaylist ? 5
                                                                   : playlist);
        const auto code =
            kind == SongListKind::playlist          ? database.fillPlaylist (&list, playlist, sort, up)
            : kind == SongListKind::foreignPlaylist ? database.fillForeignPlaylist (&list, foreign, sort, up)
            : kind == SongListKind::automix         ? database.fillAutomix (&list, sort, up)
            : kind == SongListKind::recommendation  ? database.fillRecommendation (&list, sort, up)
            : kind == SongListKind::smartPlaylist   ? database.fillSmartPlaylist (&list, 5, sort, up)
                                                    : database.fillLibrary (&list, sort, up);
        EXPECT_EQ (code, 0);
        return list;
    }
};

constexpr SongListKind filledKinds[] { SongListKind::library,         SongListKind::playlist,
                                       SongListKind::foreignPlaylist, SongListKind::automix,
                                       SongListKind::recommendation,  SongListKind::smartPlaylist };
}

TEST_F (Sorting, EveryFieldOrdersEveryKindBothWays)
{
    for (const auto kind : filledKinds)
        for (int number = 0; number < 2 * songFieldCount; ++number)
        {
            const auto field = static_cast<SongField> (number / 2);
            const auto up = number % 2 == 0;
            auto list = filled (kind, SongField::listOrder, true);
            const auto size = list.size();
            for (const auto again : { false, true })
            {
                if (again)
                    ASSERT_EQ (database.sortList (&list, field, up), 0);
                else
                    list = filled (kind, field, up);
                ASSERT_EQ (list.size(), size);
                for (int i = 1; i < size; ++i)
                    ASSERT_FALSE (isBefore (list[up ? i : i - 1].songId, list[up ? i - 1 : i].songId, field,
                                            isForeign (kind)))
                        << SongDatabase::displayNames[static_cast<size_t> (field)] << (up ? " up" : " down");
            }
        }
}

TEST_F (Sorting, ListOrderBringsTheStoredOrderBack)
{
    for (const auto kind : { SongListKind::playlist, SongListKind::foreignPlaylist, SongListKind::automix,
                             SongListKind::recommendation })
    {
        const auto stored = filled (kind, SongField::listOrder, true);
        auto list = stored;
        EXPECT_EQ (database.sortList (&list, SongField::title, true), 0);
        EXPECT_TRUE (list.sorted);
        EXPECT_NE (list.songIds(), stored.songIds());
        EXPECT_EQ (database.sortList (&list, SongField::listOrder, true), 0);
        EXPECT_FALSE (list.sorted);
        EXPECT_EQ (list.songIds(), stored.songIds());
        EXPECT_EQ (list.totalDuration(), stored.totalDuration());

        EXPECT_EQ (database.sortList (&list, SongField::listOrder, false), 0);
        EXPECT_EQ (list[0].songId, stored[stored.size() - 1].songId);
    }
}

TEST_F (Sorting, FoundListsKeepWhatTheyHold)
{
    const struct
    {
        SongListKind kind;
        int copies;
    } rows[] { { SongListKind::album, 1 },
               { SongListKind::artist, 1 },
               { SongListKind::genre, 1 },
               { SongListKind::smartPlaylist, 1 },
               { SongListKind::searchLibrary, 1 },
               { SongListKind::searchSmartPlaylist, 1 },
               { SongListKind::searchPlaylist, 2 },
               { SongListKind::searchAutomix, 2 },
               { SongListKind::searchForeignPlaylist, 2 },
               { SongListKind::searchRecommendation, 2 } };
    const auto twice = filled (SongListKind::playlist, SongField::listOrder, true)[0].songId;
    const auto other = twice == ids[0] ? ids[1] : ids[0];
    for (const auto& row : rows)
    {
        auto list = listOf (row.kind, row.kind == SongListKind::searchForeignPlaylist ? foreign : playlist,
                            { other, twice });
        EXPECT_EQ (database.sortList (&list, SongField::filename, true), 0);
        auto found = list.songIds();
        EXPECT_EQ (std::count (found.begin(), found.end(), twice), row.copies) << static_cast<int> (row.kind);
        EXPECT_EQ (std::count (found.begin(), found.end(), other), 1);
        EXPECT_EQ (list.size(), row.copies + 1);
        EXPECT_EQ (list[0].entryId == -1, row.copies == 1);
    }
    for (const auto kind : { SongListKind::root, SongListKind::albums, SongListKind::artists })
    {
        auto list = listOf (kind, -1, { other });
        EXPECT_EQ (database.sortList (&list, SongField::title, true), 0);
        EXPECT_EQ (list.size(), songs) << "these are the whole library";
    }
}

TEST_F (Sorting, SongsWithoutAPathAreNotListed)
{
    add ({});
    EXPECT_EQ (filled (SongListKind::library, SongField::title, true).size(), songs);
    EXPECT_EQ (database.countSongs(), songs + 1);
}
