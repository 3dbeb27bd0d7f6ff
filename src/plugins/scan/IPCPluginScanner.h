#pragma once

#include "plugins/catalogue/KnownPlugins.h"
#include "plugins/scan/ScannerExchange.h"

/** Scans plug-ins in the scanner process, one file at a time, and enters what comes of it in the list of known plug-ins: a
    plug-in that crashes takes the scanner with it and nothing else. One thread, but for requestSkip(). */
class IPCPluginScanner
{
public:
    /** Hears of a scan. On the scan's thread. */
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void scanStarted (const juce::File&) {}

        /** @param xml   the result as the scanner has sent it, a plug-in list */
        virtual void scanFinished (const std::string& xml) { juce::ignoreUnused (xml); }
        virtual void scanPing() {}

        /** True once a plug-in takes long, false when that is over. */
        virtual void pluginHanging (bool isHanging) { juce::ignoreUnused (isHanging); }

        /** Asked again and again: true breaks the scan off. */
        virtual bool shouldExit() { return false; }
    };

    struct Options
    {
        ScannerProcess::Options process {};
        ScannerExchange::Patience patience {};
        juce::File log;         ///< grows by a line for each plug-in that failed; none without a name
        bool inProcess = false; ///< loads the plug-in in this process, for a look at a single one
    };

    IPCPluginScanner (KnownPlugins&, Listener&, Options);

    enum class Outcome
    {
        refused, ///< no plug-in; it is not entered
        found,
        failed,
        crashed,
        cancelled ///< not entered either
    };

    /** Scans a file and enters the result. */
    Outcome scanFile (const juce::File&);

    /** Gives up the plug-in at hand. Any thread. */
    void requestSkip() noexcept { exchange.skip(); }

    void shutdown() { exchange.shutdown(); }

private:
    Outcome enterResult (const juce::File&, const std::string& xml);
    Outcome enterFailure (const KnownPluginEntry&);
    Outcome scanInProcess (const juce::File&);
    void write (const juce::String& line) const;

    KnownPlugins& known;
    Listener& listener;
    const juce::File log;
    const bool inProcess;
    ScannerExchange exchange;
};
