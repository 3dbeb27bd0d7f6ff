#include "LibraryFixture.h"

#include "disk/FailingDisk.h"

#include <functional>

namespace
{
/** All that a library holds, but for times. */
std::string contentOf (const juce::File& file)
{
    SqlConnection connection;
    std::string all;
    EXPECT_EQ (connection.open (file.getFullPathName()), 0);
    for (const auto* sql :
         { "PRAGMA integrity_check", "SELECT id || filename || rating || playcount FROM songs",
           "SELECT id || name FROM playlists", "SELECT playlist_id || song_id FROM playlists_songs",
           "SELECT song_id FROM automix_songs", "SELECT id || the_value FROM settings",
           "SELECT name || sql_query FROM smart_playlists" })
    {
        EXPECT_EQ (
            connection.query (sql, [&] (const SqlRow& row) { all += row.text (0).toStdString() + "|"; }), 0);
        all += "\n";
    }
    EXPECT_EQ (all.substr (0, 3), "ok|");
    return all;
}

struct FullDisk : testing::TestWithParam<bool>
{
    static juce::String longName() { return juce::String::repeatedString ("name ", 2000); }

    const TemporaryFolder folder;
    const juce::File original = folder.file ("original.sqlite"), file = folder.file ("library.sqlite");
    SongList songs { SongListKind::playlist, 1 };

    void SetUp() override
    {
        SongDatabase database (file);
        for (int i = 0; i < 300; ++i)
        {
            EXPECT_EQ (database.insertSong (LibraryFixture::record ("/" + juce::String (i))), 0);
            songs.add ({ 1, 1, i + 1, -1, nullptr });
        }
        EXPECT_EQ (database.createPlaylist ("first", &songs, 1), 0);
        EXPECT_EQ (database.copyTo (original), 0);
    }

    /** Runs an operation while the disk has room for ever more writes, until it goes well. */
    void expectStoredOrSaid (const char* name, const std::function<int (SongDatabase&)>& operation)
    {
        SCOPED_TRACE (name);
        const auto before = contentOf (original);
        auto lastCode = -1;
        auto stored = before;
        for (int writes = 0; lastCode != 0; writes += 1 + writes / 16)
        {
            ASSERT_LT (writes, 1000);
            for (const auto& old : folder.file ("").findChildFiles (juce::File::findFiles, false, "library*"))
                ASSERT_TRUE (old.deleteFile());
            ASSERT_TRUE (original.copyFileTo (file));
            auto hasFailed = false;
            {
                SongDatabase database (file);
                FailingDisk::fillAfter (writes);
                lastCode = operation (database);
                hasFailed = FailingDisk::makeRoom();
                EXPECT_TRUE (lastCode != 0 || hasFailed || FailingDisk::isSynced())
                    << "a power cut would take it";
                // A later change is not lost with it, nor does it store what was refused.
                EXPECT_EQ (database.setRating (7, 3), 0);
                EXPECT_EQ (database.setRating (7, 0), 0);
            }
            stored = contentOf (file);
            if (lastCode != 0)
            {
                ASSERT_EQ (stored, before) << "code " << lastCode << " at write " << writes;
            }
            EXPECT_TRUE (hasFailed || lastCode == 0);
        }
        EXPECT_NE (stored, before) << "it was said to be stored";
    }
};
}

TEST_P (FullDisk, LosesNothingThatWasSaidToBeStored)
{
    const FailingDisk disk (GetParam());
    expectStoredOrSaid ("insert",
                        [] (auto& d) { return d.insertSong (LibraryFixture::record ("/" + longName())); });
    expectStoredOrSaid ("create", [this] (auto& d) { return d.createPlaylist (longName(), &songs, 2); });
    expectStoredOrSaid ("replace",
                        [this] (auto& d)
                        {
                            auto list = songs;
                            while (list.size() > 150)
                                list.remove (0);
                            return d.replacePlaylistEntries (&list);
                        });
    expectStoredOrSaid ("played", [] (auto& d) { return d.markPlayed (3); });
    expectStoredOrSaid ("delete a list", [] (auto& d) { return d.deletePlaylist (1); });
    expectStoredOrSaid ("delete songs", [this] (auto& d) { return d.deleteSongs (&songs); });
    expectStoredOrSaid ("clear", [] (auto& d) { return d.clearLibrary(); });
    expectStoredOrSaid ("layout",
                        [] (auto& d)
                        {
                            const SongList library (SongListKind::library);
                            return d.saveLayout (&library, longName(), longName());
                        });
    expectStoredOrSaid ("rules", [] (auto& d) { return d.createSmartPlaylist (longName(), "1", "", 1); });
    expectStoredOrSaid ("automix", [this] (auto& d) { return d.addListToAutomix (&songs); });
}

INSTANTIATE_TEST_SUITE_P (Journals, FullDisk, testing::Bool());
