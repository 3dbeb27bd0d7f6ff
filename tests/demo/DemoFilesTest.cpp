#include "demo/DemoFiles.h"
#include "shared/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>

namespace
{
/** Fills the places of all tracks but the first with other files, so that only one has to be rendered. */
void occupyAllButFirst (const juce::File& folder)
{
    for (const auto& track : demoTracks().subspan (1))
        folder.getChildFile (track.fileName).replaceWithText ("mine");
}
}

TEST (DemoFiles, AWrittenTrackDecodesToWhatWasRendered)
{
    const TemporaryFolder folder;
    const auto target = folder.file ("audio");
    ASSERT_TRUE (target.createDirectory());
    occupyAllButFirst (target);
    const auto result = writeDemoTracks (target);
    EXPECT_EQ (result.written, 1);
    EXPECT_EQ (result.error, "");

    const auto& track = demoTracks().front();
    juce::FlacAudioFormat format;
    const std::unique_ptr<juce::AudioFormatReader> reader (
        format.createReaderFor (target.getChildFile (track.fileName).createInputStream().release(), true));
    ASSERT_NE (reader, nullptr);
    EXPECT_EQ (reader->sampleRate, 44100.0);
    EXPECT_EQ (reader->bitsPerSample, 16u);
    EXPECT_EQ (reader->numChannels, 2u);
    const auto audio = renderDemoTrack (track);
    ASSERT_EQ (reader->lengthInSamples, audio.getNumSamples());

    juce::AudioBuffer<float> decoded (2, audio.getNumSamples());
    reader->read (&decoded, 0, audio.getNumSamples(), 0, true, true);
    for (int channel = 0; channel < 2; ++channel)
        decoded.addFrom (channel, 0, audio, channel, 0, audio.getNumSamples(), -1.0f);
    // A rounding and a dither of at most a step each, and the two scales of 16 bits.
    EXPECT_LE (decoded.getMagnitude (0, audio.getNumSamples()), 2.6f / 32768.0f);
}

TEST (DemoFiles, FilesThatAreThereStayAsTheyAre)
{
    const TemporaryFolder folder;
    occupyAllButFirst (folder);
    // Even a folder of a track's name is somebody's.
    folder.file (demoTracks().front().fileName).createDirectory();
    const auto result = writeDemoTracks (folder);
    EXPECT_EQ (result.written, 0);
    EXPECT_EQ (result.error, "");
    for (const auto& track : demoTracks().subspan (1))
        EXPECT_EQ (folder.file (track.fileName).loadFileAsString(), "mine");
    EXPECT_EQ (
        static_cast<const juce::File&> (folder).getNumberOfChildFiles (juce::File::findFilesAndDirectories),
        static_cast<int> (demoTracks().size()));
}

TEST (DemoFiles, AStopIsHeededAndNothingHalfIsLeft)
{
    const TemporaryFolder folder;
    int asked = 0;
    const auto result = writeDemoTracks (folder, [&] { return ++asked == 2; });
    EXPECT_EQ (result.written, 1);
    EXPECT_EQ (result.error, "");
    EXPECT_EQ (static_cast<const juce::File&> (folder).getNumberOfChildFiles (juce::File::findFiles), 1);
    EXPECT_TRUE (folder.file (demoTracks().front().fileName).existsAsFile());
}

TEST (DemoFiles, WhatCannotBeWrittenIsASentence)
{
    const TemporaryFolder folder;
    ASSERT_TRUE (folder.file ("file").replaceWithText ("not a folder"));
    occupyAllButFirst (folder);
    // A folder with something in it stands where the unfinished file would go.
    const auto* name = demoTracks().front().fileName;
    ASSERT_TRUE (folder.file (juce::String (name) + ".part").getChildFile ("inner").createDirectory());
    for (const auto& [target, what] : { std::pair { folder.file ("file").getChildFile ("audio"), "tracks" },
                                        { folder.file (""), "track .*" } })
    {
        const auto result = writeDemoTracks (target);
        EXPECT_EQ (result.written, 0);
        EXPECT_THAT (result.error.toStdString(), testing::MatchesRegex ("The demo " + std::string (what)
                                                                        + " could not be written: .*\\."));
    }
    EXPECT_EQ (folder.file ("file").loadFileAsString(), "not a folder");
    EXPECT_FALSE (folder.file (name).exists());
}

TEST (DemoFiles, EncodingRepeatsToTheByte)
{
    juce::AudioBuffer<float> audio (2, 20000);
    for (int i = 0; i < audio.getNumSamples(); ++i)
        for (int channel = 0; channel < 2; ++channel)
            audio.setSample (channel, i, static_cast<float> ((i * (channel + 7)) % 1000) / 1000.0f - 0.5f);
    const auto once = encodeDemoTrack (audio);
    EXPECT_GT (once.getSize(), 1000u);
    EXPECT_TRUE (once == encodeDemoTrack (audio));
}
