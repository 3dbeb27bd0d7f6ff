#include "tracks/formats/AdecAudioFormat.h"

#include "adec/BuiltDecoder.h"
#include "shared/EncodedFiles.h"
#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"
#include "tracks/FileStreamPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
constexpr double rate = 44100.0;
constexpr int frames = 4 * 44100;

/** A tone that rises, so that each place sounds different. */
juce::AudioBuffer<float> sweep()
{
    juce::AudioBuffer<float> audio (2, frames);
    for (int i = 0; i < frames; ++i)
    {
        const auto t = i / rate;
        const auto value = static_cast<float> (
            0.5 * std::sin (juce::MathConstants<double>::twoPi * (200.0 + 150.0 * t) * t));
        audio.setSample (0, i, value);
        audio.setSample (1, i, -value);
    }
    return audio;
}
}

TEST (AdecAudioFormat, ReadsAnyPlaceInAnyOrder)
{
    const TemporaryFolder folder;
    const auto audio = sweep();
    const auto wav = EncodedFiles::writeWav (audio, rate, folder.file ("source.wav"));
    FileStreamPlayer player;
    player.formats().registerFormat (new AdecAudioFormat (juce::File (builtDecoder())), false);
    for (const auto* name : { "a.m4a", "a.wma" })
    {
        const auto file = EncodedFiles::encode (wav, folder.file (name), { "-b:a", "256k" });
        const std::unique_ptr<juce::AudioFormatReader> reader (player.formats().createReaderFor (file));
        ASSERT_NE (reader, nullptr) << name;
        EXPECT_EQ (reader->sampleRate, rate);
        EXPECT_NEAR (static_cast<double> (reader->lengthInSamples), frames, 0.1 * rate) << name;
        const auto length = static_cast<int> (reader->lengthInSamples);
        juce::AudioBuffer<float> whole (2, length), part (2, 4000);
        ASSERT_TRUE (reader->read (&whole, 0, length, 0, true, true));
        // A WMA file says nothing of its encoder's delay.
        if (juce::String (name) != "a.wma")
        {
            EXPECT_GT (Signals::correlation ({ audio.getReadPointer (1), frames },
                                             { whole.getReadPointer (1), frames }),
                       0.97);
        }
        EXPECT_GT (whole.getRMSLevel (0, 10'000, 100'000), 0.3f) << name;
        for (const auto place : { 0, 100'000, 100'777, 20'000, 150'001 })
        {
            ASSERT_TRUE (reader->read (&part, 0, 4000, place, true, true));
            EXPECT_TRUE (std::equal (part.getReadPointer (1), part.getReadPointer (1) + 4000,
                                     whole.getReadPointer (1) + place))
                << name << " from " << place;
        }
        EXPECT_TRUE (player.load (file.getFullPathName(), 2.0)) << name;
    }
    EXPECT_FALSE (player.load (folder.file ("text.m4a").getFullPathName()));
    folder.file ("text.m4a").replaceWithText ("no sound");
    EXPECT_FALSE (player.load (folder.file ("text.m4a").getFullPathName()));
}
