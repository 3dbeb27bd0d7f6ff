#include "mixer/AudioRecorder.h"

#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <thread>

#include <csignal>
#include <sys/resource.h>

namespace
{
using Channel = std::vector<float>;

struct Wav
{
    juce::AudioBuffer<float> audio;
    double rate = 0.0;
    int bits = 0;

    explicit Wav (const juce::File& file)
    {
        juce::WavAudioFormat format;
        const std::unique_ptr<juce::AudioFormatReader> reader (
            format.createReaderFor (file.createInputStream().release(), true));
        if (reader == nullptr)
            return;
        rate = reader->sampleRate;
        bits = static_cast<int> (reader->bitsPerSample);
        audio.setSize (static_cast<int> (reader->numChannels), static_cast<int> (reader->lengthInSamples));
        reader->read (&audio, 0, audio.getNumSamples(), 0, true, true);
    }

    int frames() const { return audio.getNumSamples(); }
};

Channel noise (size_t frames, uint32_t seed, float level)
{
    std::mt19937 random (seed);
    std::uniform_real_distribution<float> values (-level, level);
    Channel channel (frames);
    for (auto& value : channel)
        value = values (random);
    return channel;
}

void write (AudioRecorder& recorder, const Channel& left, const Channel& right, size_t start, size_t frames)
{
    const float* const channels[] = { left.data() + start, right.data() + start };
    recorder.write (channels, static_cast<int> (frames));
}

/** The largest distance of a recording from the first frames of what was played, limited to what 16 bits can hold. */
float largestError (const Wav& wav, const Channel& left, const Channel& right)
{
    float largest = 0.0f;
    for (int i = 0; i < wav.frames(); ++i)
        for (int channel = 0; channel < 2; ++channel)
        {
            const auto played = (channel == 0 ? left : right)[static_cast<size_t> (i)];
            const auto expected = std::clamp (played, -1.0f, 32767.0f / 32768.0f);
            largest = std::max (largest, std::abs (wav.audio.getSample (channel, i) - expected));
        }
    return largest;
}

/** A channel over and over, up to so many frames. */
Channel repeated (const Channel& channel, int frames)
{
    Channel out (static_cast<size_t> (frames));
    for (size_t i = 0; i < out.size(); ++i)
        out[i] = channel[i % channel.size()];
    return out;
}

constexpr float oneStep = 1.0f / 32768.0f;
constexpr float mostError = 1.5f * oneStep; // half a step of rounding and a step of dither
constexpr auto recordable = static_cast<size_t> (AudioRecorder::ringFrames);
const juce::Time newYear (2024, 0, 1, 23, 5, 9);
}

TEST (AudioRecorder, RecordingIsTheMasterRoundedTo16BitsWithDither)
{
    const TemporaryFolder folder;
    const auto left = noise (50000, 1, 1.0f),
               right = noise (50000, 2, 1.6f); // the right one goes beyond full scale
    AudioRecorder recorder;
    ASSERT_TRUE (recorder.startRecording (folder.file ("take.wav"), 48000.0));
    size_t written = 0;
    for (size_t block = 0; written < left.size(); block = block * 3 % 4099 + 1)
    {
        const auto frames = std::min (block, left.size() - written);
        write (recorder, left, right, written, frames);
        written += frames;
    }
    EXPECT_EQ (recorder.recordedFrames, 50000);
    recorder.stopRecording();

    const Wav wav (folder.file ("take.wav"));
    EXPECT_EQ (wav.rate, 48000.0);
    EXPECT_EQ (wav.bits, 16);
    EXPECT_EQ (wav.audio.getNumChannels(), 2);
    ASSERT_EQ (wav.frames(), 50000);
    EXPECT_LE (largestError (wav, left, right), mostError);
}

TEST (AudioRecorder, LevelsBelowAStepSurviveInTheMean)
{
    const TemporaryFolder folder;
    for (const float level : { -0.4f, 0.25f })
    {
        const Channel quiet (50000, level * oneStep);
        AudioRecorder recorder;
        ASSERT_TRUE (recorder.startRecording (folder.file ("quiet.wav"), 48000.0));
        write (recorder, quiet, quiet, 0, quiet.size());
        recorder.stopRecording();

        const Wav wav (folder.file ("quiet.wav"));
        double sum = 0.0;
        for (int i = 0; i < wav.frames(); ++i)
            sum += wav.audio.getSample (0, i);
        EXPECT_NEAR (sum / wav.frames() / oneStep, level, 0.02);
    }
}

