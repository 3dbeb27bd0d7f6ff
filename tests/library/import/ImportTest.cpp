#include "disk/FailingDisk.h"
#include "library/database/SongDatabase.h"
#include "library/import/ImportDirectory.h"
#include "library/import/ImportFiles.h"
#include "library/import/ImportSong.h"
#include "shared/TemporaryFolder.h"
#include "shared/Watching.h"
#include "tags/TaggedFiles.h"

#include <gtest/gtest.h>

namespace
{
class Import : public testing::Test
{
protected:
    /** Three songs in two folders, files that are no songs, and links that go round in circles. */
    void SetUp() override
    {
        makeTagged (tagKinds()[2], add ("B side.MP3"));
        makeUntagged (add ("sub/10.wav"));
        makeUntagged (add ("sub/9.wav"));
        add ("cover.jpg");
        add ("mp3");
        add ("round/text.txt");
        EXPECT_TRUE (music.createSymbolicLink (music.getChildFile ("round/up"), true));
        EXPECT_TRUE (music.getChildFile ("sub").createSymbolicLink (music.getChildFile ("again"), true));
        EXPECT_TRUE (folder.file ("gone.mp3").createSymbolicLink (music.getChildFile ("broken.mp3"), true));
        ASSERT_EQ (database.open (folder.file ("library.sqlite")), LibraryCode::ok);
    }

    juce::File add (const juce::String& name)
    {
        const auto file = music.getChildFile (name);
        EXPECT_TRUE (file.create());
        return file;
    }

    juce::String path (const char* name) const { return music.getChildFile (name).getFullPathName(); }

    /** The file names of a list's songs. */
    juce::StringArray namesIn (const SongList& list)
    {
        juce::StringArray names;
        for (const auto& entry : list.entries())
        {
            SongRecord song;
            EXPECT_EQ (database.readSong (entry.songId, song), LibraryCode::ok);
            names.add (song[SongColumn::filename].fromLastOccurrenceOf ("/", false, false));
        }
        return names;
    }

    juce::StringArray playlistNames (int32_t id)
    {
        SongList list (SongListKind::playlist, id);
        EXPECT_EQ (database.fillPlaylist (&list, id, SongField::listOrder, true), LibraryCode::ok);
        return namesIn (list);
    }

    int32_t makePlaylist()
    {
        int32_t id = -1;
        EXPECT_EQ (database.createPlaylist ("Set", nullptr, 1, &id), LibraryCode::ok);
        return id;
    }

    const TemporaryFolder folder;
    const juce::File music = folder.file ("music");
    SongDatabase database;
};
}

TEST_F (Import, FolderComesInOnceAndInOrder)
{
    Watching first, second;
    const auto result = ImportDirectory (&database, music).run (first);
    EXPECT_EQ (result.accepted, 3);
    EXPECT_EQ (result.added, 3);
    EXPECT_EQ (result.refused, 0);
    EXPECT_EQ (first.texts,
               (juce::StringArray { path ("B side.MP3"), path ("sub/9.wav"), path ("sub/10.wav") }));
    EXPECT_GT (first.last, 0.7);

    SongRecord song;
    ASSERT_EQ (database.readSong (database.idOfFilename (path ("B side.MP3")), song), LibraryCode::ok);
    EXPECT_EQ (song[SongColumn::title], Tagged::title);
    EXPECT_EQ (song[SongColumn::artist], Tagged::artist);
    EXPECT_EQ (song[SongColumn::bpm], "128.00");
    EXPECT_EQ (song[SongColumn::rating], "4");
    EXPECT_EQ (song[SongColumn::format], ".MP3");
    EXPECT_GT (song[SongColumn::filesize].getLargeIntValue(), 1000);

    const auto again = ImportDirectory (&database, music).run (second);
    EXPECT_EQ (again.accepted, 3);
    EXPECT_EQ (again.added, 0);
    EXPECT_EQ (database.countSongs(), 3);
}

TEST_F (Import, CancelKeepsWhatWasDone)
{
    Watching afterOne (1);
    const auto result = ImportFiles (&database, { music.getFullPathName() }, {}).run (afterOne);
    EXPECT_TRUE (result.isCancelled);
    EXPECT_EQ (result.added, 1);

    SongDatabase reopened (folder.file ("library.sqlite"));
    EXPECT_EQ (reopened.countSongs(), 1);
}

