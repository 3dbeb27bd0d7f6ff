#include "mixer/AudioRecorder.h"

#include "mixer/DitheredWriter.h"

#include <algorithm>

namespace
{
constexpr int numChannels = 2;
constexpr int bitsPerSample = 16;
constexpr double flushSeconds = 2.0;

/** Far above any device, and low enough for the header's 32 bits and for frame counts of a few seconds. */
constexpr double maximumRate = 1e8;

std::unique_ptr<juce::AudioFormatWriter> createWavWriter (const juce::File& file, double sampleRate,
                                                          std::atomic<bool>& failed)
{
    if (file.isDirectory() || file.getParentDirectory().createDirectory().failed())
        return {};
    file.deleteFile();
    auto stream = file.createOutputStream();
    if (stream == nullptr)
        return {};

    std::unique_ptr<juce::AudioFormatWriter> writer (
        juce::WavAudioFormat().createWriterFor (stream.get(), sampleRate, numChannels, bitsPerSample, {}, 0));
    if (writer == nullptr)
        return {};
    juce::ignoreUnused (stream.release()); // the writer owns it now
    return std::make_unique<DitheredWriter> (std::move (writer), &failed);
}
}

AudioRecorder::AudioRecorder (Pacing::Mode m) : mode (m)
{
    thread.startThread();
}

AudioRecorder::~AudioRecorder()
{
    stopRecording();
    thread.stopThread (-1);
}

juce::File AudioRecorder::stamped (const juce::File& recordFile, juce::Time time)
{
    return recordFile.getSiblingFile (recordFile.getFileNameWithoutExtension()
                                      + time.formatted ("_%Y-%m-%d_(%Hh%Mm%Ss)") + ".wav");
}

void AudioRecorder::toggle (const juce::String& recordFile, double sampleRate, juce::Time now)
{
    assertMayBlock();
    const juce::ScopedLock command (commandLock);
    if (isRecording())
        stopRecording();
    else if (juce::File::isAbsolutePath (recordFile))
        startRecording (stamped (recordFile, now), sampleRate);
}

bool AudioRecorder::startRecording (const juce::File& file, double sampleRate)
{
    assertMayBlock();
    const juce::ScopedLock command (commandLock);
    stopRecording();
    recordedFrames = 0;
    droppedFrames = 0;
    failed = false;
    // Written so that a NaN is refused.
    if (!(sampleRate > 0.0 && sampleRate <= maximumRate))
        return false;

    auto writer = createWavWriter (file, sampleRate, failed);
    if (writer == nullptr)
    {
        failed = true;
        return false;
    }
    writerHolder = std::make_unique<ThreadedWriter> (writer.release(), thread, ringFrames);
    written = file;
    writerHolder->setFlushInterval (std::max (1, static_cast<int> (flushSeconds * sampleRate)));

    const juce::ScopedLock sl (writerLock);
    activeWriter = writerHolder.get();
    return true;
}

void AudioRecorder::stopRecording()
{
    assertMayBlock();
    const juce::ScopedLock command (commandLock);
    {
        const juce::ScopedLock sl (writerLock);
        activeWriter = nullptr;
    }
    writerHolder.reset();
}

juce::File AudioRecorder::file() const
{
    const juce::ScopedLock command (commandLock);
    return written;
}

void AudioRecorder::write (const float* const* channels, int frames) noexcept
{
    if (!isRecording() || frames <= 0)
        return;

    // The lock inherits priority and is only ever held elsewhere for the change of a pointer; handing a block over
    // wakes the writing thread, which takes that thread's own event lock for the length of a flag's change.
    const AllowedLockScope recorderLock;
    const juce::ScopedLock sl (writerLock);
    auto* writer = activeWriter.load();
    if (writer == nullptr)
        return;

    if (mode == Pacing::Mode::live)
    {
        if (!writer->write (channels, frames))
            droppedFrames += frames;
    }
    else
    {
        constexpr int pieceFrames = ringFrames / 8;
        for (int done = 0; done < frames;)
        {
            const auto count = std::min (pieceFrames, frames - done);
            const float* const piece[] = { channels[0] + done, channels[1] + done };
            while (!writer->write (piece, count))
                juce::Thread::yield();
            done += count;
        }
    }
    recordedFrames += frames;
}
