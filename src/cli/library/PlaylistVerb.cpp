#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "library/exchange/ImportPlaylist.h"
#include "library/import/ImportFiles.h"

#include <array>

namespace
{
using LibraryVerb::Action;
using LibraryVerb::Use;
constexpr auto kind = SongListKind::playlist;

int addPaths (SongDatabase& database, int32_t id, const juce::StringArray& arguments)
{
    const auto paths = LibraryVerb::importablePaths (arguments);
    if (!paths)
        return ExitCode::badInput;
    ImportFiles::Target target;
    target.playlistId = id;
    return LibraryVerb::importPaths (database, *paths, target);
}

int list (SongDatabase& database, VerbOptions&)
{
    return LibraryVerb::printPlaylists (database, kind);
}

int show (SongDatabase& database, VerbOptions& given)
{
    return LibraryVerb::showPlaylist (database, kind, given);
}

int create (SongDatabase& database, VerbOptions& given)
{
    const auto name = given.positional[0];
    given.positional.remove (0);
    if (!LibraryVerb::isNameFree (database, kind, name) || !LibraryVerb::importablePaths (given.positional))
        return ExitCode::badInput;
    int32_t id = -1;
    const auto code = database.createPlaylist (name, nullptr, LibraryVerb::lastPlace (database, kind), &id);
    if (code != LibraryCode::ok || given.positional.isEmpty())
        return LibraryVerb::ended (code, "Made the playlist " + name.quoted() + ".");
    return addPaths (database, id, given.positional);
}

int add (SongDatabase& database, VerbOptions& given)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, given.positional[0]);
    given.positional.remove (0);
    return item ? addPaths (database, item->id, given.positional) : ExitCode::badInput;
}

int remove (SongDatabase& database, VerbOptions& given)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, given.positional[0]);
    if (!item)
        return ExitCode::badInput;
    given.positional.remove (0);
    SongList songs (kind, item->id);
    if (const auto code = database.fillPlaylist (&songs, item->id, SongField::listOrder, true);
        code != LibraryCode::ok)
        return SongTable::unreadable (code);

    std::vector<int32_t> entries;
    for (const auto& place : given.positional)
    {
        const auto number = place.containsOnly ("0123456789") ? place.getLargeIntValue() : 0;
        if (number < 1 || number > songs.size())
            return failWith ("The playlist has places 1 to " + juce::String (songs.size()) + ", not "
                             + place.quoted() + ".");
        entries.push_back (songs[static_cast<int> (number) - 1].entryId);
    }
    return LibraryVerb::ended (database.removeEntries (item->id, entries),
                               "Took " + LibraryVerb::songs (static_cast<int> (entries.size())) + " out of "
                                   + item->name.quoted() + ".");
}

/** Reads a playlist file of another program. */
int importFile (SongDatabase& database, VerbOptions& given)
{
    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[0]);
    const auto name = given.positional.size() > 1 ? given.positional[1] : file.getFileNameWithoutExtension();
    if (!LibraryVerb::isNameFree (database, kind, name))
        return ExitCode::badInput;
    ImportPlaylist::Result result;
    {
        TerminalProgress progress;
        result = ImportPlaylist (&database, file, -1, name).run (progress);
    }
    if (result.code != LibraryCode::ok)
        return failWith (LibraryVerb::whyNotStored (result.code));
    if (result.playlistId >= 0)
        printLine (juce::String (result.songs) + (result.songs == 1 ? " song, " : " songs, ")
                   + juce::String (result.added) + " new in the library.");
    if (!result.isRead)
        return failWith (file.getFullPathName() + " can't be read to its end as a playlist (.m3u or .xml).");
    return result.playlistId >= 0 ? ExitCode::success : LibraryVerb::ended (LibraryCode::failed, {});
}

int rename (SongDatabase& database, VerbOptions& given)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, given.positional[0]);
    return item && LibraryVerb::isNameFree (database, kind, given.positional[1])
               ? LibraryVerb::ended (database.renamePlaylist (item->id, given.positional[1]),
                                     "Named it " + given.positional[1].quoted() + ".")
               : ExitCode::badInput;
}

int clear (SongDatabase& database, VerbOptions& given)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, given.positional[0]);
    if (!item)
        return ExitCode::badInput;
    SongList songs (kind, item->id);
    if (const auto code = database.fillPlaylist (&songs, item->id, SongField::listOrder, true);
        code != LibraryCode::ok)
        return SongTable::unreadable (code);
    std::vector<int32_t> entries;
    for (const auto& entry : songs.entries())
        entries.push_back (entry.entryId);
    return LibraryVerb::ended (database.removeEntries (item->id, entries),
                               "Took " + LibraryVerb::songs (songs.size()) + " out of " + item->name.quoted()
                                   + ".");
}

int deleteOne (SongDatabase& database, VerbOptions& given)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, given.positional[0]);
    return item ? LibraryVerb::ended (database.deletePlaylist (item->id),
                                      "Deleted the playlist " + item->name.quoted() + ".")
                : ExitCode::badInput;
}

constexpr std::array actions {
    Action { "list", "", "the playlists, with their numbers of songs", 0, 0, Use::read, list },
    Action { "show", "NAME", "its songs in order", 1, 1, Use::read, show },
    Action { "create", "NAME [PATH...]", "a new playlist", 1, LibraryVerb::anyNumber, Use::write, create },
    Action { "add", "NAME PATH...", "appends files and folders, which are imported if need be", 2,
             LibraryVerb::anyNumber, Use::change, add },
    Action { "remove", "NAME PLACE...", "takes out songs by their lines in show, from 1", 2,
             LibraryVerb::anyNumber, Use::change, remove },
    Action { "clear", "NAME", "takes out all songs", 1, 1, Use::change, clear },
    Action { "import", "FILE.m3u|FILE.xml [NAME]", "a new one from another program's file", 1, 2, Use::write,
             importFile },
    Action { "rename", "NAME NEWNAME", "gives it another name", 2, 2, Use::change, rename },
    Action { "delete", "NAME", "its songs stay in the library", 1, 1, Use::change, deleteOne },
};

constexpr std::array options {
    SongTable::columnsOption,
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, "this text" },
};
}

int runPlaylist (const juce::StringArray& arguments)
{
    return LibraryVerb::runAction ("playlist", "Makes, fills and shows playlists.", actions, options,
                                   arguments);
}
