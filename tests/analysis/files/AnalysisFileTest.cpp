#include "analysis/files/AnalysisFile.h"

#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
/** A grid of half beats at 120 BPM and 44.1 kHz. */
TrackAnalysis ofGrid (int marks, int32_t first = 0, int32_t downbeat = 1)
{
    TrackAnalysis analysis;
    auto& grid = analysis.beatMarks.emplace();
    for (int32_t i = 0; i < marks; ++i)
        grid.push_back ({ first + i * 11025, 120.0 });
    analysis.downbeatId = downbeat;
    analysis.downbeatPos = marks > 0 ? grid[static_cast<size_t> (downbeat)].pos : 0;
    analysis.gridMode = 0;
    analysis.autogain = 0.5;
    return analysis;
}

TrackAnalysis ofDeck (TrackAnalysis analysis)
{
    auto& cues = analysis.cues.emplace();
    cues.cuePos[2] = 777.0;
    cues.transportCueSel = cues.transportStart = 0;
    return analysis;
}
}

TEST (AnalysisFile, TheNameIsTheTracksNameAndSize)
{
    const TemporaryFolder folder;
    const auto marks = folder.file ("beatmarks");
    const auto track = folder.file ("My track.v2.mp3");
    track.replaceWithText ("12345");
    const auto stored = AnalysisFile::forTrack (marks, track);
    EXPECT_EQ (stored, marks.getChildFile ("My track.v2_5.xml"));
    ASSERT_TRUE (AnalysisFile::write (stored, ofGrid (4)));

    const auto hasAnalysis = [&marks] (const juce::File& file)
    { return AnalysisFile::read (AnalysisFile::forTrack (marks, file)).has_value(); };
    ASSERT_TRUE (hasAnalysis (track));

    const auto elsewhere = folder.file ("elsewhere");
    elsewhere.createDirectory();
    const auto moved = elsewhere.getChildFile (track.getFileName());
    ASSERT_TRUE (track.moveFileTo (moved));
    EXPECT_TRUE (hasAnalysis (moved));
    const auto renamed = elsewhere.getChildFile ("Other name.mp3");
    ASSERT_TRUE (moved.moveFileTo (renamed));
    EXPECT_FALSE (hasAnalysis (renamed));
    moved.replaceWithText ("encoded anew");
    EXPECT_FALSE (hasAnalysis (moved));

    EXPECT_EQ (AnalysisFile::forTrack (marks, track), track); // gone
    EXPECT_EQ (AnalysisFile::forTrack (marks, elsewhere), elsewhere);
    EXPECT_FALSE (hasAnalysis (track));
    EXPECT_FALSE (hasAnalysis (elsewhere));
}

TEST (AnalysisFile, ANewAnalysisKeepsWhatAHandHasMade)
{
    const auto fresh = ofGrid (6, 100, 3);
    struct Case
    {
        const char* what;
        TrackAnalysis old;
        bool keepsGrid;
    };
    std::vector<Case> cases {
        { "no deck wrote it", ofGrid (4), false },     { "a deck wrote it", ofDeck (ofGrid (4)), false },
        { "fixed grid", ofDeck (ofGrid (4)), true },   { "downbeat moved", ofDeck (ofGrid (4)), true },
        { "tempo halved", ofDeck (ofGrid (4)), true }, { "tempo tapped", ofDeck (ofGrid (4)), true }
    };
    cases[2].old.gridMode = 1;
    cases[3].old.downbeatPos += 512;
    cases[4].old.tempoTracker = 60.0;
    cases[5].old.tempoTracker = cases[5].old.tempoAverage = 126.0;
    for (auto& [what, old, keepsGrid] : cases)
    {
        old.autogain = 2.0;
        const TemporaryFolder folder;
        const auto file = folder.file ("x.xml");
        ASSERT_TRUE (AnalysisFile::write (file, old));
        auto isWritten = false;
        const auto merged = AnalysisFile::writeFresh (file, fresh, isWritten);
        EXPECT_TRUE (isWritten);
        EXPECT_EQ (AnalysisFile::read (file), std::optional (merged)) << what;
        EXPECT_EQ (merged.cues, old.cues) << what;
        EXPECT_EQ (merged.autogain, 0.5) << what;
        EXPECT_EQ (merged.beatMarks, (keepsGrid ? old : fresh).beatMarks) << what;
        EXPECT_EQ (merged.tempoTracker, (keepsGrid ? old : fresh).tempoTracker) << what;
        EXPECT_EQ (merged.gridMode.value_or (0), keepsGrid ? old.gridMode : 0) << what;
        EXPECT_EQ (merged.downbeatPos == old.downbeatPos, keepsGrid) << what;
    }

    // The downbeat that a hand may have chosen stays where it was, under the new marks; a grid is better than none.
    const auto merged = mergeFresh (ofDeck (ofGrid (4, 0, 2)), fresh);
    EXPECT_EQ (merged.downbeatId, 2);
    EXPECT_EQ (merged.downbeatPos, 100 + 2 * 11025);
    EXPECT_EQ (mergeFresh (ofDeck (ofGrid (4)), ofGrid (0)).beatMarks, ofGrid (4).beatMarks);
    auto gridless = ofDeck (ofGrid (4));
    gridless.beatMarks.reset();
    EXPECT_EQ (mergeFresh (gridless, fresh).beatMarks, fresh.beatMarks);
}

TEST (AnalysisFile, TheEndOfTheProcessLeavesTheOldFileOrTheNewOne)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("x.xml");
    const auto one = ofDeck (ofGrid (3000)), other = ofGrid (2000);
    ASSERT_TRUE (AnalysisFile::write (file, one));
    for (int round = 0; round < 20; ++round)
    {
        int ends[2];
        ASSERT_EQ (pipe (ends), 0);
        const auto child = fork();
        if (child == 0)
            for (char count = 0;; ++count)
                if (!AnalysisFile::write (file, count % 2 == 0 ? other : one)
                    || write (ends[1], &count, 1) != 1)
                    _exit (1);
        close (ends[1]);
        char count = 0;
        for (int i = 0; i <= round; ++i)
            ASSERT_EQ (read (ends[0], &count, 1), 1);
        kill (child, SIGKILL);
        int status = 0;
        waitpid (child, &status, 0);
        close (ends[0]);
        ASSERT_TRUE (WIFSIGNALED (status));
        const auto found = AnalysisFile::read (file);
        ASSERT_TRUE (found == std::optional (one) || found == std::optional (other)) << round;
    }

    // A folder that cannot be written is reported.
    folder.file ("in the way").replaceWithText ("x");
    EXPECT_FALSE (AnalysisFile::write (folder.file ("in the way").getChildFile ("x.xml"), one));
}
