#include "cli/Verbs.h"

#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "session/Session.h"
#include "session/browse/PlayHistory.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

/** The session of a name, or the newest for "last"; nothing after a report. */
std::optional<SourceItem> sessionNamed (const PlayHistory& history, const juce::String& name)
{
    const auto sessions = history.sessions();
    for (const auto& session : sessions)
        if (name == "last" || session.name == name)
            return session;
    failWith (sessions.empty() ? tr ("Nothing was played yet.")
                               : tr ("There is no session %1; the last one is %2.", name.quoted(),
                                     sessions.front().name.quoted()));
    return {};
}

int list (const PlayHistory& history)
{
    printLine ("session\tsongs");
    for (const auto& session : history.sessions())
        printLine (session.name + "\t" + juce::String (static_cast<int> (history.songs (session.id).size())));
    return ExitCode::success;
}

int show (const PlayHistory& history, const SourceItem& session)
{
    printLine ("time\tdeck\ttitle\tartist\tfilename");
    for (const auto& song : history.songs (session.id))
        printLine (song.time.formatted ("%H:%M:%S") + "\t" + juce::String (song.deck + 1) + "\t"
                   + oneLine (song.title) + "\t" + oneLine (song.artist) + "\t" + oneLine (song.path));
    return ExitCode::success;
}

int exportSession (const PlayHistory& history, const SourceItem& session, const juce::String& path)
{
    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (path);
    const auto fault = history.exportTo (session.id, file);
    if (fault.isNotEmpty())
        return failWith (fault);
    printLine (tr ("Wrote %1.", file.getFullPathName()));
    return ExitCode::success;
}
}

int runHistory (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (
            helpText ("history [SESSION|last [OUT.m3u|OUT.tsv]] [--root DIR] [--library FILE]",
                      N_ ("Prints the sessions in which songs were played; with the name of one its songs "
                          "with time and deck,\n"
                          "or writes them to a file."),
                      options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    const auto& words = given.positional;
    if (words.size() > 2)
        return failWith (tr ("history doesn't know what to do with %1.", words[2].quoted()));
    Session::Options place;
    place.library = RootFolder::library (given);
    const PlayHistory history (Session (place).historyFolder());
    if (words.isEmpty())
        return list (history);
    const auto session = sessionNamed (history, words[0]);
    if (!session)
        return ExitCode::badInput;
    return words.size() == 1 ? show (history, *session) : exportSession (history, *session, words[1]);
}
