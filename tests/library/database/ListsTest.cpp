#include "LibraryFixture.h"

namespace
{
/** A playlist, or the automix list, as a row of song numbers. */
struct Lists : LibraryFixture
{
    std::vector<int32_t> songs {
        add ("/1.mp3", { { SongColumn::duration, "10" }, { SongColumn::filesize, "100" } }),
        add ("/2.mp3", { { SongColumn::duration, "20" }, { SongColumn::filesize, "200" } }), add ("/3.mp3")
    };

    int32_t playlist (const std::vector<int32_t>& ids)
    {
        const auto list = listOf (SongListKind::library, -1, ids);
        int32_t id = -1;
        EXPECT_EQ (database.createPlaylist ("same name", &list, 1, &id), 0);
        return id;
    }

    SongList stored (SongListKind kind, int32_t id = -1)
    {
        SongList list (kind, id);
        EXPECT_EQ (kind == SongListKind::automix ? database.fillAutomix (&list, SongField::listOrder, true)
                   : kind == SongListKind::recommendation
                       ? database.fillRecommendation (&list, SongField::listOrder, true)
                       : database.fillPlaylist (&list, id, SongField::listOrder, true),
                   0);
        return list;
    }

    std::vector<int32_t> idsOf (int32_t playlistId)
    {
        return stored (SongListKind::playlist, playlistId).songIds();
    }
    std::vector<int32_t> automix() { return stored (SongListKind::automix).songIds(); }
};

using Ids = std::vector<int32_t>;
}

TEST_F (Lists, KeepOrderAndTheSameSongTwice)
{
    const auto id = playlist ({ 3, 1, 1, 2 }), other = playlist ({});
    auto list = stored (SongListKind::playlist, id);
    EXPECT_EQ (list.songIds(), (Ids { 3, 1, 1, 2 }));
    EXPECT_EQ (list.totalDuration(), 40u);
    EXPECT_EQ (list.totalSize(), 400.0);
    EXPECT_EQ (list[1].database, &database);
    ASSERT_NE (list[1].entryId, list[2].entryId);

    const int32_t second[] { list[2].entryId };
    EXPECT_EQ (database.removeEntries (other, second), 0);
    EXPECT_EQ (idsOf (id).size(), 4u) << "an entry goes only from its own list";
    ok ({ database.removeEntries (id, second), database.removeEntries (id, {}) });
    list = stored (SongListKind::playlist, id);
    EXPECT_EQ (list.songIds(), (Ids { 3, 1, 2 }));

    list.move (0, 2);
    list.insert (1, list[2]);
    EXPECT_EQ (database.replacePlaylistEntries (&list), 0);
    EXPECT_EQ (idsOf (id), (Ids { 1, 3, 2, 3 }));
    const int32_t firstNow[] { list[0].entryId };
    EXPECT_EQ (database.removeEntries (id, firstNow), 0);
    EXPECT_EQ (idsOf (id), (Ids { 3, 2, 3 })) << "the list knows its new entries";
    list.clear();
    EXPECT_EQ (database.replacePlaylistEntries (&list), 0);
    EXPECT_EQ (idsOf (id), Ids());
}

