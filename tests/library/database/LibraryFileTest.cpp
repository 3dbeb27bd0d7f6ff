#include "library/file/LibraryFile.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
/** A library whose sessions are days apart. */
struct LibraryFiles : testing::Test
{
    TemporaryFolder home;
    juce::File songManager = home.file ("SongManager");
    int day = 1;
    LibraryFile library { songManager, [this] { return juce::Time (2026, 0, day, 12, 0, 0, 0); } };

    /** One session that adds a song. @returns what the user was told */
    juce::String session (const juce::String& path = {})
    {
        const auto prepared = library.prepare();
        {
            SongDatabase database (prepared.file, prepared.storage);
            EXPECT_TRUE (database.isOpen());
            SongRecord song;
            song[SongColumn::filename] = path;
            EXPECT_TRUE (path.isEmpty() || database.insertSong (song) == 0);
            held.clear();
            SongList list;
            EXPECT_EQ (database.fillLibrary (&list, SongField::filename, true), 0);
            for (const auto& entry : list.entries())
            {
                EXPECT_EQ (database.readSong (entry.songId, song), 0);
                held += song[SongColumn::filename];
            }
            std::vector<SourceItem> smart;
            EXPECT_EQ (database.listSmartPlaylists (smart), 0);
            EXPECT_EQ (smart.size(), 4u);
        }
        library.noteClosed();
        return prepared.message;
    }

    /** Writes over the library's pages, from a place on. */
    void damage (const juce::File& file, int from = 4096)
    {
        juce::MemoryBlock content;
        ASSERT_TRUE (file.loadFileAsData (content));
        for (auto i = static_cast<size_t> (from); i < content.getSize(); ++i)
            content[i] = static_cast<char> (i * 31);
        ASSERT_TRUE (file.replaceWithData (content.getData(), content.getSize()));
    }

    juce::StringArray namesIn (const juce::File& folder, const juce::String& pattern)
    {
        juce::StringArray names;
        for (const auto& each : folder.findChildFiles (juce::File::findFiles, false, pattern))
            names.add (each.getFileName());
        names.sort (false);
        return names;
    }

    /** The paths that the last session saw. */
    juce::String held;
};
}

TEST_F (LibraryFiles, ACopyADayAndSevenOfThem)
{
    EXPECT_EQ (session ("/1"), "");
    EXPECT_EQ (namesIn (library.backupFolder(), "*.sqlite").size(), 0) << "there was nothing to copy";
    for (day = 2; day <= 10; ++day)
        for (const auto* again : { "a", "b" })
            EXPECT_EQ (session ("/" + juce::String (day) + again), "");
    const auto backups = namesIn (library.backupFolder(), "*.sqlite");
    EXPECT_EQ (backups.size(), 7);
    EXPECT_EQ (backups[0], "px_music_library_2026-01-04.sqlite");
    EXPECT_EQ (backups[6], "px_music_library_2026-01-10.sqlite");
    const auto copied = library.backupFolder().getChildFile (backups[6]);
    EXPECT_EQ (SongDatabase (copied).countSongs(), 17) << "as it stood when the day began";
}

TEST_F (LibraryFiles, DamageIsMovedAsideAndTheNewestGoodCopyTakesItsPlace)
{
    const auto backup = [this] (int of)
    {
        return library.backupFolder().getChildFile ("px_music_library_2026-01-0" + juce::String (of)
                                                    + ".sqlite");
    };
    session ("/1");
    for (day = 2; day <= 4; ++day)
        session ("/" + juce::String (day));

    day = 4;
    damage (library.file());
    damage (backup (4), 100);
    const auto said = session();
    EXPECT_EQ (
        said,
        "The library file was damaged and is kept as px_music_library_damaged_2026-01-04_(12h00m00s).sqlite; "
        "the backup px_music_library_2026-01-03.sqlite has taken its place.");
    EXPECT_EQ (held, "/1/2");
    EXPECT_EQ (session(), "") << "once";

    // A file that somebody took away is not put back unasked; what SQLite left beside it is kept.
    for (const auto emptied : { false, true })
    {
        EXPECT_TRUE (emptied ? library.file().replaceWithText ("") : library.file().deleteFile());
        EXPECT_TRUE (juce::File (library.file().getFullPathName() + "-wal").replaceWithText ("lost"));
        const auto offered = backup (3);
        EXPECT_EQ (session ("/new"),
                   "The library file was missing or empty, so a new library was begun. To have the "
                   "songs back, put its backup "
                       + offered.getFullPathName() + " in its place.");
        EXPECT_EQ (held, "/new");
        EXPECT_EQ (session(), "") << "once";

        EXPECT_EQ (library.putBack (offered).sentence,
                   "The backup px_music_library_2026-01-03.sqlite has taken the library's place.");
        EXPECT_EQ (session(), "");
        EXPECT_EQ (held, "/1/2");
    }
    EXPECT_EQ (namesIn (songManager, "*lost*-wal").size(), 2);
    EXPECT_EQ (namesIn (songManager, "*replaced*.sqlite").size(), 2) << "what was begun is kept";

    for (int i = 2; i <= 4; ++i)
        EXPECT_TRUE (backup (i).replaceWithText (i == 2 ? "" : "rubbish"));
    EXPECT_TRUE (library.file().replaceWithText ("rubbish"));
    EXPECT_EQ (session ("/new"), "The library file was damaged and is kept as "
                                 "px_music_library_damaged_2026-01-04_(12h00m00s)(2).sqlite; "
                                 "there is no good backup of it, so an empty library has taken its place.");
    EXPECT_EQ (held, "/new");
    EXPECT_EQ (namesIn (songManager, "*damaged*").size(), 2);
}

