#pragma once

#include "support/Worker.h"
#include "tracks/FileStreamPlayer.h"

#include <juce_core/juce_core.h>

/** Lets one hear a song on the headphones: opens files on a worker, so that a slow drive never holds a view up. Message
    thread; views ask at each tick. */
class SongPreview
{
public:
    explicit SongPreview (FileStreamPlayer&);
    ~SongPreview();

    /** Opens a file and plays it; the newest request wins. @param fromSeconds   where it begins */
    void play (const juce::String& path, double fromSeconds = 0.0);

    /** Plays the file, or stops it if it is the one that plays. */
    void toggle (const juce::String& path);

    /** Stops and goes on. */
    void playOrPause();
    void stop();

    /** @param seconds   0 to the file's length */
    void seek (double seconds);

    /** @param gain   0 to 1 */
    void setLevel (float gain);
    float level() const;

    /** The file that was asked for last; it may still be opening. */
    juce::String path() const { return asked; }
    bool isPlaying() const;
    bool isOpening() const { return worker.isBusy(); }

    /** True if the last file can't be played. */
    bool hasFailed() const noexcept { return failed; }

    /** Seconds of the file that is open. */
    double position() const;
    double length() const;

    void settle() { worker.wait(); }

private:
    FileStreamPlayer& player;
    juce::String asked;
    std::atomic<bool> failed { false };
    Worker worker { "preview" }; ///< last: its jobs use all of the above
};