TEST_F (Lists, TakeFilesAndListsThatTheLibraryKnows)
{
    const auto id = playlist ({ 1 });
    EXPECT_EQ (database.addFilesToPlaylist (id, { "/3.mp3", "/unknown.mp3", "/3.mp3" }), 0);
    EXPECT_EQ (idsOf (id), (Ids { 1, 3, 3 }));
    EXPECT_EQ (database.countSongs(), 3);
    const auto list = stored (SongListKind::playlist, id);
    EXPECT_EQ (database.addListToPlaylist (id, &list), 0);
    EXPECT_EQ (idsOf (id), (Ids { 1, 3, 3, 1, 3, 3 }));

    ok ({ database.addListToAutomix (&list), database.addFilesToAutomix ({ "/2.mp3", "/unknown.mp3" }) });
    EXPECT_EQ (automix(), (Ids { 1, 3, 3, 2 }));
    EXPECT_EQ (database.countAutomix(), 4);
    auto mix = stored (SongListKind::automix);
    const int32_t third[] { mix[2].entryId };
    EXPECT_EQ (database.removeAutomixEntries (third), 0);
    mix.remove (0);
    EXPECT_EQ (automix(), (Ids { 1, 3, 2 }));
    EXPECT_EQ (database.replaceAutomixEntries (&mix), 0);
    EXPECT_EQ (automix(), (Ids { 3, 3, 2 }));
    EXPECT_EQ (database.clearAutomix(), 0);
    EXPECT_EQ (automix(), Ids());

    EXPECT_EQ (database.addListToRecommendation (&list), 0);
    EXPECT_EQ (stored (SongListKind::recommendation).songIds(), (Ids { 1, 3, 3 }));
    EXPECT_EQ (database.clearRecommendation(), 0);
    EXPECT_TRUE (stored (SongListKind::recommendation).isEmpty());
}

TEST_F (Lists, DeletingSongsAndPlaylistsTouchesWhatItShould)
{
    const auto first = playlist ({ 1, 2, 1 }), second = playlist ({ 2, 3 });
    const auto all = stored (SongListKind::playlist, first);
    ok ({ database.addListToAutomix (&all), database.addListToRecommendation (&all),
          database.deleteSong (1) });
    EXPECT_EQ (ask ("SELECT song_id FROM playlists_songs"), "2|2|3");
    EXPECT_EQ (ask ("SELECT song_id FROM automix_songs"), "2");
    EXPECT_EQ (stored (SongListKind::recommendation).songIds(), Ids { 2 })
        << "the row stays, its song is gone";

    EXPECT_EQ (database.deletePlaylist (first), 0);
    EXPECT_EQ (database.countSongs(), 2);
    EXPECT_EQ (idsOf (second), (Ids { 2, 3 }));
    const auto rest = listOf (SongListKind::library, -1, { 2, 3 });
    EXPECT_EQ (database.deleteSongs (&rest), 0);
    EXPECT_EQ (
        ask ("SELECT (SELECT COUNT(*) FROM songs) || (SELECT COUNT(*) FROM playlists_songs) || (SELECT "
             "COUNT(*) FROM automix_songs) || (SELECT COUNT(*) FROM playlists)"),
        "0001");
}

TEST_F (Lists, RefuseWhatTheyCannotTake)
{
    const auto id = playlist ({ 1 });
    auto empty = listOf (SongListKind::playlist, id, {}),
         smart = listOf (SongListKind::smartPlaylist, 1, { 1 }),
         foreign = listOf (SongListKind::foreignPlaylist, 1, { 1 }),
         nameless = listOf (SongListKind::playlist, -1, { 1 }),
         automixList = listOf (SongListKind::automix, -1, { 1 });
    SongList scratch;
    SongList nothing (SongListKind::playlist, id);
    const struct
    {
        int got, wanted;
    } rows[] {
        { database.replacePlaylistEntries (nullptr), -8 },
        { database.replacePlaylistEntries (&smart), -5 },
        { database.replacePlaylistEntries (&automixList), -5 },
        { database.replacePlaylistEntries (&nameless), -8 },
        { database.replaceAutomixEntries (&smart), -5 },
        { database.replaceAutomixEntries (nullptr), -8 },
        { database.addFilesToPlaylist (id, {}), -6 },
        { database.addFilesToPlaylist (-1, { "/1.mp3" }), -8 },
        { database.addListToPlaylist (id, &empty), -6 },
        { database.addListToPlaylist (-1, &smart), -8 },
        { database.addListToPlaylist (id, nullptr), -8 },
        { database.addListToAutomix (nullptr), -8 },
        { database.addListToRecommendation (nullptr), -8 },
        { database.deleteSongs (nullptr), -8 },
        { database.deleteSongs (&foreign), -5 },
        { database.clearPlayed (&foreign), -5 },
        { database.clearPlayed (nullptr), -8 },
        { database.sortList (nullptr, SongField::title, true), -8 },
        { database.sortList (&nothing, SongField::title, true), -6 },
        { database.fillLibrary (nullptr, SongField::title, true), -8 },
        { database.fillSmartPlaylist (nullptr, 1, SongField::title, true), -8 },
        { database.searchAutomix (nullptr, {}, "x", SongField::title, true), -8 },
    };
    for (size_t i = 0; i < std::size (rows); ++i)
        EXPECT_EQ (rows[i].got, rows[i].wanted) << "row " << i;
    EXPECT_EQ (idsOf (id), Ids { 1 });
    EXPECT_EQ (database.countSongs(), 3);
}

