#include "Program.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

TEST (TimecodeVerbs, TheDiscThatIsWrittenIsReadFromItsFirstMinute)
{
    const TemporaryFolder folder;
    const auto written = runProgram ({ "control-cd", "--out", "disc.wav", "--minutes", "1" }, folder);
    ASSERT_EQ (written.exitCode, 0) << written.errorLine();
    const auto read = runProgram ({ "timecode", "disc.wav", "--medium", "cd" }, folder);
    ASSERT_EQ (read.exitCode, 0) << read.errorLine();
    const auto& lines = read.out;
    EXPECT_NEAR (lines.size(), 60'003, 10);
    const auto last = juce::StringArray::fromTokens (lines[lines.size() - 1], " ", {});
    ASSERT_EQ (last.size(), 3);
    EXPECT_NEAR (last[1].getDoubleValue(), 1.0, 0.0003);
    EXPECT_NEAR (last[2].getDoubleValue(), last[0].getDoubleValue(), 0.0005);
}

TEST (TimecodeVerbs, SayWhatIsWrong)
{
    const TemporaryFolder folder;
    juce::File (folder.file ("bad.wav")).replaceWithText ("no audio");
    const std::pair<juce::StringArray, const char*> cases[] {
        { { "control-cd" }, "control-cd needs --out FILE.wav." },
        { { "control-cd", "--out", "disc.mp3" }, "disc.mp3 does not end in .wav, which" },
        { { "control-cd", "--out", "disc.wav", "--minutes", "28" },
          "--minutes takes a whole number from 1 to 27" },
        { { "control-cd", "--out", "no/such/disc.wav" }, "disc.wav." },
        { { "timecode" }, "timecode needs one WAV file." },
        { { "timecode", "bad.wav", "--medium", "shellac" }, "There is no medium \"shellac\"" },
        { { "timecode", "gone.wav" }, "There is no file" },
        { { "timecode", "bad.wav" }, "bad.wav is no stereo WAV file" },
    };
    for (const auto& [arguments, sentence] : cases)
    {
        const auto run = runProgram (arguments, juce::File (folder));
        EXPECT_EQ (run.exitCode, 2);
        EXPECT_TRUE (run.errorLine().contains (sentence)) << run.errorLine();
    }
}
