#pragma once

#include "plugins/scan/ScannerProcess.h"

#include <atomic>

/** Gives orders to a scanner process, one at a time, and watches it meanwhile. The process is started when it is needed,
    and again after one that died. One thread; skip() any. */
class ScannerExchange
{
public:
    /** The times of the watch. */
    struct Patience
    {
        int lookMs = 10;       ///< between two looks into the mailbox
        int silentLooks = 500; ///< without a message: the process counts as dead
        int hangingMs = 10000; ///< from here on the user may skip
        int sendMs = 1000;     ///< for an order to be taken
        int skipMs = 0;        ///< skips by itself, where nobody watches; 0 never
    };

    /** Hears how an order goes on. On the thread of carryOut(). */
    struct Watcher
    {
        std::function<bool()> shouldExit = [] { return false; };
        std::function<void()> ping = [] {};
        std::function<void (bool)> hanging = [] (bool) {};
    };

    enum class End
    {
        answered,
        notStarted, ///< there is no scanner process to be had
        notTaken,   ///< the order didn't get through
        died,       ///< the process ended, or kept silent
        skipped,
        cancelled
    };

    struct Answer
    {
        End end = End::notStarted;
        std::string text;
        bool wasSilent = false; ///< of a death: the process was still there and was killed
    };

    ScannerExchange (ScannerProcess::Options, Patience);

    /** Carries an order out. Whatever the end but an answer, the process is gone afterwards. */
    Answer carryOut (const std::string& order, const Watcher&);

    /** Gives up the order that is being carried out. Any thread. */
    void skip() noexcept { skipRequested = true; }

    /** Lets the process end. The next order starts another. */
    void shutdown();

    ScannerProcess::Options options;

private:
    Answer watch (const Watcher&);
    std::string result (const Watcher&);

    const Patience patience;
    std::atomic<bool> skipRequested { false };
    std::unique_ptr<ScannerProcess> process;
};