TEST_F (Lists, ForeignSongsEnterOwnListsByTheirPath)
{
    for (const auto* path : { "/3.mp3", "/not here.mp3", "/1.mp3" })
    {
        auto song = record (path);
        song.id = 1 + database.countPlaylistEntries (0) + static_cast<int32_t> (path[1]);
        EXPECT_EQ (database.insertForeignSong (song), 0);
    }
    const auto foreign = listOf (SongListKind::foreignPlaylist, 0, { 1 + '3', 1 + 'n', 1 + '1' });
    EXPECT_EQ (database.addListToAutomix (&foreign), 0);
    EXPECT_EQ (automix(), (Ids { 3, 1 }));
}

TEST_F (Lists, SourcesComeByTheirPlace)
{
    const auto first = playlist ({}), second = playlist ({});
    SourceItem item;
    const auto place = [&] (SongListKind kind, int32_t id, int32_t order)
    {
        item.kind = kind;
        item.id = id;
        item.sortOrder = order;
        return database.setSortOrder (item);
    };
    EXPECT_EQ (place (SongListKind::playlist, first, 9), 0);
    EXPECT_EQ (place (SongListKind::smartPlaylist, 1, 8), 0);
    EXPECT_EQ (place (SongListKind::library, second, 77), 0);
    ok ({ database.renamePlaylist (second, "it's"), database.renameSmartPlaylist (2, "new ''") });

    std::vector<SourceItem> items;
    EXPECT_EQ (database.listPlaylists (items), 0);
    ASSERT_EQ (items.size(), 2u);
    EXPECT_EQ (items[0].name, "it's");
    EXPECT_EQ (items[0].sortOrder, 1);
    EXPECT_EQ (items[1].id, first);
    EXPECT_EQ (items[1].kind, SongListKind::playlist);
    EXPECT_EQ (database.listSmartPlaylists (items), 0);
    ASSERT_EQ (items.size(), 4u);
    EXPECT_EQ (items[0].name, "new ''");
    EXPECT_EQ (items[3].name, "Recently Played");
    ok ({ database.createForeignPlaylist ("f", nullptr, 3), database.listForeignPlaylists (items) });
    ASSERT_EQ (items.size(), 1u);
    EXPECT_EQ (items[0].kind, SongListKind::foreignPlaylist);
}

TEST (SongListTotals, FollowEveryChange)
{
    SongList list;
    juce::Random random (7);
    for (int i = 0; i < 2000; ++i)
    {
        const auto place = random.nextInt (40) - 5;
        switch (random.nextInt (4))
        {
        case 0:
            list.remove (place);
            break;
        case 1:
            list.move (place, random.nextInt (40) - 5);
            break;
        case 2:
            list.add ({ static_cast<uint32_t> (place + 5), 4'000'000'000, i, -1, nullptr });
            break;
        default:
            list.insert (place, { static_cast<uint32_t> (place + 5), 1, i, -1, nullptr });
        }
        uint32_t seconds = 0;
        double bytes = 0;
        for (const auto& entry : list.entries())
        {
            seconds += entry.duration;
            bytes += entry.filesize;
        }
        ASSERT_EQ (list.totalDuration(), seconds);
        ASSERT_EQ (list.totalSize(), bytes);
    }
    list.clear();
    EXPECT_EQ (list.totalSize() + list.totalDuration(), 0.0);
}
