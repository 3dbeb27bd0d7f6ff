#include "tracks/FileStreamPlayer.h"

#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace
{
using Channels = std::vector<std::vector<float>>;

struct Sound
{
    Channels channels;
    double rate = 44100.0;
    juce::StringPairArray tags = {};
};

/** Each sample differs from its neighbours and none is zero, so that a gap, a repeat and a skip can be told apart. */
Channels counting (int frames, int channels = 2)
{
    Channels sound (static_cast<size_t> (channels));
    for (int i = 0; i < frames; ++i)
        for (int c = 0; c < channels; ++c)
            sound[static_cast<size_t> (c)].push_back (static_cast<float> (i + 1) / 262144.0f
                                                      * (c == 0 ? 1.0f : -1.0f));
    return sound;
}

void writeSound (juce::AudioFormat& format, const juce::File& file, const Sound& sound, int bits)
{
    std::vector<const float*> pointers;
    for (const auto& channel : sound.channels)
        pointers.push_back (channel.data());
    pointers.push_back (nullptr);
    auto stream = file.createOutputStream();
    const std::unique_ptr<juce::AudioFormatWriter> writer (format.createWriterFor (
        stream.get(), sound.rate, static_cast<unsigned> (sound.channels.size()), bits, sound.tags, 0));
    ASSERT_NE (writer, nullptr);
    juce::ignoreUnused (stream.release());
    writer->writeFromFloatArrays (pointers.data(), static_cast<int> (sound.channels.size()),
                                  static_cast<int> (sound.channels[0].size()));
}

class Preview : public testing::Test
{
protected:
    juce::String wav (const Sound& sound, const char* name = "track.wav")
    {
        juce::WavAudioFormat format;
        writeSound (format, folder.file (name), sound, 32);
        return folder.file (name).getFullPathName();
    }

    /** Adds to silence. */
    Channels hear (int frames, int block = 512)
    {
        Channels heard (2, std::vector<float> (static_cast<size_t> (frames)));
        for (int at = 0; at < frames; at += block)
            player.addToMonitor (heard[0].data() + at, heard[1].data() + at, std::min (block, frames - at));
        return heard;
    }

    static bool isSilent (const Channels& sound)
    {
        return Signals::peak (sound[0]) == 0.0 && Signals::peak (sound[1]) == 0.0;
    }

    /** Compares from the end of the first fade on. */
    static void expectSame (const Channels& heard, const Channels& sound, size_t from, size_t to)
    {
        for (size_t i = from; i < to; ++i)
        {
            ASSERT_EQ (heard[0][i], sound[0][i]) << i;
            ASSERT_EQ (heard[1][i], sound.back()[i]) << i;
        }
    }

    static constexpr size_t fade = GainRamp::steps;
    TemporaryFolder folder;
    FileStreamPlayer player { Pacing::Mode::offline };
};
}

TEST_F (Preview, PlaysTheFileOnceWhateverTheBlock)
{
    const auto sound = counting (100000);
    for (const int block : { 1, 64, 512, 16384, 40000, 110000 })
    {
        ASSERT_TRUE (player.load (wav ({ sound })));
        EXPECT_FALSE (player.isPlaying());
        EXPECT_TRUE (isSilent (hear (1000)));
        player.play();
        const auto heard = hear (110000, block);
        expectSame (heard, sound, fade, 100000);
        EXPECT_EQ (heard[0][105000], 0.0f);
        EXPECT_FALSE (player.isPlaying()) << "ended, blocks of " << block;
    }
    player.play();
    EXPECT_TRUE (player.isPlaying()) << "a file that has ended starts anew";
    expectSame (hear (1000), sound, fade, 1000);
}

