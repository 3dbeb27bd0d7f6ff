#include "Program.h"
#include "settings/SettingsFile.h"
#include "shared/EncodedFiles.h"
#include "shared/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <juce_audio_formats/juce_audio_formats.h>

#include <cmath>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace
{
using namespace testing;

/** A sine in each channel, a little louder from one to the next. */
void writeWav (const juce::File& file, int channels, double rate, int frames)
{
    juce::AudioBuffer<float> audio (channels, frames);
    for (int channel = 0; channel < channels; ++channel)
        for (int i = 0; i < frames; ++i)
            audio.setSample (channel, i, 0.1f * static_cast<float> ((channel + 1) * std::sin (i * 0.05)));
    EncodedFiles::writeWav (audio, rate, file);
}

struct Wav
{
    explicit Wav (const juce::File& file)
    {
        const std::unique_ptr<juce::AudioFormatReader> reader (
            juce::WavAudioFormat().createReaderFor (file.createInputStream().release(), true));
        if (reader == nullptr)
            return;
        rate = reader->sampleRate;
        isFloat = reader->usesFloatingPointData && reader->bitsPerSample == 32;
        audio.setSize (static_cast<int> (reader->numChannels), static_cast<int> (reader->lengthInSamples));
        reader->read (&audio, 0, audio.getNumSamples(), 0, true, true);
    }

    float rms (int channel) const { return audio.getRMSLevel (channel, 0, audio.getNumSamples()); }

    double rate = 0.0;
    bool isFloat = false;
    juce::AudioBuffer<float> audio;
};

juce::MemoryBlock bytesOf (const juce::File& file)
{
    juce::MemoryBlock bytes;
    file.loadFileAsData (bytes);
    return bytes;
}

constexpr const char* shortSet = "0 load A \"a track.wav\"\n"
                                 "0.1 set PLAY_PAUSE_A 1\n"
                                 "0.5 print PLAY_PAUSE_A\n"
                                 "0.5 set DISK_RECORDER 1\n"
                                 "1 end\n";
}

class PerformVerb : public Test
{
protected:
    PerformVerb()
    {
        writeWav (folder.file ("a track.wav"), 2, 44100.0, 3 * 44100);
        write ("set.txt", shortSet);
    }

    void write (const char* name, const juce::String& text)
    {
        folder.file (name).replaceWithText (text, false, false, "\n");
    }
    ProgramRun perform (juce::StringArray arguments)
    {
        arguments.insert (0, "perform");
        return runProgram (arguments, folder);
    }

    void expectRefusal (const juce::StringArray& arguments, const char* part)
    {
        const auto before = folderContent();
        const auto run = perform (arguments);
        EXPECT_EQ (run.exitCode, 2) << part;
        EXPECT_TRUE (run.out.isEmpty()) << part;
        EXPECT_EQ (run.err.size(), 1) << run.errorLine();
        EXPECT_THAT (run.errorLine().toStdString(), AllOf (StartsWith ("platterdex: "), HasSubstr (part)));
        EXPECT_EQ (folderContent(), before) << part;
    }

    juce::String folderContent() const
    {
        auto found = juce::File (folder).findChildFiles (juce::File::findFilesAndDirectories, true);
        found.sort();
        juce::String names;
        for (const auto& file : found)
            names << file.getFullPathName() << " " << file.getSize() << "\n";
        return names;
    }

    TemporaryFolder folder;
};

TEST_F (PerformVerb, WritesMasterAndAllChannels)
{
    const auto run = perform ({ "set.txt", "--out", "m.wav", "--all-out=all.wav", "--rate", "48000" });
    EXPECT_EQ (run.exitCode, 0) << run.errorLine();
    EXPECT_THAT (run.out.joinIntoString ("\n").toStdString(),
                 AllOf (StartsWith ("0.500000 PLAY_PAUSE_A 1.000000\nWrote "), EndsWith ("m.wav, 1.0 s.")));
    EXPECT_THAT (run.errorLine().toStdString(), HasSubstr ("--root"))
        << "a recording goes with the temporary folder";

    const Wav master (folder.file ("m.wav")), all (folder.file ("all.wav"));
    EXPECT_TRUE (master.isFloat && all.isFloat);
    EXPECT_EQ (master.rate, 48000.0);
    ASSERT_EQ (master.audio.getNumChannels(), 2);
    ASSERT_EQ (all.audio.getNumChannels(), 14);
    EXPECT_EQ (master.audio.getNumSamples(), 48000);
    EXPECT_EQ (all.audio.getNumSamples(), 48000);
    EXPECT_GT (master.rms (0), 0.02f);
    EXPECT_EQ (master.rms (1), all.rms (1));
    EXPECT_EQ (all.rms (6), 0.0f) << "deck B plays nothing";

    EXPECT_EQ (juce::File (folder).getNumberOfChildFiles (juce::File::findFilesAndDirectories), 4)
        << "nothing temporary stays: " << folderContent();
}

