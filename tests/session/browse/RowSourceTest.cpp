#include "BrowseFixture.h"

#include "session/browse/LibrarySources.h"

using testing::ElementsAre;

namespace
{
struct Rows : BrowseFixture
{
    RowSource rows { room };
    int opened = 0;

    Rows()
    {
        rows.onOpened = [this] (int code)
        {
            EXPECT_EQ (code, 0);
            ++opened;
        };
    }

    void show (const SongQuery& query)
    {
        rows.open (query);
        rows.settle();
        rows.want (0, 10);
        rows.settle();
    }

    juce::String title (int row) const
    {
        const auto* const record = rows.row (row);
        return record != nullptr ? (*record)[SongColumn::title] : juce::String ("?");
    }
};
}

TEST_F (Rows, ComeWithTheirFieldsAndFiles)
{
    ASSERT_TRUE (folder.file ("b.mp3").create().wasOk());
    add (database, "/gone/a.mp3", "a");
    add (database, folder.file ("b.mp3").getFullPathName(), "b");
    room.watch.settle();
    rows.open ({ .sort = SongField::title, .ascending = false });
    EXPECT_TRUE (rows.isOpening());
    rows.settle();
    EXPECT_FALSE (rows.isOpening());
    EXPECT_EQ (rows.row (0), nullptr) << "nobody wanted it";
    rows.want (0, 2);
    rows.settle();
    EXPECT_EQ (title (0), "b");
    EXPECT_EQ (rows.presence (0), RowSource::Presence::present);
    EXPECT_EQ (rows.presence (1), RowSource::Presence::missing);
    EXPECT_EQ (rows.row (2), nullptr);
}

TEST_F (Rows, FollowFilesThatGoAndComeBack)
{
    const auto disk = folder.file ("b.mp3");
    add (database, "/gone/a.mp3", "a");
    add (database, disk.getFullPathName(), "b");
    room.watch.settle();
    auto told = 0;
    for (const auto isThere : { true, true, false, false, true })
    {
        ASSERT_TRUE (isThere ? disk.create().wasOk() : disk.deleteFile());
        if (rows.size() == 0)
            show ({ .sort = SongField::title });
        rows.onRows = [&told] (int first, int last)
        {
            EXPECT_EQ (first, 1);
            EXPECT_EQ (last, 2);
            ++told;
        };
        rows.lookForFiles();
        rows.settle();
        EXPECT_EQ (rows.presence (1), isThere ? RowSource::Presence::present : RowSource::Presence::missing);
        EXPECT_EQ (rows.presence (0), RowSource::Presence::missing);
    }
    EXPECT_EQ (told, 2) << "only what looks different is painted again";
}

TEST_F (Rows, OfTheNewestQuestionAloneAreShown)
{
    addSongs (100);
    room.watch.settle();
    int32_t endless = -1;
    EXPECT_EQ (database.createSmartPlaylist (
                   "endless",
                   " id IN (WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n) SELECT x FROM n); ",
                   "", 1, &endless),
               0);
    rows.open ({ .kind = SongListKind::smartPlaylist, .id = endless });
    for (int i = 0; i < 20; ++i)
        rows.open ({ .search = "song " + juce::String (i), .fields = { SongField::title } });
    rows.settle();
    EXPECT_EQ (rows.query().search, "song 19");
    EXPECT_EQ (rows.size(), 1);
    EXPECT_EQ (opened, 1);
    auto found = -2;
    show ({ .sort = SongField::title });
    rows.findFirst (SongField::title, juce::CharPointer_UTF8 ("s\xc3\xb6ng 5"), 0,
                    [&] (int row) { found = row; });
    rows.settle();
    EXPECT_EQ (title (found), "Song 5");
}

TEST_F (Rows, FollowEditsOfThisProgramAndOfOthers)
{
    const auto songs = addSongs (3);
    room.watch.settle();
    show ({ .sort = SongField::title });
    EXPECT_EQ (title (0), "Song 0");

    room.edits.setField (songs[0], SongField::title, "Zoo");
    room.edits.settle();
    room.watch.settle();
    rows.settle();
    rows.want (0, 10);
    rows.settle();
    EXPECT_EQ (title (2), "Zoo");

    SongDatabase window (file);
    EXPECT_EQ (window.setTextField (SongField::title, songs[2], "Ape"), 0);
    add (window, "/music/new", "Bee");
    room.watch.settle();
    rows.settle();
    rows.want (0, 10);
    rows.settle();
    EXPECT_EQ (title (0), "Ape");
    EXPECT_EQ (title (1), "Bee");

    room.edits.deleteSongs (songs);
    room.edits.settle();
    room.watch.settle();
    rows.settle();
    EXPECT_EQ (rows.size(), 1);
}

