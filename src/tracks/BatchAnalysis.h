#pragma once

#include "settings/EngineSettings.h"
#include "support/ListenerList.h"
#include "support/Pacing.h"
#include "support/Worker.h"
#include "tracks/AdecSharedLibrary.h"

/** Analyses a list of files without any deck, one after the other, and writes their analysis files. One per engine. While
    a deck plays it rests after every 1024 frames; on stage it runs at idle priority. */
class BatchAnalysis
{
public:
    /** @param decoderLibrary   where the decoder's shared library lies
        @param analysisFolder   takes the analysis files */
    BatchAnalysis (const juce::File& decoderLibrary, const juce::File& analysisFolder, const EngineSettings&,
                   ListenerList&, Pacing&);

    /** The result for a file. */
    struct Outcome
    {
        juce::String path;
        juce::String fault; ///< one sentence if it could not be analysed
    };

    /** Looks after the files of one call of addFiles(), on the analysing thread or on whichever stops it. Functions may be
        left out. */
    struct Watch
    {
        std::function<void (const Outcome&)> each;
        std::function<bool()> shouldStop; ///< asked at each block of a file, and before each
        std::function<void()> ended;      ///< called once, behind the last file or when they are dropped
    };

    /** Appends files to the list. The listeners are told the tempo of each; one that can't be decoded is passed over.
        Any thread that may block.
        @param isAgain   also files whose analysis is stored, of which only hand-made work stays; others are only read */
    void addFiles (const juce::StringArray& paths, bool isAgain = false, Watch watch = {});

    /** Empties the list, ends the running job at its next block and waits for that. Any thread that may block. */
    void stop();

    /** Waits for the end of the list. Any thread that may block. */
    void waitUntilIdle() const { worker.wait(); }

    /** The state of the list. Any thread that may block. */
    struct Progress
    {
        bool isRunning = false;
        int done = 0, total = 0; ///< files of the list, which begins anew when it was empty
        double seconds = 0.0;    ///< of the file at hand that are done
        juce::String name;       ///< of the file at hand

        /** The status line: "Analyzing [2/9] : name"; empty while nothing runs. */
        juce::String text() const;
    };
    Progress progress() const;

private:
    struct Batch;
    void analyse (const juce::File&, bool isAgain, const Batch&, const std::stop_token&);

    const AdecSharedLibrary decoder;
    const juce::File folder;
    const EngineSettings& settings;
    ListenerList& listeners;
    Pacing& pacing;

    mutable std::mutex lock; ///< guards the two below
    int done = 0, total = 0;
    juce::String currentName;
    Relaxed<double> currentSeconds;
    Worker worker; ///< last: its jobs use all of the above
};
