#include "Program.h"
#include "analysis/files/AnalysisFile.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
/** A path's fields in a table without quotes. */
juce::StringArray fieldsOf (const juce::String& line)
{
    return juce::StringArray::fromTokens (line, ",", "");
}
}

TEST (AnalyseVerb, PrintsInTheOrderOfTheNamesAndKeepsWhatItFinds)
{
    const TemporaryFolder folder;
    const auto music = folder.file ("music");
    music.createDirectory();
    // Lengths apart, so that with several jobs the later names are ready first.
    for (const int seconds : { 20, 3, 9, 1 })
        EncodedFiles::writeWav (EncodedFiles::makeNoise (2, seconds * 44100, 44100.0), 44100.0,
                                music.getChildFile (juce::String (21 - seconds) + ".wav"));
    music.getChildFile ("5.mp3").replaceWithText ("no audio");
    music.getChildFile ("notes.txt").replaceWithText ("no track");
    // Neither what other systems keep of a file's attributes nor a copy that a killed program was writing tags to.
    for (const auto* name : { "._1.wav", ".platterdex-0f.wav" })
        ASSERT_TRUE (music.getChildFile ("1.wav").copyFileTo (music.getChildFile (name)));

    const juce::StringArray command { "analyse", "music", "missing.wav", "--root", "root" };
    const auto with = [&command] (const juce::StringArray& more)
    {
        auto words = command;
        words.addArray (more);
        return words;
    };
    const auto first = runProgram (with ({ "--jobs", "3" }), folder);
    EXPECT_EQ (first.exitCode, 2);
    ASSERT_EQ (first.err.size(), 2) << first.errorLine();
    EXPECT_TRUE (first.err[0].endsWith ("5.mp3: The file is damaged or holds no audio."));
    EXPECT_TRUE (first.err[1].endsWith ("missing.wav: The file does not exist."));
    ASSERT_EQ (first.out.size(), 5);
    EXPECT_EQ (first.out[0], "path,seconds,tempo,beats,downbeat,autogain,speed,confidence");
    int row = 0;
    for (const auto& [name, seconds] :
         { std::pair { "1", "20.0" }, { "12", "9.0" }, { "18", "3.0" }, { "20", "1.0" } })
    {
        const auto fields = fieldsOf (first.out[++row]);
        EXPECT_EQ (fields[0], music.getChildFile (juce::String (name) + ".wav").getFullPathName());
        EXPECT_EQ (fields[1], seconds);
        EXPECT_TRUE (fields[6].isNotEmpty());
        EXPECT_EQ (fields[7].isNotEmpty(), fields[2].isNotEmpty()) << "only a grid has a confidence";
    }

    // A kept analysis is read, with what a hand has set. With --force it is made anew, and the hand's cues stay.
    const auto track = music.getChildFile ("12.wav");
    const auto file = AnalysisFile::forTrack (folder.file ("root/beatmarks"), track);
    auto told = AnalysisFile::read (file);
    ASSERT_TRUE (told);
    told->tempoTracker = told->tempoAverage = 77.25;
    told->beatMarks = { { 4410, 77.25 }, { 22050, 77.25 }, { 39690, 77.25 } };
    told->downbeatId = 1;
    told->downbeatPos = 22050;
    told->untouched = { 77.25, 22050 };
    told->confidence = -1;
    told->cues.emplace().cuePos[6] = 600.0;
    ASSERT_TRUE (AnalysisFile::write (file, *told));
    ASSERT_EQ (runProgram ({ "import", "music/12.wav", "--root", "root" }, folder).exitCode, 0);
    const auto read = runProgram (with ({ "--beats" }), folder);
    EXPECT_EQ (runProgram ({ "list", "--columns", "title,bpm", "--root", "root" }, folder).out[1],
               "12\t77.25")
        << "the library below the root learns the tempo";
    EXPECT_TRUE (read.out.contains (track.getFullPathName() + ",9.0,77.25,1,0.500000,"
                                    + fieldsOf (first.out[2])[5] + ",,"))
        << "what is read was not measured, and nobody noted its confidence";
    const auto at = read.out.indexOf ("mark,0,0.100000,77.25,half");
    ASSERT_GT (at, 0);
    EXPECT_EQ (read.out[at + 1], "mark,1,0.500000,77.25,downbeat");
    const auto again = runProgram ({ "analyse", "music/12.wav", "--force", "--root", "root" }, folder);
    EXPECT_EQ (again.exitCode, 0) << again.errorLine();
    EXPECT_FALSE (again.out[1].contains (",77.25,"));
    EXPECT_EQ (AnalysisFile::read (file)->cues->cuePos[6], 600.0);
}

TEST (AnalyseVerb, WrongArgumentsAreOneSentence)
{
    const TemporaryFolder folder;
    for (const auto& words : { juce::StringArray { "analyse" },
                               { "analyse", "x", "--jobs", "0" },
                               { "analyse", "x", "--jobs", "65" },
                               { "analyse", "x", "--what" } })
    {
        const auto run = runProgram (words, folder);
        EXPECT_EQ (run.exitCode, 2);
        EXPECT_EQ (run.err.size(), 1) << run.errorLine();
        EXPECT_TRUE (run.out.isEmpty());
    }
}
