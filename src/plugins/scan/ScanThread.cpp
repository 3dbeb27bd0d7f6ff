#include "plugins/scan/ScanThread.h"

#include "plugins/catalogue/PluginFileFilter.h"

#include <algorithm>

namespace
{
/** The longest time that the list is kept in memory alone. */
constexpr juce::uint32 saveEveryMs = 2000;
}

ScanThread::ScanThread (std::shared_ptr<KnownPlugins> k, Options o, Report r)
    : juce::Thread ("PluginScan"),
      known (std::move (k)),
      options (std::move (o)),
      report (std::move (r)),
      scanner (*known, *this, options.scanner)
{
    startThread();
}

ScanThread::~ScanThread()
{
    signalThreadShouldExit();
    waitForThreadToExit (-1); // a turn of the loop, and the process is killed
}

void ScanThread::run()
{
    SimpleInterprocessConnection::removeLeftovers();
    savedAt = juce::Time::getMillisecondCounter();
    const auto folders = options.searchPaths.getNumPaths();
    for (int i = 0; i < folders && !threadShouldExit(); ++i)
        scanFolder (options.searchPaths[i], static_cast<double> (i) / folders, 1.0 / folders);
    known->removeMissing();
    ScanMessage end;
    end.isKept = known->save();
    scanner.shutdown();
    end.flag = threadShouldExit();
    end.progress = 1.0;
    report (end);
}

void ScanThread::scanFolder (const juce::File& folder, double begin, double part)
{
    constexpr double almostAll = 0.9999;
    std::vector<juce::File> files;
    if (!folder.isDirectory() || PluginFileFilter::isBundle (folder))
        files.push_back (folder);
    else
        PluginFileFilter::forEachCandidate (folder,
                                            [&] (const juce::File& file)
                                            {
                                                files.push_back (file);
                                                return !threadShouldExit();
                                            });
    std::sort (files.begin(), files.end());
    for (size_t i = 0; i < files.size() && !threadShouldExit(); ++i)
    {
        progress = begin + part * almostAll * static_cast<double> (i) / static_cast<double> (files.size());
        if (files[i].exists() && (options.again || !known->isUpToDate (files[i])))
            scan (files[i]);
    }
}

void ScanThread::scan (const juce::File& file)
{
    current = file;
    const auto outcome = scanner.scanFile (file);
    report ({ ScanMessage::Kind::ended, file, outcome, false, progress });
    if (const auto now = juce::Time::getMillisecondCounter(); now - savedAt >= saveEveryMs)
    {
        savedAt = now;
        juce::ignoreUnused (known->save()); // and again at the end
    }
}

void ScanThread::scanStarted (const juce::File& file)
{
    report ({ ScanMessage::Kind::started, file, IPCPluginScanner::Outcome::refused, false, progress });
}

void ScanThread::pluginHanging (bool hangs)
{
    report ({ ScanMessage::Kind::hanging, current, IPCPluginScanner::Outcome::refused, hangs, progress });
}
