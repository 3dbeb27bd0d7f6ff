#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "library/import/MovedFiles.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

int printMissing (SongDatabase& database)
{
    std::vector<MissingSong> missing;
    auto code = 0;
    {
        TerminalProgress progress;
        code = findMissingSongs (database, progress, missing);
    }
    if (code != LibraryCode::ok)
        return SongTable::unreadable (code);
    for (const auto& song : missing)
        printLine (oneLine (song.path));
    return ExitCode::success;
}

int relocate (SongDatabase& database, const juce::StringArray& arguments)
{
    juce::StringArray folders;
    for (const auto& argument : arguments)
    {
        const auto folder = juce::File::getCurrentWorkingDirectory().getChildFile (argument);
        if (!folder.isDirectory())
            return failWith (tr ("There is no folder %1.", argument.quoted()));
        folders.add (folder.getFullPathName());
    }
    RelocateResult result;
    {
        TerminalProgress progress;
        result = relocateSongs (database, folders, progress);
    }
    for (const auto& doubtful : result.doubtful)
        failWith (oneLine (doubtful));
    printLine (tr ("%1 missing, %2 found again.", LibraryVerb::songs (result.missing), result.found));
    if (result.code != LibraryCode::ok)
        return failWith (LibraryVerb::whyNotStored (result.code));
    if (result.isCancelled)
        return failWith (tr ("The search was interrupted; nothing was changed."));
    return result.doubtful.isEmpty() ? ExitCode::success : ExitCode::badInput;
}
}

int runRelocate (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (
            helpText ("relocate [FOLDER...] [--root DIR] [--library FILE]",
                      N_ ("Finds the files of missing songs again below folders, by name, size and tags. "
                          "The songs stay in their\n"
                          "lists. Without a folder, prints the paths of the missing songs."),
                      options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    const auto isLook = given.positional.isEmpty();
    const auto session =
        LibraryVerb::open (given, isLook ? LibraryVerb::Use::read : LibraryVerb::Use::change);
    if (session == nullptr)
        return ExitCode::badInput;
    return isLook ? printMissing (*session->library()) : relocate (*session->library(), given.positional);
}
