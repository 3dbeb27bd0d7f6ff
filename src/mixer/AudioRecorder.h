#pragma once

#include "support/AudioThread.h"
#include "support/Pacing.h"
#include "support/Relaxed.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <atomic>
#include <memory>

/** Writes the master bus to a 16-bit stereo WAV file while it plays, rounded with dither.

    The audio thread copies each block into a ring, a thread of the recorder writes it to disk. The file's header is
    brought up to date every two seconds of audio, so that what a killed session leaves behind can be played. */
class AudioRecorder
{
public:
    /** Frames that the ring holds: 2.7 s at 192 kHz and 10 s at 48 kHz, in 4 MB that are only taken while recording.
        A disk that wakes from sleep or empties its cache keeps its writer waiting for a second or two. */
    static constexpr int ringFrames = 1 << 19;

    /** Live, a block that finds the ring full is dropped. Offline, where audio runs faster than the disk, write() waits
        until there is room, and nothing is ever dropped. */
    explicit AudioRecorder (Pacing::Mode mode = Pacing::Mode::live);

    /** Ends a recording. */
    ~AudioRecorder();

    /** Command 465: ends the recording that runs, or starts one into `recordFile` with a time stamp in its name. A path
        that is not absolute starts nothing. After a failure the next one starts anew.
        @param sampleRate   the engine's rate in Hz. Any thread but the audio thread. */
    void toggle (const juce::String& recordFile, double sampleRate,
                 juce::Time now = juce::Time::getCurrentTime());

    /** Starts a new file, in place of one of that name, and sets recordedFrames to 0. The rate stays that of the start.
        @param sampleRate   above 0 Hz. Any thread but the audio thread.
        @returns false if the rate or the file can't be used, which leaves the recorder idle. */
    bool startRecording (const juce::File& file, double sampleRate);

    /** Ends the recording, if there is one, and completes the file. Any thread but the audio thread. */
    void stopRecording();

    /** Any thread. */
    bool isRecording() const noexcept { return activeWriter.load() != nullptr && !hasFailed(); }

    /** True from when the file could not be begun or written further, the disk being full for instance, until the next is
        started. What was written until then can be played. Any thread. */
    bool hasFailed() const noexcept { return failed.load (std::memory_order_relaxed); }

    /** The file of this recording, or of the last one; File() before the first. Any thread but the audio thread. */
    juce::File file() const;

    /** Records the first two channels if a recording runs. Values beyond +-1 are limited. Audio thread. */
    PX_AUDIO_THREAD void write (const float* const* channels, int frames) noexcept;

    /** Frames of this recording so far, those of dropped blocks included. 32 bits would be full after 13 hours. */
    Relaxed<int64_t> recordedFrames { 0 };

    /** Frames of this recording that were lost because the disk was too slow. */
    Relaxed<int64_t> droppedFrames { 0 };

    /** `recordFile` with the local time in its name: "mix.wav" becomes "mix_2024-12-31_(23h59m07s).wav". */
    static juce::File stamped (const juce::File& recordFile, juce::Time);

private:
    using ThreadedWriter = juce::AudioFormatWriter::ThreadedWriter;

    const Pacing::Mode mode;
    juce::TimeSliceThread thread { "Audio Recorder Thread" };

    mutable juce::CriticalSection commandLock; ///< one command at a time; never taken by the audio thread
    std::unique_ptr<ThreadedWriter> writerHolder;
    juce::File written;

    std::atomic<bool> failed { false }; ///< set by the thread that writes, too
    juce::CriticalSection writerLock;   ///< held for a pointer's change, or for one block into the ring
    std::atomic<ThreadedWriter*> activeWriter { nullptr };
};
