#include "Program.h"
#include "shared/EncodedFiles.h"
#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
/** A tone over noise: where bands are empty nothing is compared. */
void writeTone (const juce::File& file, double hertz, int seconds)
{
    constexpr auto rate = 44100;
    const auto tone = Signals::sine (hertz, rate, seconds * rate, 0.4);
    auto audio = EncodedFiles::makeNoise (2, seconds * rate, rate);
    audio.applyGain (0.1f);
    for (int channel = 0; channel < 2; ++channel)
        audio.addFrom (channel, 0, tone.data(), audio.getNumSamples());
    EncodedFiles::writeWav (audio, rate, file);
}
}

TEST (SimilarVerb, TellsSongsOfTheLibraryThatWereAnalysedBestFirst)
{
    const TemporaryFolder folder;
    const auto music = folder.file ("music");
    music.createDirectory();
    for (const auto& [name, hertz, seconds] : { std::tuple { "asked", 440.0, 6 },
                                                { "asked again", 440.0, 6 },
                                                { "near", 480.0, 9 },
                                                { "far", 5000.0, 12 } })
        writeTone (music.getChildFile (juce::String (name) + ".wav"), hertz, seconds);
    const auto run = [&folder] (juce::StringArray words)
    {
        words.addArray ({ "--root", "root" });
        return runProgram (words, folder);
    };
    const auto namesOf = [] (const ProgramRun& done)
    {
        juce::StringArray names;
        for (int i = 1; i < done.out.size(); ++i)
            names.add (done.out[i].fromLastOccurrenceOf ("/", false, false));
        return names.joinIntoString (" ");
    };
    ASSERT_EQ (run ({ "import", "music" }).exitCode, 0);
    const auto before = run ({ "similar", "music/asked.wav" });
    EXPECT_EQ (before.exitCode, 0) << before.errorLine();
    EXPECT_EQ (namesOf (before), "") << "no other one was analysed";
    ASSERT_EQ (run ({ "analyse", "music" }).exitCode, 0);
    EXPECT_EQ (namesOf (run ({ "similar", "music/asked.wav", "--by", "sound" })), "near.wav far.wav")
        << "without the copy";
    const auto one = run ({ "similar", "music/asked.wav", "--limit", "1", "--by", "sound" });
    ASSERT_EQ (one.out.size(), 2) << one.errorLine();
    EXPECT_EQ (one.out[0], "alike\ttempo\tchange\tkey\trelation\tartist\ttitle\tfilename");

    // Damage is told in one sentence; the songs are known again when they are analysed.
    const auto session = folder.file ("root/mufin/px_mufin.ses");
    ASSERT_TRUE (session.existsAsFile());
    session.replaceWithText ("no session");
    const auto damaged = run ({ "similar", "music/asked.wav" });
    EXPECT_EQ (damaged.exitCode, 0);
    EXPECT_EQ (damaged.err.size(), 1) << damaged.errorLine();
    EXPECT_TRUE (damaged.errorLine().contains ("is damaged and begins anew")) << damaged.errorLine();
    EXPECT_EQ (namesOf (damaged), "");

    folder.file ("text.wav").replaceWithText ("no audio");
    for (const auto& [words, sentence] :
         { std::pair { juce::StringArray { "similar" }, "similar needs one file." },
           { { "similar", "a.wav", "--by", "taste" }, "--by is one of" },
           { { "similar", "a.wav", "--limit", "0" }, "--limit" },
           { { "similar", "text.wav" }, "text.wav: The file is damaged or holds no audio." } })
    {
        const auto wrong = run (words);
        EXPECT_NE (wrong.exitCode, 0) << sentence;
        EXPECT_EQ (wrong.err.size(), 1) << wrong.errorLine();
        EXPECT_TRUE (wrong.errorLine().contains (sentence)) << wrong.errorLine();
    }
}
