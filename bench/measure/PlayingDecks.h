#pragma once

#include "measure/BenchEngine.h"

#include <atomic>
#include <thread>

/** Plays four decks as an audio device does: a block each time it is due, on a thread of real time where the system allows
    that, and counts the blocks that come too late to be heard. */
class PlayingDecks
{
public:
    static constexpr int blockFrames = 256;
    static constexpr double rate = 44100.0;

    /** @param engine   made with this rate and these blocks; outlives this */
    explicit PlayingDecks (BenchEngine& engine);
    ~PlayingDecks();

    struct Count
    {
        int blocks = 0, late = 0;
        double longestMs = 0.0; ///< of a block, from being due to its end
    };

    /** Counts from the last call on. Any thread. */
    Count take();

private:
    void run (BenchEngine&);

    std::atomic<int> blocks { 0 }, late { 0 };
    std::atomic<int64_t> longest { 0 };
    std::atomic<bool> stopping { false };
    std::thread thread;
};
