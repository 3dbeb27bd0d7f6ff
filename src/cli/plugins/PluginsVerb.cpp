#include "cli/Interruption.h"
#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/TerminalTable.h"
#include "cli/VerbOptions.h"
#include "cli/Verbs.h"
#include "plugins/scan/ScanThread.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr int longestSkip = 3600;

constexpr std::array options {
    VerbOption { "--again", nullptr, N_ ("scans plug-ins too that are known and have not changed") },
    VerbOption { "--popups", nullptr, N_ ("lets plug-ins show windows") },
    VerbOption { "--skip-after", "SECONDS", N_ ("gives a plug-in up that takes longer (60)") },
    VerbOption { "--tabs", nullptr, N_ ("puts tabs between the columns of the list") },
    RootFolder::option,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

const char* wordOf (IPCPluginScanner::Outcome outcome)
{
    using Outcome = IPCPluginScanner::Outcome;
    switch (outcome)
    {
    case Outcome::found:
        return "ok      ";
    case Outcome::failed:
        return "FAILED  ";
    case Outcome::crashed:
        return "CRASHED ";
    case Outcome::refused:
    case Outcome::cancelled:
        break;
    }
    return nullptr;
}

void scan (const std::shared_ptr<KnownPlugins>& known, const ScanThread::Options& scanOptions)
{
    const Interruption interruption;
    std::atomic<bool> isDone { false };
    ScanThread thread (known, scanOptions,
                       [&isDone] (const ScanMessage& message)
                       {
                           if (message.kind == ScanMessage::Kind::ended)
                               if (const auto* word = wordOf (message.outcome))
                                   printLine (word + message.file.getFullPathName());
                           if (message.kind == ScanMessage::Kind::allDone)
                               isDone = true;
                       });
    while (!isDone && !interruption.isInterrupted())
        juce::Thread::sleep (20);
}

void list (const KnownPlugins& known, bool withTabs)
{
    std::vector<juce::StringArray> rows { { "Name", "Format", "Verified", "Directory", "Manufacturer",
                                            "Instrument/FX", "Inputs/Outputs", "Latency", "Reason" } };
    for (const auto& entry : known.entries())
    {
        const auto& plugin = entry.description;
        rows.push_back (
            { oneLine (plugin.name), plugin.pluginFormatName, wordOf (entry.state),
              oneLine (entry.directory()), oneLine (plugin.manufacturerName),
              plugin.isInstrument ? "Instrument" : "FX",
              juce::String (plugin.numInputChannels) + "/" + juce::String (plugin.numOutputChannels),
              juce::String (entry.latency), oneLine (entry.reason) });
    }
    printTable (rows, withTabs);
}
}

int runPlugins (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    const auto skipSeconds = given.wholeNumber ("--skip-after", 60, 1, longestSkip);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText (
            "plugins scan DIR... | list",
            N_ ("Scans folders for VST, VST3 and LV2 plug-ins in a process of its own, so that one that\n"
                "crashes is marked and not offered; lists the plug-ins that are known."),
            options));
        return ExitCode::success;
    }
    const auto isScan = given.positional[0] == "scan" && given.positional.size() > 1;
    if (!isScan && !(given.positional[0] == "list" && given.positional.size() == 1))
        return failWith (tr ("plugins takes scan DIR... or list; see platterdex plugins --help."));
    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;

    const auto known = KnownPlugins::of (folders->setup().getChildFile ("vst_plugins_list.xml"));
    if (!isScan)
    {
        list (*known, given.has ("--tabs"));
        return ExitCode::success;
    }
    ScanThread::Options scanOptions;
    for (int i = 1; i < given.positional.size(); ++i)
    {
        const auto folder = juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[i]);
        if (!folder.exists())
            return failWith (tr ("There is no folder %1.", folder.getFullPathName()));
        scanOptions.searchPaths.add (folder);
    }
    scanOptions.again = given.has ("--again");
    scanOptions.scanner.process.disablePopups = !given.has ("--popups");
    scanOptions.scanner.patience.skipMs = static_cast<int> (*skipSeconds) * 1000;
    scanOptions.scanner.log = folders->setup().getChildFile ("plugin_scan.log");
    scan (known, scanOptions);
    if (!known->save())
        return failWith (tr ("The list of plug-ins could not be written."));
    return ExitCode::success;
}
