#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/library/LibraryVerb.h"
#include "library/import/ImportFiles.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--playlist", "NAME", N_ ("appends the songs to a playlist too, known ones included") },
    VerbOption { "--automix", nullptr, N_ ("appends them to the automix list") },
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};
}

int runImport (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (
            "import PATH... [--playlist NAME] [--automix] [--root DIR] [--library FILE]",
            N_ ("Brings audio files, and those below folders, into the library with what their tags tell.\n"
                "What is there already stays as it is. Breaking off keeps what was done."),
            options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.positional.isEmpty())
        return failWith (tr ("import needs a file or folder."));
    if (given.has ("--playlist") && given.has ("--automix"))
        return failWith (tr ("--playlist and --automix don't go together."));
    const auto paths = LibraryVerb::importablePaths (given.positional);
    const auto session = paths ? LibraryVerb::open (given, LibraryVerb::Use::write) : nullptr;
    if (session == nullptr)
        return ExitCode::badInput;
    auto& database = *session->library();

    ImportFiles::Target target;
    target.isAutomix = given.has ("--automix");
    if (given.has ("--playlist"))
    {
        const auto item =
            LibraryVerb::findPlaylist (database, SongListKind::playlist, given.valueOf ("--playlist"));
        if (!item)
            return ExitCode::badInput;
        target.playlistId = item->id;
    }
    return LibraryVerb::importPaths (database, *paths, target);
}
