#include "library/exchange/ImportItunes.h"
#include "library/database/SongDatabase.h"
#include "library/exchange/ImportPlaylist.h"
#include "shared/TemporaryFolder.h"
#include "shared/Watching.h"

namespace
{
juce::String pair (const char* key, const char* type, const juce::String& value)
{
    return juce::String ("<key>") + key + "</key><" + type + ">" + value + "</" + type + ">";
}

juce::String track (int id, const juce::String& location, const juce::String& more = {})
{
    return "<key>" + juce::String (id) + "</key><dict>" + pair ("Track ID", "integer", juce::String (id))
           + more + pair ("Location", "string", location) + "</dict>";
}

juce::String playlist (const juce::String& name, std::initializer_list<int> ids,
                       const juce::String& more = {})
{
    juce::String items;
    for (const auto id : ids)
        items += "<dict>" + pair ("Track ID", "integer", juce::String (id)) + "</dict>";
    return "<dict>" + pair ("Name", "string", name) + more + "<key>Playlist Items</key><array>" + items
           + "</array></dict>";
}

juce::String library (const juce::String& tracks, const juce::String& playlists)
{
    return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + pair ("Major Version", "integer", "1")
           + "<key>Odd</key><dict><key>Tracks</key><dict>" + track (9, "file://localhost/odd.mp3")
           + "</dict></dict>" + "<key>Tracks</key><dict>" + tracks + "</dict><key>Playlists</key><array>"
           + playlists + "</array></dict></plist>";
}

const juce::String all =
    pair ("Name", "string", "N &amp; M") + pair ("Artist", "string", "Ar") + pair ("Album", "string", "Al")
    + pair ("Grouping", "string", "G") + pair ("Genre", "string", "Ge") + pair ("Kind", "string", "MPEG")
    + pair ("Size", "integer", "123456") + pair ("Total Time", "integer", "245123")
    + pair ("Track Number", "integer", "7") + pair ("Year", "integer", "1999")
    + pair ("Bit Rate", "integer", "320") + pair ("Sample Rate", "integer", "44100")
    + pair ("Play Count", "integer", "12") + pair ("Comments", "string", "C")
    + pair ("Rating", "integer", "80") + pair ("Date Added", "date", "2010-01-01T00:00:00Z")
    + "<key>Has Video</key><true/>";

class ForeignLibrary : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ (database.open ({}, SongDatabase::Storage::memory), LibraryCode::ok); }

    ImportItunes::Result import (const juce::String& text, int steps = 1 << 30)
    {
        file.replaceWithText (text);
        Watching progress (steps);
        return ImportItunes (&database, file).run (progress);
    }

    int entries (size_t index)
    {
        std::vector<SourceItem> lists;
        database.listForeignPlaylists (lists);
        SongList list (SongListKind::foreignPlaylist);
        if (index >= lists.size())
            return -1;
        database.fillForeignPlaylist (&list, lists[index].id, SongField::listOrder, true);
        return list.size();
    }

    TemporaryFolder folder;
    juce::File file = folder.file ("library.xml");
    SongDatabase database;
};
}

