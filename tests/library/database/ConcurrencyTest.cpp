#include "LibraryFixture.h"

#include "disk/FailingDisk.h"
#include "library/sql/DatabaseFile.h"
#include "library/sql/SqlInterruption.h"

#include <sys/wait.h>

#include <future>
#include <thread>
#include <unistd.h>

namespace
{
/** Another program that holds what its statements took of a library, until it is let go. */
class OtherProgram
{
public:
    OtherProgram (const juce::File& file, const std::vector<std::string>& statements)
    {
        int input[2], output[2];
        EXPECT_EQ (::pipe (input) + ::pipe (output), 0);
        std::vector<std::string> words { PX_LIBRARY_HOLDER, file.getFullPathName().toStdString() };
        words.insert (words.end(), statements.begin(), statements.end());
        std::vector<char*> pointers;
        for (auto& word : words)
            pointers.push_back (word.data());
        pointers.push_back (nullptr);
        process = ::fork();
        if (process == 0)
        {
            ::dup2 (input[0], STDIN_FILENO);
            ::dup2 (output[1], STDOUT_FILENO);
            for (const auto each : { input[0], input[1], output[0], output[1] })
                ::close (each);
            ::execv (PX_LIBRARY_HOLDER, pointers.data());
            ::_exit (3);
        }
        ::close (input[0]);
        ::close (output[1]);
        hold = input[1];
        char word = 0;
        while (said.size() < statements.size() && ::read (output[0], &word, 1) == 1)
            said += word;
        ::close (output[0]);
    }

    ~OtherProgram() { letGo(); }
    OtherProgram (const OtherProgram&) = delete;
    OtherProgram& operator= (const OtherProgram&) = delete;

    void letGo()
    {
        if (process < 0)
            return;
        ::close (hold);
        EXPECT_EQ (::waitpid (std::exchange (process, -1), nullptr, 0) > 0, true);
    }

    /** A "." for each statement that went well, an "x" for one that was refused. */
    std::string said;

private:
    pid_t process = -1;
    int hold = -1;
};

const std::vector<std::string> reads { "BEGIN", "SELECT COUNT(*) FROM songs" };
const std::vector<std::string> importsMuch {
    "PRAGMA cache_size=10", "BEGIN IMMEDIATE",
    "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n WHERE x < 20000) INSERT INTO songs "
    "(filename, title, comment) SELECT '/held/' || x, 'held', hex(randomblob(100)) FROM n"
};

using Concurrency = LibraryFixture;

/** The library on a disk without shared memory, where those who read keep those who write waiting. */
struct WithoutLog : testing::Test
{
    FailingDisk disk { true };
    TemporaryFolder folder;
    juce::File file = folder.file ("library.sqlite");
    SongDatabase database { file };
};

/** Expects it of every family, on a library with song 1 in playlist 1. */
void expectWritesRefused (SongDatabase& database)
{
    const SongRecord song = LibraryFixture::record ("/refused");
    auto list = LibraryFixture::listOf (SongListKind::playlist, 1, { 1 });
    const int32_t entries[] { 1 };
    EXPECT_THAT ((std::vector { database.insertSong (song), database.markPlayed (1),
                                database.createPlaylist ("p", &list, 1), database.deletePlaylist (1),
                                database.replacePlaylistEntries (&list), database.addListToAutomix (&list),
                                database.removeEntries (1, entries), database.deleteSongs (&list),
                                database.clearLibrary(), database.setRating (1, 5) }),
                 testing::Each (LibraryCode::busy));
}
}

TEST_F (Concurrency, AReaderNeitherWaitsNorKeepsAWriterWaiting)
{
    const auto id = add ("/a", { { SongColumn::title, "a" } });
    OtherProgram reader (file, reads);
    EXPECT_EQ (reader.said, "..");
    const auto own = listOf (SongListKind::library, -1, { id });
    ok ({ database.setRating (id, 5), database.createPlaylist ("p", &own, 1) });
    EXPECT_EQ (ask ("SELECT rating FROM songs") + ask ("SELECT name FROM playlists"), "5p");
    reader.letGo();

    OtherProgram importer (file, importsMuch);
    EXPECT_EQ (importer.said, "...");
    SongDatabase opened (file);
    const SongField title[] { SongField::title };
    for (auto* each : { &database, &opened })
    {
        SongList list;
        std::vector<SongRecord> records;
        ok ({ each->fillLibrary (&list, SongField::title, true), each->readSongs (&list, 0, 1, records),
              each->searchLibrary (&list, title, "a", SongField::title, true),
              each->fillRecommendation (&list, SongField::title, true) });
        EXPECT_EQ (each->countSongs(), 1);
        each->setPatience (0);
        expectWritesRefused (*each);
    }
}