TEST_F (Import, FilesGoWhereTheyWereDropped)
{
    const auto playlist = makePlaylist();
    const juce::StringArray dropped { path ("sub"), path ("cover.jpg"), path ("B side.MP3") };
    const juce::StringArray names { "9.wav", "10.wav", "B side.MP3" };
    EXPECT_TRUE (importSong (database, path ("sub/9.wav")));
    EXPECT_FALSE (importSong (database, path ("sub/9.wav")));

    ImportFiles::Target target;
    target.playlistId = playlist;
    Watching watch;
    EXPECT_EQ (ImportFiles (&database, dropped, target).run (watch).added, 2);
    EXPECT_EQ (playlistNames (playlist), names);

    target = {};
    target.isAutomix = true;
    Watching toAutomix;
    EXPECT_EQ (ImportFiles (&database, dropped, target).run (toAutomix).added, 0);
    SongList automix (SongListKind::automix);
    EXPECT_EQ (database.fillAutomix (&automix, SongField::listOrder, true), LibraryCode::ok);
    EXPECT_EQ (namesIn (automix), names);

    SongList list (SongListKind::playlist, playlist);
    EXPECT_EQ (database.fillPlaylist (&list, playlist, SongField::listOrder, true), LibraryCode::ok);
    for (auto* each : { &list, &automix })
    {
        const auto seconds = each->totalDuration();
        target = {};
        target.list = each;
        target.place = 1;
        Watching intoList;
        ImportFiles (&database, { path ("sub") }, target).run (intoList);
        EXPECT_EQ (namesIn (*each),
                   (juce::StringArray { "9.wav", "9.wav", "10.wav", "10.wav", "B side.MP3" }));
        EXPECT_EQ (each->totalDuration(), seconds + 4);
    }
    EXPECT_EQ (playlistNames (playlist), namesIn (list));
    EXPECT_EQ (database.countAutomix(), 5);
    EXPECT_EQ (database.countSongs(), 3);
}

TEST_F (Import, NothingToDoEndsAtOnce)
{
    Watching watch;
    EXPECT_EQ (ImportDirectory (nullptr, music).run (watch).accepted, 0);
    EXPECT_EQ (ImportDirectory (&database, folder.file ("missing")).run (watch).accepted, 0);
    EXPECT_EQ (ImportFiles (nullptr, { path ("sub") }, {}).run (watch).accepted, 0);
    EXPECT_EQ (ImportFiles (&database, {}, {}).run (watch).accepted, 0);
    SongDatabase closed;
    EXPECT_EQ (ImportDirectory (&closed, music).run (watch).code, LibraryCode::notOpen);
}

TEST_F (Import, EndsAtTheFirstSongThatALockedLibraryRefuses)
{
    SqlConnection other;
    ASSERT_EQ (other.open (folder.file ("library.sqlite").getFullPathName()), 0);
    ASSERT_EQ (other.run ("BEGIN IMMEDIATE"), 0);
    database.setPatience (0);
    Watching watch, afterwards;
    const auto result = ImportFiles (&database, { music.getFullPathName(), path ("sub") }, {}).run (watch);
    EXPECT_TRUE (result.isLocked());
    EXPECT_EQ (watch.texts.size(), 1);
    EXPECT_EQ (result.refused, 1);
    ASSERT_EQ (other.run ("ROLLBACK"), 0);
    const auto free = ImportDirectory (&database, music).run (afterwards);
    EXPECT_EQ (free.code, 0);
    EXPECT_EQ (free.added, 3);
}

TEST_F (Import, ReportsWhatAFullDiskLetItStore)
{
    for (int i = 0; i < 12; ++i)
        add ("many/" + juce::String (i) + ".mp3");
    for (const auto isOfNetwork : { false, true })
    {
        const FailingDisk disk (isOfNetwork);
        const auto file = folder.file ("full.sqlite");
        auto wasFull = true;
        for (int writes = 0; wasFull; writes += 1 + writes / 16)
        {
            ASSERT_LT (writes, 1000);
            for (const auto* ending : { "", "-wal", "-shm", "-journal" })
                ASSERT_TRUE (juce::File (file.getFullPathName() + ending).deleteFile());
            ImportResult result;
            {
                SongDatabase full (file);
                FailingDisk::fillAfter (writes);
                Watching watch;
                result = ImportDirectory (&full, music).run (watch);
                wasFull = FailingDisk::makeRoom();
            }
            EXPECT_EQ (result.code != 0, result.added < 15);
            ASSERT_EQ (SongDatabase (file).countSongs(), result.added) << "at write " << writes;
        }
    }
}

TEST_F (Import, AttributeFilesAndWorkingCopiesAreNoSongs)
{
    add ("._B side.mp3");
    add ("sub/._9.wav");
    add ("sub/.platterdex-9.wav"); // the copy in which a killed program was writing tags
    Watching watch, single;
    EXPECT_EQ (ImportDirectory (&database, music).run (watch).accepted, 3);
    EXPECT_EQ (ImportFiles (&database, { path ("._B side.mp3") }, {}).run (single).accepted, 0);
}

TEST_F (Import, StartedSongCountsAsPlayed)
{
    const auto file = path ("sub/9.wav");
    EXPECT_EQ (markStarted (database, file), 0);
    EXPECT_TRUE (importSong (database, file));
    EXPECT_EQ (markStarted (database, file), 1);
    EXPECT_EQ (markStarted (database, file), 1);
    SongRecord song;
    EXPECT_EQ (database.readSong (database.idOfFilename (file), song), LibraryCode::ok);
    EXPECT_EQ (song[SongColumn::playcount], "2");
    EXPECT_GT (song[SongColumn::lastplayed].getLargeIntValue(), 0);
}
