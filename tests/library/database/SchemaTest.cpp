#include "LibraryFixture.h"

#include "library/sql/StoredText.h"

using Schema = LibraryFixture;

TEST_F (Schema, TablesAndIndexesAreAsOtherProgramsReadThem)
{
    EXPECT_EQ (ask ("SELECT name FROM pragma_table_info('songs') ORDER BY cid"),
               "id|album|analyzed|artist|autoadvancedtimes|bitrate|bpm|channels|colour|comment|dateadded|"
               "datecreated|datemodified|duration|filename|filesize|format|genre|grouping|hashcode|key|"
               "lastplayed|playcount|rating|removabledrive|samplerate|title|totalplayedtime|tracknum|"
               "usereserved|vbr|volumelabel|year");
    EXPECT_EQ (ask ("SELECT type || dflt_value FROM pragma_table_info('songs') WHERE name IN "
                    "('album','bpm','year') ORDER BY cid"),
               "TEXT''|REAL0|INTEGER0");
    EXPECT_EQ (ask ("SELECT sql FROM sqlite_master WHERE tbl_name <> 'songs' AND type = 'table' AND name NOT "
                    "LIKE 'sqlite%' ORDER BY name"),
               "CREATE TABLE automix_songs (id INTEGER PRIMARY KEY, song_id INTEGER)|"
               "CREATE TABLE playlists (id INTEGER PRIMARY KEY, name TEXT, sort_order INTEGER, table_layout "
               "TEXT, last_row_selected TEXT)|"
               "CREATE TABLE playlists_songs (id INTEGER PRIMARY KEY, playlist_id INTEGER, song_id INTEGER)|"
               "CREATE TABLE settings (id INTEGER PRIMARY KEY, keyname STRING, the_value STRING)|"
               "CREATE TABLE smart_playlists (id INTEGER PRIMARY KEY, name TEXT, sql_query TEXT, rules TEXT, "
               "sort_order INTEGER, table_layout TEXT, last_row_selected TEXT)");
    EXPECT_EQ (
        ask ("SELECT sql FROM sqlite_master WHERE type = 'index' ORDER BY name"),
        "CREATE INDEX songs_album_idx on songs (album)|CREATE INDEX songs_artist_idx on songs (artist)|"
        "CREATE INDEX songs_bpm_idx on songs (bpm)|"
        "CREATE UNIQUE INDEX songs_filename_idx on songs (filename)|"
        "CREATE INDEX songs_genre_idx on songs (genre)|CREATE INDEX songs_key_idx on songs (key)|"
        "CREATE INDEX songs_title_idx on songs (title)");
    EXPECT_EQ (ask ("PRAGMA page_size") + ask ("PRAGMA auto_vacuum"), "40960");
}

TEST_F (Schema, FirstRowsAreWrittenOnceForAll)
{
    const auto check = [this]
    {
        EXPECT_EQ (ask ("SELECT id || keyname || '=' || the_value FROM settings ORDER BY id"),
                   "1version=100|2library_table_layout=|3library_last_row_selected=0|4automix_table_layout=|"
                   "5automix_last_row_selected=0|6recommendation_table_layout=|"
                   "7recommendation_last_row_selected=0");
        EXPECT_EQ (ask ("SELECT sort_order || name FROM smart_playlists ORDER BY id"),
                   "1Recently Played|2Recently Added|3Top 25 Rated|4Top 25 Most Played");
    };
    check();
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ (database.open (file), 0);
    check();

    add ("/a.mp3");
    const auto list = listOf (SongListKind::playlist, 1, { 1 });
    ok ({ database.createPlaylist ("gone", &list, 1), database.addListToAutomix (&list),
          database.createSmartPlaylist ("gone", "1", "", 5), database.deleteSmartPlaylist (1),
          database.clearLibrary() });
    check();
    EXPECT_EQ (
        ask ("SELECT (SELECT COUNT(*) FROM songs) + (SELECT COUNT(*) FROM playlists) + (SELECT COUNT(*) "
             "FROM playlists_songs) + (SELECT COUNT(*) FROM automix_songs)"),
        "0");

    // A user who deleted a default list doesn't get it back.
    ok ({ database.deleteSmartPlaylist (2), database.open (file) });
    EXPECT_EQ (ask ("SELECT COUNT(*) FROM smart_playlists"), "3");
}

TEST_F (Schema, ForeignTablesAndRecommendationsLiveWithTheConnection)
{
    auto song = record ("/f.mp3");
    song.id = 7;
    EXPECT_EQ (database.insertForeignSong (song), 0);
    auto foreign = listOf (SongListKind::foreignPlaylist, -1, { 7, 7 });
    EXPECT_EQ (database.createForeignPlaylist ("f", &foreign, 1, &foreign.playlistId), 0);
    EXPECT_EQ (database.countPlaylistEntries (foreign.playlistId), 2);
    EXPECT_GT (database.insertForeignSong (record ("/f.mp3")), 0) << "a path is unique there too";
    const auto own = listOf (SongListKind::library, -1, { add ("/a.mp3") });
    EXPECT_EQ (database.addListToRecommendation (&own), 0);
    EXPECT_EQ (ask ("SELECT COUNT(*) FROM sqlite_master WHERE sql LIKE '%itunes%' OR sql LIKE '%recomm%'"),
               "0");

    SongList list;
    ok ({ database.open (file), database.fillRecommendation (&list, SongField::listOrder, true) });
    EXPECT_EQ (list.size() + database.countPlaylistEntries (foreign.playlistId), 0);
}

TEST_F (Schema, FailuresToOpenAreSaidAndLeaveItClosed)
{
    juce::StringArray said;
    SongDatabase closed;
    EXPECT_NE (closed.open (folder, SongDatabase::Storage::file, [&] (const auto& text) { said.add (text); }),
               0);
    EXPECT_EQ (said.joinIntoString ("|"), "Unable to Open Database File.");
    EXPECT_FALSE (closed.isOpen());

    SongList list (SongListKind::playlist, 1);
    SongRecord song;
    juce::String text;
    auto full = listOf (SongListKind::playlist, 1, { 1 });
    const SongField title[] { SongField::title };
    EXPECT_THAT (
        (std::vector {
            closed.readSong (1, song), closed.readField (SongField::title, 1, text),
            LibraryCode::ofCount (closed.countSongs()), LibraryCode::ofCount (closed.idOfFilename ("/")),
            closed.fillLibrary (&list, SongField::title, true),
            closed.fillSmartPlaylist (&list, 1, SongField::title, true),
            closed.searchLibrary (&list, title, "x", SongField::title, true), closed.insertSong (song),
            closed.createPlaylist ("x", &full, 1), closed.replacePlaylistEntries (&full),
            closed.clearLibrary(), closed.copyTo (file), closed.addFilesToAutomix ({ "/a" }),
            closed.saveLayout (&full, "", ""), closed.markPlayed (1), closed.beginTransaction().code() }),
        testing::Each (LibraryCode::notOpen));
}
