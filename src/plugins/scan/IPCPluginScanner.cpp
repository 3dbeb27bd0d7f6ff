#include "plugins/scan/IPCPluginScanner.h"

#include "plugins/catalogue/PluginFileFilter.h"
#include "plugins/catalogue/PluginListFile.h"
#include "plugins/formats/PluginProbe.h"
#include "plugins/ipc/ScannerProtocol.h"
#include "support/language/Translate.h"

#include <algorithm>

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
                   : enterFailure (file, VerifiedState::failed, N_ ("The scanner could not be started."));
    case End::notTaken:
        return enterFailure (file, VerifiedState::failed, N_ ("The scanner did not answer."));
    case End::skipped:
        return enterFailure (file, VerifiedState::failed, N_ ("It was skipped, since it did not respond."));
    case End::cancelled:
        return Outcome::cancelled;
    case End::died:
        break;
    }
    write ("PROCESS DEAD? : " + file.getFullPathName());
    write (answer.wasSilent ? "Killing process succeeded!"
                            : "Killing process failed (probably it was already dead)!");
    return enterFailure (file, VerifiedState::crashed, N_ ("The scanner died of it."));
}

IPCPluginScanner::Outcome IPCPluginScanner::enterResult (const juce::File& file, const std::string& xml)
{
    auto entries = PluginListFile::read (xml);
    if (!entries || entries->empty())
        return enterFailure (file, VerifiedState::failed, N_ ("The scanner's answer can't be read."));
    const auto path = file.getFullPathName();
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

IPCPluginScanner::Outcome IPCPluginScanner::enterFailure (const juce::File& file, VerifiedState state,
                                                          const juce::String& reason)
{
    if (state == VerifiedState::failed)
        write ("FAILED : " + file.getFullPathName() + " : " + reason);
    const std::vector entries { PluginProbe::unusable (file, state, reason) };
    known.put (file.getFullPathName(), entries);
    listener.scanFinished (PluginListFile::write (entries));
    return state == VerifiedState::crashed ? Outcome::crashed : Outcome::failed;
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