TEST_F (Preview, AddsToWhatTheMonitorHolds)
{
    player.load (wav ({ counting (1000) }));
    player.play();
    std::vector<float> left (500, 0.25f), right (500, 0.5f);
    player.addToMonitor (nullptr, right.data(), 500); // nothing happens without both channels
    player.addToMonitor (left.data(), nullptr, 500);
    player.addToMonitor (left.data(), right.data(), 500);
    EXPECT_EQ (left[499], 0.25f + 500.0f / 262144.0f);
    EXPECT_EQ (right[499], 0.5f - 500.0f / 262144.0f);
}

TEST_F (Preview, SeeksWithoutAJumpAndTellsItsPlace)
{
    const auto sound = counting (100000);
    player.load (wav ({ sound }));
    player.play();
    hear (10000);
    EXPECT_NEAR (player.position(), 10000 / 44100.0, 1e-9);
    player.seek (1.0);
    const auto heard = hear (2000);
    EXPECT_NEAR (heard[0][0], sound[0][10000], 0.02f) << "the former place fades out";
    expectSame ({ { heard[0].begin() + fade, heard[0].end() }, { heard[1].begin() + fade, heard[1].end() } },
                { { sound[0].begin() + 44100 + fade, sound[0].end() },
                  { sound[1].begin() + 44100 + fade, sound[1].end() } },
                0, 1900);
    EXPECT_NEAR (player.position(), 1.0 + 2000 / 44100.0, 1e-9);
    player.setLevel (0.5f);
    EXPECT_NEAR (hear (500)[0][499], 0.5f * sound[0][46599], 1e-6f);
    player.stop();
    hear (500);
    player.seek (99.0);
    EXPECT_FALSE (player.isPlaying()) << "it was stopped";
    EXPECT_NEAR (player.position(), 100000 / 44100.0, 1e-6);
}

TEST_F (Preview, StopFadesAndPlayGoesOnFromThere)
{
    const auto sound = counting (50000);
    for (const int block : { 16, 512 })
    {
        player.load (wav ({ sound }));
        player.play();
        hear (20000, block);
        player.stop();
        const auto fading = hear (1024, block);
        for (size_t i = 1; i < fade; ++i)
            EXPECT_LE (fading[0][i], fading[0][i - 1]) << "the fade falls, in blocks of " << block;
        EXPECT_LT (fading[0][0] - fading[0][1], sound[0][20000] / 32.0f) << "no jump";
        for (size_t i = fade; i < 1024; ++i)
            ASSERT_EQ (fading[0][i], 0.0f);

        player.play();
        const auto heard = hear (1000, block);
        EXPECT_EQ (heard[0][fade], sound[0][20000 + 2 * fade]);
    }
}

TEST_F (Preview, LoadReplacesAndAnEmptyPathUnloads)
{
    const auto first = wav ({ counting (50000) }, "first.wav");
    const auto second = wav ({ counting (50000, 1) }, "second.wav");
    player.load (first);
    player.play();
    hear (512);
    EXPECT_TRUE (player.load (second));
    EXPECT_EQ (player.track().path, second);
    hear (fade); // of the first
    EXPECT_TRUE (isSilent (hear (512)));
    player.play();
    expectSame (hear (40000), counting (50000, 1), fade, 40000); // a mono file sounds on both sides

    for (const auto& path :
         { juce::String(), juce::String ("track.wav"), folder.file ("none.wav").getFullPathName(),
           folder.file ("").getFullPathName() })
    {
        player.load (first);
        player.play();
        EXPECT_FALSE (player.load (path)) << path;
        EXPECT_FALSE (player.isPlaying());
        player.play();
        EXPECT_FALSE (player.isPlaying());
        EXPECT_TRUE (isSilent (hear (512)));
        EXPECT_TRUE (player.track().path.isEmpty());
    }
}

TEST_F (Preview, KeepsTagsForDisplay)
{
    Sound sound { counting (22050) };
    player.load (wav (sound, "untagged.wav"));
    EXPECT_EQ (player.track().title, "untagged");

    sound.tags.set ("INAM", "A Title");
    sound.tags.set ("IART", "An Artist");
    player.load (wav (sound));
    EXPECT_EQ (player.track().title, "A Title");
    EXPECT_EQ (player.track().artist, "An Artist");
    EXPECT_EQ (player.track().seconds, 0.5);
}

