#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/library/LibrarySource.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "library/exchange/ExportPlaylist.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--kind", "KIND", N_ ("what to write (playlist)") },
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

int exportSongs (SongDatabase& database, const VerbOptions& given)
{
    auto arguments = given.positional;
    const auto source = LibrarySource::find (
        database, given.has ("--kind") ? given.valueOf ("--kind") : juce::String ("playlist"), arguments);
    if (!source)
        return ExitCode::badInput;
    if (arguments.size() != 1)
        return failWith (tr ("export needs one file to write to, behind the name."));
    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (arguments[0]);
    if (!file.hasFileExtension ("m3u;html"))
        return failWith (tr ("export writes .m3u and .html, not %1.", file.getFileName().quoted()));

    SongList songs;
    if (const auto code = source->fill (database, songs, {}); code != LibraryCode::ok)
        return SongTable::unreadable (code);
    if (songs.name.isEmpty())
        songs.name = given.valueOf ("--kind");
    ExportPlaylist::Result result;
    {
        TerminalProgress progress;
        result = ExportPlaylist (&database, songs, file).run (progress);
    }
    if (!result.isWritten)
        return failWith (tr ("%1 can't be written.", file.getFullPathName()));
    if (result.isCancelled)
        return failWith (tr ("The export was interrupted; %1 is not complete.", file.getFullPathName()));
    printLine (tr ("Wrote %1 to %2.", LibraryVerb::songs (songs.size()), file.getFullPathName()));
    return ExitCode::success;
}
}

int runExport (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        const auto description =
            tr ("Writes a playlist, or another list, as M3U or as a web page.\nKinds: %1.",
                LibrarySource::kindWords());
        printLine (helpText ("export [--kind KIND] [NAME] OUT.m3u|OUT.html [--root DIR] [--library FILE]",
                             description.toRawUTF8(), options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.positional.isEmpty())
        return failWith (
            tr ("export needs a playlist and a file to write to; see platterdex export --help."));
    const auto session = LibraryVerb::open (given, LibraryVerb::Use::read);
    return session != nullptr ? exportSongs (*session->library(), given) : ExitCode::badInput;
}
