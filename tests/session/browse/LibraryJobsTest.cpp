#include "BrowseFixture.h"

#include "tags/TaggedFiles.h"

using testing::ElementsAre;

namespace
{
struct Jobs : BrowseFixture
{
    const juce::File music = folder.file ("music");

    juce::File song (const juce::String& name, bool isTagged = false)
    {
        const auto target = music.getChildFile (name);
        target.create();
        return isTagged ? makeTagged (tagKinds()[2], target) : makeUntagged (target);
    }

    LibraryJob ended (int id)
    {
        room.settle();
        for (const auto& job : room.jobs.jobs())
            if (job.id == id)
                return job;
        ADD_FAILURE() << "no job " << id;
        return {};
    }
};
}

TEST_F (Jobs, CountWhatTheyDoAndEndAsTheySay)
{
    EXPECT_EQ (ended (room.jobs.lookAtFolders()).summary, "No music folder was imported yet.");
    song ("a.wav");
    song ("b.wav");
    const auto made = ended (room.jobs.importPaths ({ music.getFullPathName() }, { SongListKind::automix }));
    EXPECT_EQ (made.state, LibraryJob::State::ended);
    EXPECT_EQ (made.summary, "2 songs found, 2 new.");
    EXPECT_EQ (songsOf ({ SongListKind::automix }).size(), 2u);
    EXPECT_EQ (room.jobs.folders.all(), juce::StringArray (music.getFullPathName()));

    const auto copied = ended (room.jobs.backup (folder.file ("copy.sqlite")));
    EXPECT_EQ (copied.state, LibraryJob::State::ended);
    EXPECT_EQ (SongDatabase (folder.file ("copy.sqlite")).countSongs(), 2);
    const auto failed = ended (room.jobs.backup (folder.file ("none/copy.sqlite")));
    EXPECT_EQ (failed.state, LibraryJob::State::failed);
    EXPECT_TRUE (failed.summary.contains ("can't be written")) << failed.summary;

    const auto waiting = room.jobs.importPaths ({ music.getFullPathName() });
    room.jobs.cancel (waiting);
    EXPECT_NE (ended (waiting).state, LibraryJob::State::failed);
    const auto changes = room.jobs.changes();
    room.jobs.dismiss (waiting);
    EXPECT_EQ (room.jobs.jobs().size(), 4u);
    EXPECT_NE (room.jobs.changes(), changes);
}

TEST_F (Jobs, FindMovedFilesAgainAndTakeNewOnesIn)
{
    const auto named = song ("one/named.wav"), tagged = song ("one/tagged.mp3", true),
               twice = song ("one/twice.wav");
    song ("one/stays.wav");
    ended (room.jobs.importPaths ({ music.getFullPathName() }));
    const auto idOf = [&] (const juce::File& at) { return database.idOfFilename (at.getFullPathName()); };
    const auto namedId = idOf (named), taggedId = idOf (tagged), twiceId = idOf (twice);
    EXPECT_EQ (database.addFilesToAutomix ({ named.getFullPathName() }), 0);

    const auto two = music.getChildFile ("two"), three = music.getChildFile ("three");
    two.createDirectory();
    three.createDirectory();
    ASSERT_TRUE (named.moveFileTo (two.getChildFile ("NAMED.wav")));
    ASSERT_TRUE (tagged.moveFileTo (two.getChildFile ("renamed.mp3")));
    ASSERT_TRUE (twice.copyFileTo (three.getChildFile ("twice.wav")));
    ASSERT_TRUE (twice.moveFileTo (two.getChildFile ("twice.wav")));
    song ("three/new.wav");

    const auto job = ended (room.jobs.lookAtFolders());
    EXPECT_EQ (idOf (two.getChildFile ("NAMED.wav")), namedId) << job.summary;
    EXPECT_EQ (idOf (two.getChildFile ("renamed.mp3")), taggedId);
    EXPECT_EQ (idOf (twice), twiceId) << "two files could be it";
    ASSERT_EQ (job.failures.size(), 1);
    EXPECT_TRUE (job.failures[0].startsWith (twice.getFullPathName() + ": Several files"));
    EXPECT_THAT (songsOf ({ SongListKind::automix }), ElementsAre (namedId));
    EXPECT_EQ (database.countSongs(), 7) << "four, both copies of the doubtful one, and the new one";
    EXPECT_EQ (job.summary, "3 missing, 2 found again. 6 songs found, 3 new.");
    const auto told = room.jobs.jobs().size();
    room.jobs.lookAtFolders (LibraryJobs::Told::news);
    room.settle();
    EXPECT_EQ (room.jobs.jobs().size(), told) << "nothing is new";
    song ("three/newer.wav");
    EXPECT_TRUE (ended (room.jobs.lookAtFolders (LibraryJobs::Told::news)).summary.contains ("1 new."));
    ASSERT_TRUE (music.getChildFile ("three/newer.wav").deleteFile());

    ASSERT_TRUE (music.moveFileTo (folder.file ("elsewhere")));
    const auto gone = ended (room.jobs.lookAtFolders());
    EXPECT_EQ (gone.failures.size(), 1) << "the drive is away";
    EXPECT_EQ (database.countSongs(), 8);
}
