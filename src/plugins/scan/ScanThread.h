#pragma once

#include "plugins/scan/IPCPluginScanner.h"

#include <memory>

/** News of a scan. */
struct ScanMessage
{
    enum class Kind
    {
        started, ///< with a file
        ended,   ///< of one file
        hanging, ///< with the flag
        allDone
    };

    Kind kind = Kind::allDone;
    juce::File file;
    IPCPluginScanner::Outcome outcome = IPCPluginScanner::Outcome::refused; ///< of `ended`
    bool flag = false;     ///< hanging begins or ends; of `allDone` the scan was broken off
    double progress = 0.0; ///< 0 to 1
    bool isKept = true;    ///< of `allDone`: the list is in its file
};

/** Scans all plug-ins of some folders in the background. Files that are known and have not changed are left out. Ending the
    object breaks the scan off. */
class ScanThread : private juce::Thread, private IPCPluginScanner::Listener
{
public:
    struct Options
    {
        juce::FileSearchPath searchPaths;
        IPCPluginScanner::Options scanner {};
        bool again = false; ///< scans known files too
    };

    /** Hears of the scan. On the scan's thread. */
    using Report = std::function<void (const ScanMessage&)>;

    ScanThread (std::shared_ptr<KnownPlugins>, Options, Report);
    ~ScanThread() override;

    /** Asks the scan to end. Any thread. */
    void cancel() { signalThreadShouldExit(); }

    /** Waits for the end. */
    void wait() { waitForThreadToExit (-1); }

    /** Gives up the plug-in at hand. Any thread. */
    void skip() noexcept { scanner.requestSkip(); }

private:
    void run() override;
    void scanFolder (const juce::File&, double begin, double part);
    void scan (const juce::File&);

    void scanStarted (const juce::File&) override;
    void pluginHanging (bool) override;
    bool shouldExit() override { return threadShouldExit(); }

    const std::shared_ptr<KnownPlugins> known;
    const Options options;
    const Report report;
    IPCPluginScanner scanner;
    juce::File current;
    double progress = 0.0;
    juce::uint32 savedAt = 0;
};