TEST_F (WithoutLog, ACommitThatMeetsAReaderWaitsOrIsTakenBackAndSaidToBe)
{
    const auto own = LibraryFixture::listOf (SongListKind::library, -1, { 1 });
    LibraryFixture::ok (
        { database.insertSong (LibraryFixture::record ("/a")), database.createPlaylist ("p", &own, 1) });
    OtherProgram reader (file, reads);
    EXPECT_EQ (reader.said, "..");
    database.setPatience (0);
    expectWritesRefused (database);

    // None of it is left half done, and nothing is in the way of what comes later.
    auto waiting = std::async (std::launch::async,
                               [this]
                               {
                                   database.setPatience (20'000);
                                   return database.createPlaylist ("q", nullptr, 1);
                               });
    reader.letGo();
    EXPECT_EQ (waiting.get(), 0);
    SongDatabase other (file);
    EXPECT_EQ (other.countSongs(), 1);
    std::vector<SourceItem> lists;
    EXPECT_EQ (other.listPlaylists (lists), 0);
    EXPECT_EQ (lists.size(), 2u);
}

TEST_F (WithoutLog, BusyIsNeverTakenForEmptyOrMissing)
{
    EXPECT_EQ (database.insertSong (LibraryFixture::record ("/a")), 0);
    auto list = LibraryFixture::listOf (SongListKind::playlist, 1, { 1 });
    EXPECT_EQ (database.createPlaylist ("p", &list, 1), 0);
    OtherProgram writer (file, { "BEGIN EXCLUSIVE" });
    EXPECT_EQ (writer.said, ".");
    database.setPatience (0);
    std::vector<SourceItem> lists;
    SongListEntry entry;
    EXPECT_THAT ((std::vector { database.fillAutomix (&list, SongField::listOrder, true),
                                database.fillPlaylist (&list, 1, SongField::listOrder, true),
                                database.findByFilename ("/a", entry), database.listPlaylists (lists),
                                LibraryCode::ofCount (database.idOfFilename ("/a")),
                                LibraryCode::ofCount (database.countFilename ("/a")),
                                LibraryCode::ofCount (database.countSongs()),
                                database.addFilesToPlaylist (1, { "/a" }) }),
                 testing::Each (LibraryCode::busy));

    SongDatabase impatient;
    impatient.setPatience (0);
    juce::StringArray said;
    EXPECT_EQ (impatient.open (file, SongDatabase::Storage::file, [&] (auto& text) { said.add (text); }),
               LibraryCode::busy);
    EXPECT_FALSE (impatient.isOpen()) << "without its temporary tables";
    EXPECT_EQ (said.size(), 1);
    writer.letGo();
    LibraryFixture::ok ({ impatient.open (file), impatient.fillRecommendation (&list, SongField::title, true),
                          impatient.createForeignPlaylist ("f", nullptr, 1) });
}

TEST_F (WithoutLog, LookingForLocksLetsGoOfNone)
{
    auto transaction = database.beginTransaction();
    EXPECT_EQ (transaction.code(), 0);
    EXPECT_TRUE (DatabaseFile::isLocked (file));
    EXPECT_EQ (OtherProgram (file, { "BEGIN IMMEDIATE" }).said, "x");
    EXPECT_EQ (transaction.commit(), 0);
    database.close();
    EXPECT_FALSE (DatabaseFile::isLocked (file));
    const OtherProgram writer (file, { "BEGIN IMMEDIATE" });
    EXPECT_TRUE (DatabaseFile::isLocked (file));
}

TEST_F (Concurrency, ATransactionBelongsToItsTask)
{
    const auto id = add ("/a");
    std::future<int> other;
    {
        auto transaction = database.beginTransaction();
        EXPECT_EQ (database.setRating (id, 1), 0);
        EXPECT_EQ (text (id, SongField::rating), "1") << "its own thread sees what it does";
        std::thread (
            [&] { EXPECT_EQ (text (id, SongField::rating), "0") << "others see what is stored, at once"; })
            .join();
        other = std::async (std::launch::async, [&] { return database.setBpm (id, 120.0); });

        auto inner = database.beginTransaction();
        EXPECT_EQ (database.insertSong (record ("/inner")), 0);
        inner.rollBack();
        EXPECT_EQ (database.countSongs(), 1);
    }
    EXPECT_EQ (other.get(), 0);
    EXPECT_EQ (text (id, SongField::rating) + text (id, SongField::bpm), "0120.0")
        << "the end of one task took back what another had stored";
}

TEST_F (Concurrency, AnInterruptedThreadAloneStops)
{
    add ("/a");
    int32_t endless = -1;
    ok ({ database.createSmartPlaylist (
        "endless", " id IN (WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM n) SELECT x FROM n); ",
        "", 1, &endless) });
    std::stop_source stop;
    auto searching =
        std::async (std::launch::async,
                    [&]
                    {
                        const SqlInterruption interruption (stop.get_token());
                        SongList list;
                        return database.fillSmartPlaylist (&list, endless, SongField::title, true);
                    });
    SongList list;
    for (int i = 0; i < 50; ++i)
        ok ({ database.fillLibrary (&list, SongField::title, true), database.setRating (1, i % 6) });
    stop.request_stop();
    EXPECT_EQ (searching.get(), LibraryCode::interrupted);
    EXPECT_EQ (database.fillLibrary (&list, SongField::title, true), 0);
}
