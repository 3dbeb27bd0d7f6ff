#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/library/LibraryVerb.h"
#include "library/import/ImportFiles.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--playlist", "NAME", "appends the songs to a playlist too, known ones included" },
    VerbOption { "--automix", nullptr, "appends them to the automix list" },
    LibrarySession::option,
    VerbOption { "--help", nullptr, "this text" },
};
}

int runImport (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (
            "import PATH... [--playlist NAME] [--automix] [--library FILE]",
            "Brings audio files, and those below folders, into the library with what their tags tell.\n"
            "What is there already stays as it is. Breaking off keeps what was done.",
            options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.positional.isEmpty())
        return failWith ("import needs a file or folder.");
    if (given.has ("--playlist") && given.has ("--automix"))
        return failWith ("--playlist and --automix don't go together.");
    const auto paths = LibraryVerb::importablePaths (given.positional);
    LibrarySession library;
    if (!paths || !library.open (given, LibrarySession::Use::write))
        return ExitCode::badInput;

    ImportFiles::Target target;
    target.isAutomix = given.has ("--automix");
    if (given.has ("--playlist"))
    {
        const auto item = LibraryVerb::findPlaylist (library.database, SongListKind::playlist,
                                                     given.valueOf ("--playlist"));
        if (!item)
            return ExitCode::badInput;
        target.playlistId = item->id;
    }
    return LibraryVerb::importPaths (library.database, *paths, target);
}