TEST_F (LibraryFiles, ALogOfAKilledSessionIsPartOfTheLibrary)
{
    session ("/1");
    const auto log = juce::File (library.file().getFullPathName() + "-wal");
    const auto keptLog = home.file ("log"), keptFile = home.file ("file");
    {
        SongDatabase database (library.file());
        SongRecord song;
        song[SongColumn::filename] = "/2";
        ASSERT_EQ (database.insertSong (song), 0);
        ASSERT_GT (log.getSize(), 0);
        ASSERT_TRUE (log.copyFileTo (keptLog) && library.file().copyFileTo (keptFile));
    }
    // The state that a kill leaves.
    ASSERT_TRUE (keptLog.copyFileTo (log) && keptFile.copyFileTo (library.file()));
    day = 2;
    EXPECT_EQ (session(), "");
    EXPECT_EQ (held, "/1/2");
    const auto backup = library.backupFolder().getChildFile ("px_music_library_2026-01-02.sqlite");
    EXPECT_EQ (SongDatabase (backup).countSongs(), 2);

    // On a disc there can be no log, and nobody writes.
    ASSERT_TRUE (SongDatabase (library.file()).isOpen());
    ASSERT_TRUE (songManager.setReadOnly (true, true));
    SqlConnection onDisc;
    auto songs = 0;
    EXPECT_EQ (onDisc.openForReading (library.file().getFullPathName()), 0);
    EXPECT_EQ (
        onDisc.query ("SELECT COUNT(*) FROM songs", [&] (const SqlRow& row) { songs = row.int32 (0); }), 0);
    EXPECT_EQ (songs, 2);
    ASSERT_TRUE (songManager.setReadOnly (false, true));
}

TEST_F (LibraryFiles, WhereNothingCanBeStoredTheSessionWorksInMemory)
{
    ASSERT_TRUE (songManager.replaceWithText ("a file in the folder's place"));
    EXPECT_EQ (session ("/1"),
               "Problem creating database file. You need write permission to not only the database "
               "file, but also the containing directory of this file.");
    EXPECT_EQ (held, "/1");
    EXPECT_EQ (songManager.loadFileAsString(), "a file in the folder's place");
    ASSERT_TRUE (songManager.deleteFile());
    ASSERT_TRUE (library.file().createDirectory());
    EXPECT_NE (session ("/1"), "");
    EXPECT_TRUE (library.file().isDirectory());
}

TEST_F (LibraryFiles, NoFileCanStopASession)
{
    for (int i = 0; i < 30; ++i)
        session ("/" + juce::String (i));
    juce::MemoryBlock good;
    ASSERT_TRUE (library.file().loadFileAsData (good));
    juce::Random random (11);
    for (int round = 0; round < 40; ++round)
    {
        auto bad = good;
        for (int i = 0; i < 1 + round; ++i)
            bad[static_cast<size_t> (
                random.nextInt (round % 4 == 0 ? 100 : static_cast<int> (bad.getSize())))] =
                static_cast<char> (random.nextInt (256));
        if (round % 5 == 0)
            bad.setSize (static_cast<size_t> (random.nextInt (static_cast<int> (bad.getSize()))));
        ASSERT_TRUE (library.file().replaceWithData (bad.getData(), bad.getSize()));
        ASSERT_TRUE (library.backupFolder().deleteRecursively());

        // A file that passes the check may still be odd; it must be readable without harm.
        const auto prepared = library.prepare();
        SongDatabase database (prepared.file, prepared.storage);
        SongList list;
        std::vector<SongRecord> records;
        juce::StringArray values;
        juce::ignoreUnused (database.fillLibrary (&list, SongField::title, true),
                            database.readSongs (&list, 0, list.size(), records),
                            database.listDistinct (SongField::artist, values),
                            database.fillSmartPlaylist (&list, 1, SongField::title, true));
        EXPECT_EQ (prepared.storage, SongDatabase::Storage::file);
    }
}