TEST_F (ForeignLibrary, TakesTracksAndPlaylistsIntoTheForeignTablesOnly)
{
    const auto tracks =
        track (7, "file://localhost/gone/a%20b.mp3", all)
        + track (8, "file://localhost/C:/b.mp3", pair ("Year", "string", "1999") + "<key>Name</key>")
        + "<key>10</key><dict><key>Name</key><string>no number</string></dict>";
    const auto playlists = playlist ("All", { 7, 8 }, pair ("Distinguished Kind", "integer", "4"))
                           + playlist ("Mine", { 8, 7, 8 }) + playlist ("Empty", {});
    const auto result = import (library (tracks, playlists));
    EXPECT_TRUE (result.isRead);
    EXPECT_EQ (result.tracks, 2);
    EXPECT_EQ (result.playlists, 2);
    EXPECT_EQ (database.countSongs(), 0);

    SongRecord record;
    ASSERT_EQ (database.readForeignSong (7, record), LibraryCode::ok);
    EXPECT_FALSE (record.present);
    const std::pair<SongColumn, const char*> values[] {
        { SongColumn::title, "N & M" },      { SongColumn::artist, "Ar" },
        { SongColumn::album, "Al" },         { SongColumn::grouping, "G" },
        { SongColumn::genre, "Ge" },         { SongColumn::format, "MPEG" },
        { SongColumn::duration, "245" },     { SongColumn::tracknum, "7" },
        { SongColumn::year, "1999" },        { SongColumn::bitrate, "320" },
        { SongColumn::comment, "C" },        { SongColumn::rating, "4" },
        { SongColumn::samplerate, "44100" }, { SongColumn::filename, "/gone/a b.mp3" },
    };
    for (const auto& [column, value] : values)
        EXPECT_EQ (record[column], value) << nameOf (column);
    ASSERT_EQ (database.readForeignSong (8, record), LibraryCode::ok);
    EXPECT_EQ (record[SongColumn::year], "0");
    EXPECT_EQ (record[SongColumn::filename], "C:/b.mp3");

    std::vector<SourceItem> lists;
    database.listForeignPlaylists (lists);
    SongList list (SongListKind::foreignPlaylist);
    ASSERT_EQ (database.fillForeignPlaylist (&list, lists.at (0).id, SongField::listOrder, true),
               LibraryCode::ok);
    ASSERT_EQ (list.size(), 3);
    EXPECT_EQ (lists[0].name, "Mine");
    EXPECT_EQ (list[0].songId, 8);
    EXPECT_EQ (list[1].songId, 7);
}

TEST_F (ForeignLibrary, IsReadAfreshAndLeftEmptyByWhatCannotBeRead)
{
    const auto good = library (track (1, "file://localhost/a.mp3") + track (2, "file://localhost/b.mp3"),
                               playlist ("P", { 1, 2 }));
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ (import (good).tracks, 2);
    EXPECT_EQ (entries (0), 2);
    EXPECT_EQ (entries (1), -1);

    const auto utf16 = import (good); // the same from UTF-16
    file.replaceWithText (good, true, true);
    Watching progress;
    EXPECT_EQ (ImportItunes (&database, file).run (progress).tracks, utf16.tracks);

    for (const auto& bad : { good.dropLastCharacters (3), good.replace ("</array>", ""), good + "<x/>",
                             juce::String ("<other/>"), juce::String() })
    {
        import (good);
        EXPECT_FALSE (import (bad).isRead);
        EXPECT_EQ (entries (0), -1) << bad;
    }
    import (good);
    EXPECT_FALSE (ImportItunes (&database, folder).run (progress).isRead);
    EXPECT_EQ (entries (0), -1);
    EXPECT_FALSE (ImportItunes (nullptr, file).run (progress).isRead);

    const auto cancelled = import (good, 1);
    EXPECT_TRUE (cancelled.isCancelled);
    EXPECT_EQ (cancelled.tracks, 1);
}

TEST_F (ForeignLibrary, AsAPlaylistBringsItsTracksIntoTheLibrary)
{
    const auto song = folder.file ("here.mp3");
    song.create();
    file.replaceWithText (library (track (2, "file://localhost" + song.getFullPathName(), all)
                                       + track (1, "file://localhost/elsewhere/b.mp3"),
                                   playlist ("P", { 1 })));
    Watching progress;
    const auto result = ImportPlaylist (&database, file, -1, "Named").run (progress);
    EXPECT_TRUE (result.isRead);
    EXPECT_EQ (result.songs, 2);
    EXPECT_EQ (result.added, 2);
    SongList list (SongListKind::playlist, result.playlistId);
    database.fillPlaylist (&list, result.playlistId, SongField::listOrder, true);
    ASSERT_EQ (list.size(), 2);
    EXPECT_EQ (list[0].songId, database.idOfFilename (song.getFullPathName()));
    EXPECT_EQ (list[1].songId, database.idOfFilename ("/elsewhere/b.mp3"));
    EXPECT_EQ (database.countWhere (SongField::title, "N & M"), 0);
}
