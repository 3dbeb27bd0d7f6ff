#pragma once

#include "plugins/ipc/SimpleInterprocessConnection.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <memory>

/** The running scanner process and the mailbox to it. It ends with this object, and by itself when this process dies.
    One thread. */
class ScannerProcess
{
public:
    struct Options
    {
        juce::File program = besideBinary();
        bool disablePopups = false; ///< keeps plug-ins from showing windows: without a display they can't

        /** Waits for the process's number: so many looks, so far apart. */
        int startLooks = 50, lookMs = 100;
    };

    /** "platterdex-scanner" beside the program or plug-in. */
    static juce::File besideBinary();

    /** Starts the process and waits for its number. @param shouldExit   asked meanwhile
        @returns null if it didn't come up */
    static std::unique_ptr<ScannerProcess> start (const Options&, const std::function<bool()>& shouldExit);

    /** Kills what still runs, with everything that plug-ins have started. */
    ~ScannerProcess();

    /** Asks the process to end, waits up to two seconds for it and kills it then. */
    void shutdown();

    /** Kills the process at once. @returns false if it was dead before */
    bool kill();

    /** False once the process has ended. */
    bool isAlive();

    SimpleInterprocessConnection& mailbox() noexcept { return *connection; }

private:
    ScannerProcess (int process, std::unique_ptr<SimpleInterprocessConnection>) noexcept;

    const int processId;
    bool hasEnded = false;
    std::unique_ptr<SimpleInterprocessConnection> connection;
};