TEST (AudioRecorder, ToggleStampsTheNameAndReplacesARecordingOfTheSameSecond)
{
    const TemporaryFolder folder;
    AudioRecorder recorder;
    const Channel silence (1000, 0.0f);
    const auto recordFile = folder.file ("new folder/my.mix.wav").getFullPathName();
    for (const size_t frames : { 1000, 10 })
    {
        recorder.toggle (recordFile, 44100.0, newYear);
        EXPECT_TRUE (recorder.isRecording());
        write (recorder, silence, silence, 0, frames);
        EXPECT_EQ (recorder.recordedFrames, static_cast<int64_t> (frames)) << "restarts with each recording";
        recorder.toggle (recordFile, 44100.0, newYear);
        EXPECT_FALSE (recorder.isRecording());
    }
    EXPECT_EQ (Wav (folder.file ("new folder/my.mix_2024-01-01_(23h05m09s).wav")).frames(), 10);
    EXPECT_EQ (AudioRecorder::stamped (folder.file ("set.aif"), newYear),
               folder.file ("set_2024-01-01_(23h05m09s).wav"));
}

TEST (AudioRecorder, StaysIdleWhereItCannotRecord)
{
    const TemporaryFolder folder;
    folder.file ("file").create();
    folder.file ("folder.wav").createDirectory();
    AudioRecorder recorder;
    const Channel silence (64, 0.0f);

    for (const auto rate :
         { 0.0, -44100.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity() })
        EXPECT_FALSE (recorder.startRecording (folder.file ("rate.wav"), rate)) << rate;
    EXPECT_FALSE (folder.file ("rate.wav").exists());
    EXPECT_FALSE (recorder.hasFailed());
    EXPECT_FALSE (recorder.startRecording (folder.file ("file/take.wav"), 44100.0));
    EXPECT_FALSE (recorder.startRecording (juce::File ("/proc/take.wav"), 44100.0));
    EXPECT_TRUE (recorder.hasFailed());
    EXPECT_FALSE (recorder.startRecording (folder.file ("folder.wav"), 44100.0));
    EXPECT_TRUE (folder.file ("folder.wav").isDirectory());
    for (const auto* path : { "", "record.wav", "./record.wav" })
        recorder.toggle (path, 44100.0, newYear);

    EXPECT_FALSE (recorder.isRecording());
    write (recorder, silence, silence, 0, 64);
    EXPECT_EQ (recorder.recordedFrames, 0);

    // A failed start ends the recording that ran.
    ASSERT_TRUE (recorder.startRecording (folder.file ("take.wav"), 44100.0));
    EXPECT_FALSE (recorder.startRecording (folder.file ("take2.wav"), 0.0));
    EXPECT_FALSE (recorder.isRecording());
}

TEST (AudioRecorder, LiveABlockThatDoesNotFitIsDroppedAndCounted)
{
    const TemporaryFolder folder;
    const Channel silence (recordable + 1, 0.0f);
    AudioRecorder recorder;
    recorder.startRecording (folder.file ("take.wav"), 44100.0);
    write (recorder, silence, silence, 0, silence.size());
    EXPECT_EQ (recorder.droppedFrames, static_cast<int64_t> (silence.size()));
    write (recorder, silence, silence, 0, 100);
    recorder.stopRecording();
    EXPECT_EQ (Wav (folder.file ("take.wav")).frames(), 100);
}

