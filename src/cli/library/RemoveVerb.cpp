#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--missing", nullptr, N_ ("all songs whose files are gone") },
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

/** Takes the songs of the library that a test of their path picks. @returns the code of the database */
template <typename IsWanted>
int pick (SongDatabase& database, SongList& picked, IsWanted isWanted)
{
    SongList all (SongListKind::library);
    if (const auto code = database.fillLibrary (&all, SongField::listOrder, true); code != LibraryCode::ok)
        return code;
    juce::String path;
    for (const auto& entry : all.entries())
    {
        if (const auto code = database.readField (SongField::filename, entry.songId, path);
            code != LibraryCode::ok)
            return code;
        if (isWanted (path))
            picked.add (entry);
    }
    return LibraryCode::ok;
}

int remove (SongDatabase& database, const VerbOptions& given)
{
    juce::StringArray paths;
    for (const auto& argument : given.positional)
        paths.add (juce::File::getCurrentWorkingDirectory().getChildFile (argument).getFullPathName());

    const auto isNamed = [&paths] (const juce::String& path)
    {
        return std::any_of (paths.begin(), paths.end(),
                            [&path] (const juce::String& named)
                            { return path == named || path.startsWith (named + "/"); });
    };
    SongList songs (SongListKind::library);
    const auto code =
        given.has ("--missing")
            ? pick (database, songs, [] (const juce::String& path) { return !juce::File (path).exists(); })
            : pick (database, songs, isNamed);
    if (code != LibraryCode::ok)
        return SongTable::unreadable (code);
    if (songs.size() == 0 && !given.has ("--missing"))
        return failWith (tr ("The library has no song %1.", paths.joinIntoString (" or ")));
    return LibraryVerb::ended (database.deleteSongs (&songs),
                               tr ("Took %1 out of the library.", LibraryVerb::songs (songs.size())));
}
}

int runRemove (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (
            "remove PATH...|--missing [--root DIR] [--library FILE]",
            N_ ("Takes songs, and those below folders, out of the library and its lists. Their files stay."),
            options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.positional.isEmpty() != given.has ("--missing"))
        return failWith (tr ("remove needs a file or folder, or --missing."));
    const auto session = LibraryVerb::open (given, LibraryVerb::Use::change);
    return session != nullptr ? remove (*session->library(), given) : ExitCode::badInput;
}