TEST_F (Preview, ReadsEveryFormat)
{
    const Sound sound { counting (30000), 44100.0, {} };
    juce::AiffAudioFormat aiff;
    juce::FlacAudioFormat flac;
    juce::OggVorbisAudioFormat ogg;
    for (auto* format : std::initializer_list<juce::AudioFormat*> { &aiff, &flac, &ogg })
    {
        const auto file = folder.file ("track" + format->getFileExtensions()[0]);
        writeSound (*format, file, sound, format->getPossibleBitDepths().contains (16) ? 16 : 32);
        ASSERT_TRUE (player.load (file.getFullPathName())) << file.getFileName();
        player.play();
        const auto heard = hear (20000);
        EXPECT_NEAR (heard[0][15000], sound.channels[0][15000], 0.01f) << file.getFileName();
        EXPECT_NEAR (heard[1][15000], sound.channels[1][15000], 0.01f) << file.getFileName();
    }
}

TEST_F (Preview, ResamplesToTheOutputRateIfThatIsKnown)
{
    const auto frequencyOf = [&] (double fileRate, double near)
    {
        const auto tone = Signals::sine (1000.0, fileRate, 2 * static_cast<int> (fileRate));
        player.load (wav ({ { tone, tone }, fileRate }));
        player.play();
        const auto heard = hear (48000)[0];
        return Signals::fitSine (std::span (heard).subspan (fade), 48000.0, near).frequency;
    };
    EXPECT_NEAR (frequencyOf (44100.0, 1088.0), 48000.0 / 44.1, 0.1);
    player.setOutputRate (48000.0);
    for (const double rate : { 22050.0, 44100.0, 48000.0, 96000.0 })
        EXPECT_NEAR (frequencyOf (rate, 1000.0), 1000.0, 0.1) << rate;
}

TEST_F (Preview, DamagedFilesAreRefusedOrPlayNothingLouder)
{
    auto sound = counting (4000);
    sound[0][1000] = std::numeric_limits<float>::quiet_NaN();
    sound[1][1001] = std::numeric_limits<float>::infinity();
    const juce::File good (wav ({ sound }));
    juce::MemoryBlock original;
    good.loadFileAsData (original);

    std::mt19937 random (9);
    for (int round = 0; round < 300; ++round)
    {
        auto bytes = original;
        if (round > 0)
            for (int i = 0; i < 4; ++i)
                bytes[random() % 100] = static_cast<char> (random()); // the header, where it hurts
        if (round % 3 == 2)
            bytes.setSize (random() % bytes.getSize());
        const auto file = folder.file ("damaged.wav");
        file.replaceWithData (bytes.getData(), bytes.getSize());
        if (!player.load (file.getFullPathName()))
            continue;
        player.play();
        for (const auto& channel : hear (5000))
            for (const auto sample : channel)
                ASSERT_LE (std::abs (sample), 4.0f) << "round " << round; // false for a NaN, too
    }
}

TEST_F (Preview, LiveNothingIsSkippedOrRepeatedHoweverLateTheDisk)
{
    constexpr size_t frames = 200000;
    const auto sound = counting (frames);
    FileStreamPlayer live;
    live.load (wav ({ sound }));
    live.play();

    std::vector<float> heard, left (512), right (512);
    while (live.isPlaying())
    {
        std::fill (left.begin(), left.end(), 0.0f);
        live.addToMonitor (left.data(), right.data(), 512);
        // Zeros are what was not there in time, or the end.
        std::copy_if (left.begin(), left.end(), std::back_inserter (heard),
                      [] (float x) { return x != 0.0f; });
    }
    ASSERT_EQ (heard.size(), frames);
    for (auto i = fade; i < frames; ++i)
        ASSERT_EQ (heard[i], sound[0][i]);
}
