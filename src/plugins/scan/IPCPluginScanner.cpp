#include "plugins/scan/IPCPluginScanner.h"

#include "plugins/catalogue/PluginFileFilter.h"
#include "plugins/catalogue/PluginListFile.h"
#include "plugins/formats/PluginProbe.h"
#include "plugins/ipc/ScannerProtocol.h"
#include "support/language/Translate.h"

#include <algorithm>

namespace
{
/** The entry of a file that no scanner has looked at: the next scan does. */
KnownPluginEntry unscanned (const juce::File& file, const juce::String& reason)
{
    auto entry = PluginProbe::unusable (file, VerifiedState::failed, reason);
    entry.fileTime = KnownPluginEntry::notScanned;
    return entry;
}
}

IPCPluginScanner::IPCPluginScanner (KnownPlugins& k, Listener& l, Options options)
    : known (k),
      listener (l),
      log (std::move (options.log)),
      inProcess (options.inProcess),
      exchange (std::move (options.process), options.patience)
{
}

IPCPluginScanner::Outcome IPCPluginScanner::scanFile (const juce::File& file)
{
    using End = ScannerExchange::End;
    const auto plugin = PluginFileFilter::isPluginFile (file);
    if (!plugin)
        return Outcome::refused;
    listener.scanStarted (file);
    if (inProcess)
        return scanInProcess (file);
    const auto order = ScannerProtocol::messageOf (
        ScannerProtocol::ScanOrder { file.getFullPathName().toStdString(), plugin->width });
    const ScannerExchange::Watcher watcher { [this] { return listener.shouldExit(); },
                                             [this] { listener.scanPing(); },
                                             [this] (bool hangs) { listener.pluginHanging (hangs); } };
    const auto answer = exchange.carryOut (order, watcher);
    switch (answer.end)
    {
    case End::answered:
        return enterResult (file, answer.text);
    case End::notStarted:
        return listener.shouldExit()
                   ? Outcome::cancelled
                   : enterFailure (unscanned (file, N_ ("The scanner could not be started.")));
    case End::notTaken:
        return enterFailure (unscanned (file, N_ ("The scanner did not answer.")));
    case End::skipped:
        return enterFailure (PluginProbe::unusable (file, VerifiedState::failed,
                                                    N_ ("It was skipped, since it did not respond.")));
    case End::cancelled:
        return Outcome::cancelled;
    case End::died:
        break;
    }
    write ("PROCESS DEAD? : " + file.getFullPathName());
    write (answer.wasSilent ? "Killing process succeeded!"
                            : "Killing process failed (probably it was already dead)!");
    return enterFailure (
        PluginProbe::unusable (file, VerifiedState::crashed, N_ ("The scanner died of it.")));
}

IPCPluginScanner::Outcome IPCPluginScanner::enterResult (const juce::File& file, const std::string& xml)
{
    auto entries = PluginListFile::read (xml);
    if (!entries || entries->empty())
        return enterFailure (
            PluginProbe::unusable (file, VerifiedState::failed, N_ ("The scanner's answer can't be read.")));
    const auto& path = file.getFullPathName();
    for (auto& entry : *entries)
        entry.file = path; // nothing that a plug-in says of itself puts another one in the list
    const auto isFound = std::any_of (entries->begin(), entries->end(),
                                      [] (const KnownPluginEntry& entry) { return entry.isUsable(); });
    if (!isFound)
        write ("FAILED : " + path + " : " + entries->front().reason);
    known.put (path, std::move (*entries));
    listener.scanFinished (xml);
    return isFound ? Outcome::found : Outcome::failed;
}

IPCPluginScanner::Outcome IPCPluginScanner::enterFailure (const KnownPluginEntry& entry)
{
    if (entry.state == VerifiedState::failed)
        write ("FAILED : " + entry.file + " : " + entry.reason);
    known.put (entry.file, { entry });
    listener.scanFinished (PluginListFile::write ({ entry }));
    return entry.state == VerifiedState::crashed ? Outcome::crashed : Outcome::failed;
}

IPCPluginScanner::Outcome IPCPluginScanner::scanInProcess (const juce::File& file)
{
    PluginFormats formats;
    return enterResult (file, PluginListFile::write (PluginProbe::examine (formats, file)));
}

void IPCPluginScanner::write (const juce::String& line) const
{
    if (log != juce::File())
        log.appendText (juce::Time::getCurrentTime().toISO8601 (true) + " " + line + "\n");
}