TEST_F (Rows, ComeThoughTheLibraryChangesAllTheTime)
{
    addSongs (3);
    room.watch.settle();
    rows.open ({ .sort = SongField::title });
    for (int i = 0; i < 5; ++i)
    {
        room.watch.tell ({ .songs = true });
        room.watch.settle();
    }
    EXPECT_TRUE (rows.isOpening());
    add (database, "/music/last", "Zoo");
    room.watch.settle();
    rows.settle();
    EXPECT_EQ (rows.size(), 4) << "asked again, once";
    EXPECT_EQ (opened, 2);

    auto changes = 0;
    LibrarySources sources (room);
    sources.settle();
    sources.onChanged = [&changes] { ++changes; };
    sources.refresh();
    sources.settle();
    EXPECT_EQ (changes, 0) << "the tree is the same";
}

TEST_F (Rows, OfAHistoryAreInItsOrderWithSongsTheLibraryLacks)
{
    addSongs (1);
    const juce::Time begin (2026, 10, 22, 23, 5, 9);
    const juce::String odd ("/music/a\tb\\t\nc");
    for (const auto& path : { juce::String ("/music/0"), odd, juce::String ("/music/0") })
        EXPECT_TRUE (room.history.note ({ begin, 2, path, "t\t1", "x" }));
    const auto written = room.places.history.findChildFiles (juce::File::findFiles, false)[0];
    ASSERT_TRUE (written.appendText ("2026-11-22 23:06:00\t1\t/half"));
    EXPECT_TRUE (room.history.isPlayed (odd));
    room.history.resetPlayed ({ odd });
    EXPECT_FALSE (room.history.isPlayed (odd));

    LibrarySources sources (room);
    sources.settle();
    ASSERT_EQ (sources.tree().history.size(), 1u);
    const auto& session = sources.tree().history[0];
    EXPECT_EQ (session.name, "2026-11-22 23:05");
    show ({ .kind = session.kind, .id = session.id });
    ASSERT_EQ (rows.size(), 3);
    EXPECT_EQ (title (0), "Song 0");
    EXPECT_EQ (title (1), "t\t1");
    EXPECT_EQ ((*rows.row (1))[SongColumn::filename], odd);
    const auto played = room.history.songs (session.id);
    EXPECT_EQ (played[1].path, odd);
    EXPECT_EQ (played[1].deck, 2);
    EXPECT_EQ (played[1].time.toMilliseconds(), begin.toMilliseconds());
    EXPECT_EQ (room.history.exportTo (session.id, folder.file ("out.m3u")), "");
    EXPECT_TRUE (folder.file ("out.m3u").loadFileAsString().contains ("\n/music/0\n"));
    EXPECT_NE (room.history.exportTo (session.id, folder.file ("none/out.m3u")), "");
    EXPECT_EQ (room.history.exportTo (session.id, folder.file ("out.html")), "");
    EXPECT_TRUE (folder.file ("out.html").loadFileAsString().contains ("<td>23:05:09</td>\n<td>3</td>\n"));
    EXPECT_EQ (rows.playedSong (1)->path, odd);
    show ({ .kind = session.kind, .id = session.id, .ascending = false });
    EXPECT_EQ (rows.playedSong (1)->path, odd);
    EXPECT_EQ (rows.list()[0].entryId, 2) << "the last one first";
}

TEST_F (Rows, OfMissingFilesFollowTheDisk)
{
    addSongs (2);
    const auto file = folder.file ("here.mp3");
    ASSERT_TRUE (file.replaceWithText ("x"));
    add (database, file.getFullPathName(), "Here");
    room.watch.settle();
    show ({ .kind = SongListKind::missing, .sort = SongField::title });
    ASSERT_EQ (rows.size(), 2);
    EXPECT_EQ (title (0), "Song 0");
    ASSERT_TRUE (file.deleteFile());
    rows.reopen();
    rows.settle();
    EXPECT_EQ (rows.size(), 3);
}
