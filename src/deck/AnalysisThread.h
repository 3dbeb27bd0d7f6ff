#pragma once

#include "deck/DeckWorld.h"

#include <atomic>
#include <mutex>

/** Measures the tempo of a deck's track anew when somebody asks for it, from the samples in memory and near a tempo that is
    given; the grid stays. It also writes the deck's analysis file for threads that must not wait for a disk.
    One per deck, started with it, at idle priority while something sounds. */
class AnalysisThread : private juce::Thread
{
public:
    AnalysisThread (DeckWorld&, DeckPlayer&);

    /** Cancels a running job and ends the thread. */
    ~AnalysisThread() override;

    /** Measures the tempo near one in BPM and tells the listeners what it found. A running job is cancelled first;
        without a track, or while one is being loaded, which is analysed anyway, nothing happens. Any thread that may
        block. */
    void requestAnalysis (float seedBpm = 120.0f);

    /** Saves the deck's analysis soon. Any thread that may block. */
    void requestSave();

    /** Cancels a running measurement, which ends at its next block, and waits for that. Any thread that may block. */
    void stop();

    bool isBusy() const noexcept { return busy; }

    /** Waits until nothing is measured or saved. Any thread that may block. */
    void waitUntilIdle() const;

    /** Lives on the stack of a thread that changes the deck's samples: nothing is measured meanwhile. */
    class Hold
    {
    public:
        /** @param thread   or null. Its job is stopped. */
        explicit Hold (AnalysisThread* thread);
        ~Hold();
        Hold (const Hold&) = delete;
        Hold& operator= (const Hold&) = delete;

    private:
        AnalysisThread* const held;
    };

private:
    void run() override;
    void measure();

    DeckWorld& world;
    DeckPlayer& deck;
    std::mutex requestLock;
    int holds = 0;       ///< under requestLock
    float seed = 120.0f; ///< written while nothing is measured
    std::atomic<bool> measuring { false }, saving { false }, stopping { false }, busy { false };
    juce::WaitableEvent wake;
};
