#include "app/Application.h"
#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/Verbs.h"
#include "session/LanguageChoice.h"
#include "support/Suggestion.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"

#include <algorithm>
#include <csignal>
#include <malloc.h>

namespace
{
constexpr int ownMapping = 1 << 20; // bytes
constexpr int arenas = 4;

/** Returns to the system what a window or a track has needed for a while: left alone, the allocator takes ever larger blocks from a heap
    that one small block at its end keeps large, and gives each of some fifty threads a heap of its own. */
void keepMemoryTogether()
{
    // Refused, all works, in more memory.
    mallopt (M_MMAP_THRESHOLD, ownMapping);
    mallopt (M_ARENA_MAX, arenas);
}

int printUsage()
{
    printLine (tr ("Usage: platterdex [TRACK...]       the application with its window, tracks on its decks\n"
                   "       platterdex VERB ...         one of the following, without a window\n"
                   "       platterdex VERB --help      what a verb takes\n"
                   "       platterdex --version\n\n"
                   "Verbs:"));
    for (const auto& verb : allVerbs())
        printLine ("  " + juce::String (verb.name).paddedRight (' ', 12) + tr (verb.summary));
    return ExitCode::success;
}
}

int main (int argc, char** argv)
{
    keepMemoryTogether();
    // A file that may not grow any further is one that can't be written, which is said, and no end of the program.
    std::signal (SIGXFSZ, SIG_IGN);
    juce::StringArray arguments;
    for (int i = 1; i < argc; ++i)
        arguments.add (juce::String::fromUTF8 (argv[i]));

    const auto first = arguments[0];
    if (first == "--version")
    {
        printLine ("Platterdex " PX_VERSION);
        return ExitCode::success;
    }
    LanguageChoice::start (RootFolder::named (arguments));
    if (first == "--help" || first == "-h")
        return printUsage();
    // A word with a dash in front is the application's, which knows its own options; so are tracks.
    if (arguments.isEmpty() || first.startsWithChar ('-')
        || AudioFileTypes::matches (juce::File::getCurrentWorkingDirectory().getChildFile (first)))
        return runApplication (arguments);

    const auto verbs = allVerbs();
    const auto verb =
        std::find_if (verbs.begin(), verbs.end(), [&first] (const Verb& v) { return first == v.name; });
    if (verb == verbs.end())
    {
        juce::StringArray names;
        for (const auto& each : verbs)
            names.add (each.name);
        return failWith (
            tr ("There is no verb %1; see platterdex --help.%2", first.quoted(), didYouMean (first, names)));
    }
    arguments.remove (0);
    return verb->run (arguments);
}
