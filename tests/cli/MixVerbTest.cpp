#include "Program.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>

#include <cmath>

namespace
{
constexpr int rate = 44100;

/** Drums on a bass that never falls silent. */
void writeTrack (const juce::File& file, double bpm, double seconds, float bassHz)
{
    const auto frames = static_cast<int> (seconds * rate);
    juce::AudioBuffer<float> audio (2, frames);
    const auto beat = 60.0 * rate / bpm;
    juce::Random random (7);
    for (int i = 0; i < frames; ++i)
    {
        const auto sinceBeat = std::fmod (i, beat), sinceOffBeat = std::fmod (i + beat / 2.0, beat);
        const auto kick = std::exp (-sinceBeat / 2500.0) * std::sin (0.012 * sinceBeat);
        const auto hat = std::exp (-sinceOffBeat / 600.0) * (random.nextFloat() - 0.5f);
        const auto value = static_cast<float> (0.5 * kick + 0.2 * hat)
                           + 0.1f * std::sin (static_cast<float> (i) * bassHz * 6.2832f / rate);
        audio.setSample (0, i, value);
        audio.setSample (1, i, value);
    }
    EncodedFiles::writeWav (audio, rate, file);
}

/** The longest stretch below -50 dB, in seconds. */
double longestSilence (const juce::File& file, double& seconds)
{
    const std::unique_ptr<juce::AudioFormatReader> reader (
        juce::WavAudioFormat().createReaderFor (file.createInputStream().release(), true));
    if (reader == nullptr)
        return 1.0e9;
    juce::AudioBuffer<float> audio (2, static_cast<int> (reader->lengthInSamples));
    reader->read (&audio, 0, audio.getNumSamples(), 0, true, true);
    seconds = static_cast<double> (reader->lengthInSamples) / reader->sampleRate;
    int longest = 0, run = 0;
    for (int i = 0; i < audio.getNumSamples(); ++i)
    {
        run = std::abs (audio.getSample (0, i)) < 0.003f ? run + 1 : 0;
        longest = std::max (longest, run);
    }
    return longest / reader->sampleRate;
}
}

TEST (MixVerb, MixesAFolderInPhaseWithoutAGap)
{
    const TemporaryFolder folder;
    const juce::File tracks (folder.file ("tracks"));
    tracks.createDirectory();
    writeTrack (tracks.getChildFile ("1 slow.wav"), 118.0, 33.0, 110.0f);
    tracks.getChildFile ("2 bad.wav").replaceWithText ("no audio");
    writeTrack (tracks.getChildFile ("3 fast.wav"), 128.0, 34.0, 82.0f);
    writeTrack (tracks.getChildFile ("4 middle.wav"), 123.0, 35.0, 98.0f);
    writeTrack (tracks.getChildFile ("5 last.wav"), 120.0, 33.0, 131.0f);

    ASSERT_EQ (runProgram ({ "import", "tracks/1 slow.wav", "--root", "root" }, folder).exitCode, 0);
    const auto run = runProgram ({ "mix", "tracks", "--out", "mix.wav", "--fade", "6", "--report", "mix.csv",
                                   "--order", "tempo", "--root", "root" },
                                 juce::File (folder));
    ASSERT_EQ (run.exitCode, 2) << "a track is missing";
    ASSERT_EQ (run.err.size(), 2) << run.errorLine();
    EXPECT_TRUE (run.err[0].contains ("2 bad.wav was skipped: ")) << run.err[0];
    EXPECT_TRUE (run.err[1].contains ("1 track is missing")) << run.err[1];

    const auto songs = runProgram ({ "list", "--columns", "bpm", "--root", "root" }, folder).out;
    ASSERT_EQ (songs.size(), 2) << "what is mixed is not imported";
    EXPECT_NEAR (songs[1].getDoubleValue(), 118.0, 0.1) << "the library learns the tempo";
    const auto report = linesOf (juce::File (folder.file ("mix.csv")).loadFileAsString());
    ASSERT_EQ (report.size(), 5);
    const char* const order[] { "1 slow", "5 last", "4 middle", "3 fast" };
    const double tempos[] { 118.0, 120.0, 123.0, 128.0 };
    double lastEnd = 0.0;
    for (int i = 0; i < 4; ++i)
    {
        const auto cells = juce::StringArray::fromTokens (report[i + 1], ",", "\"");
        ASSERT_EQ (cells.size(), 5);
        EXPECT_TRUE (cells[0].contains (order[i])) << cells[0];
        EXPECT_NEAR (cells[3].getDoubleValue(), tempos[i], 0.1);
        if (i > 0)
        {
            EXPECT_NEAR (lastEnd - cells[1].getDoubleValue(), 6.0, 1.1);
            EXPECT_TRUE (cells[4].isNotEmpty());
            EXPECT_LT (std::abs (cells[4].getDoubleValue()), 5.0);
        }
        lastEnd = cells[2].getDoubleValue();
    }
    double seconds = 0.0;
    EXPECT_LT (longestSilence (juce::File (folder.file ("mix.wav")), seconds), 0.05);
    EXPECT_NEAR (seconds, lastEnd, 0.1);
}