TEST (AudioRecorder, AFullDiskEndsTheRecordingAndIsTold)
{
    const TemporaryFolder folder;
    constexpr rlim_t most = 1'000'000;
    const auto before = ::signal (SIGXFSZ, SIG_IGN);
    rlimit limit {};
    ASSERT_EQ (::getrlimit (RLIMIT_FSIZE, &limit), 0);
    const rlimit full { most, limit.rlim_max };
    ASSERT_EQ (::setrlimit (RLIMIT_FSIZE, &full), 0); // no file grows beyond it, as on a full disk

    AudioRecorder recorder (Pacing::Mode::offline);
    const Channel sound = noise (44100, 7, 0.5f);
    ASSERT_TRUE (recorder.startRecording (folder.file ("take.wav"), 44100.0));
    EXPECT_FALSE (recorder.hasFailed());
    for (int i = 0; i < 30; ++i)
        write (recorder, sound, sound, 0, sound.size());
    const auto deadline = juce::Time::getMillisecondCounter() + 10'000;
    while (!recorder.hasFailed() && juce::Time::getMillisecondCounter() < deadline)
        juce::Thread::sleep (5);
    EXPECT_TRUE (recorder.hasFailed());
    EXPECT_FALSE (recorder.isRecording());
    const int64_t shown = recorder.recordedFrames;
    write (recorder, sound, sound, 0, sound.size());
    EXPECT_EQ (recorder.recordedFrames, shown);
    recorder.stopRecording();
    EXPECT_TRUE (recorder.hasFailed());

    EXPECT_EQ (::setrlimit (RLIMIT_FSIZE, &limit), 0);
    ::signal (SIGXFSZ, before);
    // The header may tell of frames that were in a buffer still, and lie behind the file's end.
    constexpr int headerBytes = 200, bufferedFrames = 32768 / 4;
    const auto file = folder.file ("take.wav");
    Wav kept (file);
    const auto whole = (static_cast<int> (file.getSize()) - headerBytes) / 4;
    EXPECT_GT (whole, static_cast<int> (most) / 4 - 44100);
    EXPECT_LE (std::abs (kept.frames() - whole), bufferedFrames);
    kept.audio.setSize (2, std::min (kept.frames(), whole), true);
    const auto played = repeated (sound, kept.frames());
    EXPECT_LE (largestError (kept, played, played), mostError);

    // There is room again: the next press records.
    recorder.toggle (folder.file ("mix.wav").getFullPathName(), 44100.0, newYear);
    EXPECT_TRUE (recorder.isRecording());
    EXPECT_FALSE (recorder.hasFailed());
}

TEST (AudioRecorder, OfflineNothingIsLostAndTheFileCanBePlayedWhileItGrows)
{
    const TemporaryFolder folder;
    const auto left = noise (3 * recordable, 5, 0.9f), right = noise (3 * recordable, 6, 0.9f);
    AudioRecorder recorder (Pacing::Mode::offline);
    recorder.startRecording (folder.file ("take.wav"), 44100.0);
    write (recorder, left, right, 0, 2 * recordable); // one block, larger than the ring
    for (auto at = 2 * recordable; at < left.size(); at += 512)
        write (recorder, left, right, at, 512);

    // Whatever the ring no longer holds is in the file, but for the piece that the thread is writing.
    // It grows still: a copy is made of what was read, and not compared with the file's later size.
    juce::MemoryBlock soFar;
    ASSERT_GT (juce::FileInputStream (folder.file ("take.wav")).readIntoMemoryBlock (soFar), 0);
    ASSERT_TRUE (folder.file ("killed.wav").replaceWithData (soFar.getData(), soFar.getSize()));
    const Wav killed (folder.file ("killed.wav"));
    EXPECT_GE (killed.frames(), static_cast<int> (2 * recordable - recordable / 4));
    recorder.stopRecording();
    EXPECT_EQ (recorder.droppedFrames, 0);
    const Wav wav (folder.file ("take.wav"));
    ASSERT_EQ (wav.frames(), static_cast<int> (left.size()));
    for (const auto* each : { &killed, &wav })
        EXPECT_LE (largestError (*each, left, right), mostError);
}

TEST (AudioRecorder, CommandsOfSeveralThreadsMeetAudioUnharmed)
{
    const TemporaryFolder folder;
    AudioRecorder recorder;
    std::atomic<bool> done { false };
    std::thread audio (
        [&]
        {
            const Channel block (64, 0.5f);
            while (!done)
            {
                write (recorder, block, block, 0, block.size());
                std::this_thread::yield();
            }
        });
    const auto press = [&] (const juce::String& name)
    {
        for (int i = 0; i < 100; ++i)
            recorder.toggle (folder.file (name).getFullPathName(), 44100.0, newYear);
    };
    std::thread other (press, "midi.wav");
    press ("message.wav");
    other.join();
    EXPECT_FALSE (recorder.isRecording()) << "an even number of presses";
    done = true;
    audio.join();
    for (const auto& file : folder.file ("").findChildFiles (juce::File::findFiles, false))
        EXPECT_EQ (Wav (file).rate, 44100.0) << file.getFileName();
}
