#include "standalone/AnalyseVerb.h"
#include "standalone/Application.h"
#include "standalone/CommandsVerb.h"
#include "standalone/DemoTracksVerb.h"
#include "standalone/ExportVerb.h"
#include "standalone/ImportVerb.h"
#include "standalone/ListVerb.h"
#include "standalone/MixVerb.h"
#include "standalone/PerformVerb.h"
#include "standalone/PlaylistVerb.h"
#include "standalone/SmartVerb.h"
#include "standalone/SnapshotVerb.h"
#include "standalone/Verb.h"
#include "support/AudioFileTypes.h"

#include <algorithm>
#include <array>

namespace
{
constexpr std::array verbs {
    Verb { "perform", "plays a set of timed lines into WAV files, faster than real time", runPerform },
    Verb { "analyse", "finds tempo, beats and loudness of files and folders, and keeps them", runAnalyse },
    Verb { "mix", "mixes tracks into a WAV file, faster than real time", runMix },
    Verb { "import", "brings files and folders into the library", runImport },
    Verb { "list", "prints songs of the library", runList },
    Verb { "playlist", "makes, fills and shows playlists", runPlaylist },
    Verb { "smart", "makes and shows smart playlists", runSmart },
    Verb { "export", "writes a list as M3U or as a web page", runExport },
    Verb { "snapshot", "paints the window into a PNG file, without a display", runSnapshot },
    Verb { "commands", "prints the table of commands", runCommands },
    Verb { "demo-tracks", "writes the demo tracks into a folder", runDemoTracks },
};

int printUsage()
{
    printLine ("Usage: platterdex [TRACK...]       the application with its window, tracks on its decks\n"
               "       platterdex VERB ...         one of the following, without a window\n"
               "       platterdex VERB --help      what a verb takes\n"
               "       platterdex --version\n\n"
               "Verbs:");
    for (const auto& verb : verbs)
        printLine ("  " + juce::String (verb.name).paddedRight (' ', 12) + verb.summary);
    return ExitCode::success;
}
}

int main (int argc, char** argv)
{
    juce::StringArray arguments;
    for (int i = 1; i < argc; ++i)
        arguments.add (juce::String::fromUTF8 (argv[i]));

    const auto first = arguments[0];
    if (first == "--help" || first == "-h")
        return printUsage();
    if (first == "--version")
    {
        printLine ("Platterdex " PX_VERSION);
        return ExitCode::success;
    }
    // What begins with a dash is the application's, which knows its own options; so are tracks.
    if (arguments.isEmpty() || first.startsWithChar ('-')
        || AudioFileTypes::matches (juce::File::getCurrentWorkingDirectory().getChildFile (first)))
        return runApplication (arguments);

    const auto verb =
        std::find_if (verbs.begin(), verbs.end(), [&first] (const Verb& v) { return first == v.name; });
    if (verb == verbs.end())
        return failWith ("There is no verb " + first.quoted() + "; see platterdex --help.");
    arguments.remove (0);
    return verb->run (arguments);
}