TEST (MixVerb, FollowsHalfAndDoubleAndPlaysFarTemposAsTheyAre)
{
    struct Case
    {
        double first, second, followedSeconds;
        bool isInPhase;
    };
    for (const auto& [first, second, followedSeconds, isInPhase] : {
             Case { 90.0, 126.0, 33.0, false },
             Case { 86.0, 168.0, 33.0 * 168.0 / 172.0, true },
         })
    {
        const TemporaryFolder folder;
        writeTrack (folder.file ("1.wav"), first, 33.0, 110.0f);
        writeTrack (folder.file ("2.wav"), second, 33.0, 82.0f);
        const auto run = runProgram ({ "mix", "1.wav", "2.wav", "--out", "mix.wav", "--fade", "6", "--report",
                                       "mix.csv", "--root", "root" },
                                     folder);
        ASSERT_EQ (run.exitCode, 0) << run.errorLine();
        const auto report = linesOf (folder.file ("mix.csv").loadFileAsString());
        ASSERT_EQ (report.size(), 3);
        const auto cells = juce::StringArray::fromTokens (report[2], ",", "\"");
        EXPECT_NEAR (cells[2].getDoubleValue() - cells[1].getDoubleValue(), followedSeconds, 0.2) << second;
        EXPECT_EQ (std::abs (cells[4].getDoubleValue()) < 5.0, isInPhase) << report[2];
    }
}

TEST (MixVerb, SaysWhatIsWrong)
{
    const TemporaryFolder folder;
    juce::File (folder.file ("bad.wav")).replaceWithText ("no audio");
    juce::File (folder.file ("list.m3u")).replaceWithText ("gone.mp3\nbad.wav\n");
    const std::pair<juce::StringArray, const char*> cases[] {
        { { "mix", "--out", "m.wav" }, "mix needs tracks" },
        { { "mix", "bad.wav" }, "mix needs --out FILE." },
        { { "mix", "bad.wav", "--out", "m.mp3" }, "m.mp3 does not end in .wav" },
        { { "mix", "bad.wav", "--out", "m.wav", "--order", "key" }, "--order is given or tempo" },
        { { "mix", "bad.wav", "--out", "m.wav", "--fade", "121" }, "--fade" },
        { { "mix", "list.m3u", "--out", "m.wav", "--root", "root" }, "There is no track to mix." },
    };
    for (const auto& [arguments, sentence] : cases)
    {
        const auto run = runProgram (arguments, juce::File (folder));
        EXPECT_EQ (run.exitCode, 2);
        EXPECT_TRUE (run.errorLine().contains (sentence)) << run.errorLine();
        EXPECT_FALSE (juce::File (folder.file ("m.wav")).exists());
    }
}