TEST_F (PerformVerb, EqualRunsGiveEqualBytes)
{
    for (const auto* name : { "1", "2" })
        EXPECT_EQ (perform ({ "set.txt", "--out", name + juce::String (".wav"), "--root", name }).exitCode,
                   0);
    EXPECT_EQ (bytesOf (folder.file ("1.wav")), bytesOf (folder.file ("2.wav")));

    const auto* recording = "disk_recorder/record_2000-01-01_(00h00m00s).wav";
    const auto first = folder.file ("1").getChildFile (recording);
    EXPECT_EQ (Wav (first).audio.getNumSamples(), 22050);
    EXPECT_EQ (bytesOf (first), bytesOf (folder.file ("2").getChildFile (recording)));
}

TEST_F (PerformVerb, KeepsNothingInARootThatAnotherProgramHas)
{
    write ("pads.txt", "0 slicegate A 5 727\n0.1 end\n");
    const auto run = [&] { return perform ({ "pads.txt", "--out", "o.wav", "--root", "root" }); };
    const auto setup = folder.file ("root/setup"), pads = setup.getChildFile ("slicegate_A.xml");
    ASSERT_TRUE (setup.createDirectory().wasOk());
    const auto lock =
        open (setup.getChildFile ("session.lock").getFullPathName().toRawUTF8(), O_RDWR | O_CREAT, 0644);
    ASSERT_EQ (flock (lock, LOCK_EX), 0);
    const auto second = run();
    EXPECT_EQ (second.exitCode, 0);
    EXPECT_THAT (second.errorLine().toStdString(), HasSubstr ("are not kept"));
    EXPECT_FALSE (pads.existsAsFile());
    EXPECT_EQ (setup.getNumberOfChildFiles (juce::File::findFiles), 1) << "the lock";

    close (lock);
    EXPECT_TRUE (run().err.isEmpty());
    EXPECT_TRUE (pads.existsAsFile());
}

TEST_F (PerformVerb, FeedsTheInputs)
{
    EngineSettings settings;
    for (auto& setup : settings.deckSetup)
        setup.lineThrough = 1;
    ASSERT_TRUE (folder.file ("root/setup").createDirectory().wasOk());
    ASSERT_TRUE (saveSettings (settings, folder.file ("root/setup")));
    writeWav (folder.file ("in.wav"), 4, 44100.0, 22050);
    write ("set.txt", "1 end");

    const auto run =
        perform ({ "set.txt", "--out", "m.wav", "--all-out", "all.wav", "--in", "in.wav", "--root", "root" });
    EXPECT_EQ (run.exitCode, 0) << run.errorLine();
    const Wav input (folder.file ("in.wav")), all (folder.file ("all.wav"));
    ASSERT_EQ (all.audio.getNumSamples(), 44100);
    for (int channel = 0; channel < 4; ++channel)
        EXPECT_NEAR (all.rms (4 + channel) / input.rms (channel), 1.0f / std::sqrt (2.0f), 0.01f)
            << "the input's half second in the run's whole one, less the opening fader, channel " << channel;
    for (int channel = 8; channel < 14; ++channel)
        EXPECT_EQ (all.rms (channel), 0.0f) << channel;
}

TEST_F (PerformVerb, RefusesBadInputInOneLine)
{
    write ("bad.txt", "0 print 1\n\n0 set CROSSFADDER 1\n");
    folder.file ("garbage.txt")
        .replaceWithData ("\x7f"
                          "ELF\x02\x01\0\0\xff\xfe",
                          10);
    writeWav (folder.file ("wide.wav"), 11, 44100.0, 100);
    writeWav (folder.file ("slow.wav"), 2, 32000.0, 100);
    write ("text.wav", "no audio");
    ASSERT_TRUE (folder.file ("dir").createDirectory().wasOk());

    expectRefusal ({ "bad.txt", "--out", "m.wav" }, "bad.txt:3: There is no command \"CROSSFADDER\".");
    expectRefusal ({ "garbage.txt", "--out", "m.wav" }, "garbage.txt:1: ");
    expectRefusal ({ "/dev/zero", "--out", "m.wav" }, "larger than 64 MB");
    expectRefusal ({ "gone.txt", "--out", "m.wav" }, "gone.txt does not exist.");
    expectRefusal ({ "dir", "--out", "m.wav" }, "is a folder, not a set.");
    expectRefusal ({}, "needs a set");
    expectRefusal ({ "set.txt", "bad.txt", "--out", "m.wav" }, "one set only");
    expectRefusal ({ "set.txt" }, "needs --out");
    expectRefusal ({ "set.txt", "--out", "dir" }, "dir can't be written: it is a folder.");
    expectRefusal ({ "set.txt", "--out", "gone/m.wav" }, "its folder does not exist.");
    expectRefusal ({ "set.txt", "--out", "/dev/null" },
                   "/dev/null can't be written: it is not a plain file.");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--all-out", "./m.wav" }, "name the same file");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--all-out", "dir" }, "dir can't be written");
    expectRefusal ({ "set.txt", "--out", "set.txt" }, "set.txt is what the run reads; it would be replaced.");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--in", "slow.wav", "--all-out", "slow.wav" },
                   "slow.wav is what");
    write ("loads.txt", "0 load A text.wav\n1 end\n");
    expectRefusal ({ "loads.txt", "--out", "text.wav" }, "text.wav is what the run reads");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--root", "set.txt" }, "can't be made or written.");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--in", "gone.wav" }, "gone.wav does not exist.");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--in", "text.wav" }, "text.wav is not a WAV file.");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--in", "wide.wav" },
                   "has 11 channels, more than the 10 inputs.");
    expectRefusal ({ "set.txt", "--out", "m.wav", "--in", "slow.wav" },
                   "has a rate of 32000 Hz, the run has 44100 Hz.");
    for (const auto* rate : { "7999", "192001", "44.1k", "-44100", "" })
        expectRefusal ({ "set.txt", "--out", "m.wav", "--rate=" + juce::String (rate) }, "--rate");
    for (const auto* block : { "0", "65537", "1e3" })
        expectRefusal ({ "set.txt", "--out", "m.wav", "--block", block },
                       "--block takes a whole number from 1 to 65536");
}

