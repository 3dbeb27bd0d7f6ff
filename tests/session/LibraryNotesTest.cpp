#include "library/import/ImportSong.h"
#include "session/LibraryAutomix.h"
#include "session/Session.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
/** A session whose library holds songs that need no files. */
struct LibraryNotes : testing::Test
{
    SongDatabase& fill()
    {
        EXPECT_EQ (session.openLibrary (LibrarySession::Use::write), "");
        for (const auto& path : paths)
            EXPECT_TRUE (importSong (*session.library(), path));
        return *session.library();
    }

    static Session::Options options (const juce::File& root)
    {
        Session::Options made;
        made.folders.root = root;
        made.library.folder = root;
        return made;
    }

    const TemporaryFolder folder;
    const juce::StringArray paths { "/music/a.mp3", "/music/b.mp3", "/music/c.mp3" };
    Session session { options (folder) };
    SongDatabase& songs = fill();
};
}

TEST_F (LibraryNotes, ATempoReplacesWhatWasKnownButNotByItsHalfOrDouble)
{
    struct Case
    {
        double known, found, kept;
    };
    const auto id = songs.idOfFilename (paths[0]);
    for (const auto& [known, found, kept] : {
             Case { 0.0, 87.0, 87.0 },
             Case { 174.0, 87.02, 174.0 },
             Case { 87.0, 173.5, 87.0 },
             Case { 120.0, 120.4, 120.4 },
             Case { 120.0, 80.0, 80.0 },
         })
    {
        ASSERT_EQ (songs.setBpm (id, known), 0);
        session.noteGrid ({ paths[0], found });
        session.waitForNotes();
        juce::String text;
        ASSERT_EQ (songs.readField (SongField::bpm, id, text), 0);
        EXPECT_NEAR (text.getDoubleValue(), kept, 0.01) << known << ", then " << found;
    }
    // Without a confidence the known one stays; 0 is kept for songs that nobody has analysed.
    const auto confidence = [&]
    {
        juce::String text;
        EXPECT_EQ (songs.readField (SongField::analyzed, id, text), 0);
        return text.getIntValue();
    };
    for (const auto& [told, kept] : { std::pair { -1, 0 }, { 0, 1 }, { -1, 1 }, { 100, 100 }, { 43, 43 } })
    {
        session.noteGrid ({ paths[0], 120.0, told });
        session.waitForNotes();
        EXPECT_EQ (confidence(), kept) << told;
    }
    session.noteGrid ({ "/music/none.mp3", 100.0 });
    session.waitForNotes();
    EXPECT_EQ (songs.countSongs(), 3);
}

TEST (LibraryOpening, WaitsForNobodyAndKeepsWhatWasNotedMeanwhile)
{
    const TemporaryFolder folder;
    {
        SongDatabase database (LibraryPlace { folder }.file().file());
        ASSERT_TRUE (importSong (database, "/music/a.mp3"));
    }
    auto options = Session::Options {};
    options.folders.root = folder;
    options.library.folder = folder;
    Session session (std::move (options));
    EXPECT_EQ (session.browserWhenOpen(), nullptr) << "a worker opens it";
    EXPECT_TRUE (session.isOpeningLibrary());
    session.noteGrid ({ "/music/a.mp3", 99.0 });
    while (session.browserWhenOpen() == nullptr)
        std::this_thread::yield();
    EXPECT_FALSE (session.isOpeningLibrary());
    session.waitForNotes();
    juce::String bpm;
    auto& songs = session.browser()->database;
    ASSERT_EQ (songs.readField (SongField::bpm, songs.idOfFilename ("/music/a.mp3"), bpm), 0);
    EXPECT_NEAR (bpm.getDoubleValue(), 99.0, 0.01);
}

TEST_F (LibraryNotes, AutomixTakesTheListInItsOrderAndGoesOnWhenItGrows)
{
    LibraryAutomix automix ([this] { return &songs; });
    EXPECT_EQ (automix.nextTrack(), juce::File());
    ASSERT_EQ (songs.addFilesToAutomix ({ paths[1], paths[0] }), 0);
    EXPECT_EQ (automix.nextTrack()->getFullPathName(), paths[1]);
    EXPECT_EQ (automix.nextTrack()->getFullPathName(), paths[0]);
    EXPECT_EQ (automix.nextTrack(), juce::File());
    EXPECT_TRUE (automix.isAtEnd());
    ASSERT_EQ (songs.addFilesToAutomix ({ paths[2] }), 0);
    EXPECT_EQ (automix.nextTrack()->getFullPathName(), paths[2]);
    EXPECT_EQ (automix.nextTrack(), juce::File());
    automix.begin();
    EXPECT_EQ (automix.nextTrack()->getFullPathName(), paths[1]);
    automix.begin();
    EXPECT_EQ (automix.nextTrack()->getFullPathName(), paths[0]) << "switched off and on within the list";
}

TEST_F (LibraryNotes, AutomixOnAStageAsksAndIsAnsweredLater)
{
    AutomixReader automix ([this] { return &songs; });
    const auto next = [&]
    {
        EXPECT_FALSE (automix.nextTrack()) << "nothing is read on this thread";
        automix.wait();
        return automix.nextTrack().value_or (juce::File ("/unanswered")).getFullPathName();
    };
    ASSERT_EQ (songs.addFilesToAutomix ({ paths[1], paths[0] }), 0);
    EXPECT_EQ (next(), paths[1]);
    EXPECT_EQ (next(), paths[0]);
    EXPECT_EQ (next(), "");
    automix.begin();
    EXPECT_EQ (next(), paths[1]);
    EXPECT_FALSE (automix.nextTrack());
    automix.begin();
    automix.wait();
    EXPECT_EQ (automix.nextTrack()->getFullPathName(), paths[0])
        << "switched off and on before it was fetched";
}

TEST_F (LibraryNotes, AutomixWithoutASongIsSaid)
{
    auto said = 0;
    AutomixReader automix ([this] { return &songs; }, [&said] { ++said; });
    automix.begin();
    automix.wait();
    EXPECT_EQ (said, 1);
    ASSERT_EQ (songs.addFilesToAutomix ({ paths[0] }), 0);
    automix.begin();
    automix.wait();
    EXPECT_EQ (said, 1) << "the list has a song";
    AutomixReader without ([] { return nullptr; }, [&said] { ++said; });
    without.begin();
    without.wait();
    EXPECT_EQ (said, 1) << "no library can be asked";
}
