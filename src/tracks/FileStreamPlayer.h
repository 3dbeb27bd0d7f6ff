#pragma once

#include "support/AudioThread.h"
#include "support/GainRamp.h"
#include "support/Pacing.h"
#include "support/Relaxed.h"

#include <juce_audio_devices/juce_audio_devices.h>
#include <juce_audio_formats/juce_audio_formats.h>

#include <atomic>
#include <memory>

/** The preview: streams one audio file from disk into the monitor bus.

    A thread of the player reads ahead into a ring of 32768 frames, and the audio thread reads nothing but that ring.
    It never waits for the disk: what is not there in time is silence, and the file goes on where it was. */
class FileStreamPlayer
{
public:
    /** The facts that are shown of the loaded file. */
    struct Track
    {
        juce::String path;  ///< empty if nothing is loaded
        juce::String title; ///< the file's name if it has no tags
        juce::String artist;
        juce::String album;
        double seconds = 0.0;
    };

    /** Offline the ring is filled by addToMonitor() itself, so that two runs sound the same. */
    explicit FileStreamPlayer (Pacing::Mode mode = Pacing::Mode::live);
    ~FileStreamPlayer();

    /** Replaces the file, stopped at its start or at a place in it; what played before fades out. An empty path, or a file that
        can't be read, leaves nothing loaded. @param fromSeconds   clipped to the file
        @returns whether a file is loaded. Any thread but the audio thread, also while audio runs. */
    bool load (const juce::String& path, double fromSeconds = 0.0);

    /** Goes to a place in the file, in seconds, and plays on if it plays. Any thread but the audio thread. */
    void seek (double seconds);

    /** The place of what is heard, in seconds of the file; 0 if nothing is loaded. Any thread. */
    double position() const noexcept { return heardSeconds; }

    /** The loudness in the monitor bus. @param gain   0 to 1, which it is at first. Any thread. */
    void setLevel (float gain) noexcept { levelGain = gain; }
    float level() const noexcept { return levelGain; }

    /** Plays on from where it was stopped, or anew from the start of a file that has ended. Any thread but the audio
        thread. */
    void play();

    /** Stops with a short fade and keeps the position. Any thread. */
    void stop() noexcept { playing = false; }

    /** False once the file has ended. Any thread. */
    bool isPlaying() const noexcept { return playing; }

    /** Any thread but the audio thread. */
    Track track() const;

    /** The rate that the audio runs at, in Hz; files that are loaded from then on are resampled to it. 0, which it is
        at first, plays each file's frames as they are. Any thread. */
    void setOutputRate (double rate) noexcept { outputRate = rate; }

    /** Adds `frames` frames to both channels. Nothing happens if one is null. Audio thread. */
    PX_AUDIO_THREAD void addToMonitor (float* left, float* right, int frames) noexcept;

    /** The formats that load() can read; more can be registered before the first load(). */
    juce::AudioFormatManager& formats() noexcept { return formatManager; }

private:
    class Stream;

    void unload();
    void replaceStream (std::unique_ptr<Stream>);

    const Pacing::Mode mode;
    juce::AudioFormatManager formatManager;
    juce::TimeSliceThread thread { "FileStreamPlayer" };
    Relaxed<double> outputRate { 0.0 };
    std::atomic<bool> playing { false };

    /** One command at a time; guards `current`. Never taken by the audio thread. */
    juce::CriticalSection commandLock;
    Track current;

    /** Held elsewhere for the change of a pointer only. The audio thread tries it, and is silent if it can't have it. */
    juce::SpinLock streamLock;
    std::unique_ptr<Stream> stream;
    GainRamp fade { 0.0 };
    int fadeFrames = 0; ///< frames that are left to fade once playing ends

    std::unique_ptr<Stream> leaving; ///< fades out under the next one
    GainRamp leavingFade { 0.0 };
    int leavingFrames = 0;
    Relaxed<double> heardSeconds { 0.0 };
    Relaxed<float> levelGain { 1.0f };
};