TEST_F (PerformVerb, PerformsWithoutWhatDidNotLoadAndEndsWithItsPaths)
{
    write ("broken.wav", "no audio");
    write ("set.txt", "0 load A gone.wav\n0.25 load B notes.txt\n0.5 load C broken.wav nowait\n1 end\n");
    const auto run = perform ({ "set.txt", "--out", "m.wav" });
    EXPECT_EQ (run.exitCode, 2);
    ASSERT_EQ (run.err.size(), 6) << run.errorLine();
    for (const auto* name : { "gone.wav", "notes.txt", "broken.wav" })
        EXPECT_TRUE (run.err.contains ("platterdex: " + folder.file (name).getFullPathName()
                                       + " was not loaded, and is missing in what was performed."))
            << run.errorLine();
    EXPECT_EQ (run.err[0], "0.000000 deck A: *** Load Error *** gone.wav The file does not exist.");
    EXPECT_THAT (run.err[1].toStdString(), StartsWith ("0.250000 deck B: nothing was loaded: "));
    EXPECT_EQ (Wav (folder.file ("m.wav")).audio.getNumSamples(), 44100);
}

TEST_F (PerformVerb, RealFilesOfEveryFormatPlayAndTheRecordingIsTheMaster)
{
    const auto music = EncodedFiles::writeWav (EncodedFiles::makeNoise (2, 10 * 44100, 44100.0), 44100.0,
                                               folder.file ("music.wav"));
    const juce::StringArray names { "a.mp3", "b.m4a", "c.flac", "d.ogg", "e.wma", "f.aiff", "g.wav" };
    for (const auto& name : names)
        EncodedFiles::encode (music, folder.file (name));

    // Four decks at a time: played, scratched, reversed, jumped; then the other three.
    juce::String set ("0 set DISK_RECORDER 1\n");
    for (int i = 0; i < names.size(); ++i)
    {
        const auto deck = juce::String::charToString ('A' + i % 4);
        const auto start = i < 4 ? 0 : 3;
        if (i == 4)
            for (const auto* line :
                 { "1 set JOG_SCRATCH_ON_A 1", "1.1 set JOG_A 1 0.01 -2", "1.3 set JOG_A 1 0.01 3",
                   "1.5 set JOG_SCRATCH_ON_A 0", "1.6 reverse B on", "2 set HOT_CUE_1_C 1",
                   "2.1 reverse B off", "2.2 set SEEK_D 0.7", "2.4 set HOT_CUE_1_C 1" })
                set << line << "\n";
        set << start << " load " << deck << " " << names[i] << "\n"
            << start << " set PLAY_PAUSE_" << deck << " 1\n";
    }
    for (const auto* deck : { "A", "B", "C", "D" })
        set << "5 print PLAY_PAUSE_" << deck << "\n";
    write ("set.txt", set + "5 set DISK_RECORDER 1\n5 end\n");

    const auto run = perform ({ "set.txt", "--out", "m.wav", "--all-out", "all.wav", "--root", "root" });
    ASSERT_EQ (run.exitCode, 0) << run.errorLine();
    EXPECT_TRUE (run.err.isEmpty()) << run.errorLine();
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE (run.out[i].endsWith (" 1.000000")) << run.out[i];

    const Wav master (folder.file ("m.wav")), all (folder.file ("all.wav"));
    for (int channel = 4; channel < 12; ++channel)
        EXPECT_GT (all.rms (channel), 0.02f) << channel;
    const auto recordings =
        folder.file ("root/disk_recorder").findChildFiles (juce::File::findFiles, false, "*.wav");
    ASSERT_EQ (recordings.size(), 1);
    const Wav recorded (recordings[0]);
    ASSERT_EQ (recorded.audio.getNumSamples(), master.audio.getNumSamples());
    for (int side = 0; side < 2; ++side)
        for (int i = 0; i < master.audio.getNumSamples(); ++i) // rounded to half a step, with a dither of one
            ASSERT_NEAR (recorded.audio.getSample (side, i),
                         juce::jlimit (-1.0f, 1.0f, master.audio.getSample (side, i)), 1.51f / 32768.0f)
                << i;
}
