#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "library/exchange/ImportPlaylist.h"
#include "library/import/ImportFiles.h"
#include "support/language/Translate.h"

#include <array>
#include <functional>
#include <numeric>

namespace
{
using LibraryVerb::Action;
using LibraryVerb::Use;
constexpr auto kind = SongListKind::playlist;

int addPaths (SongDatabase& database, int32_t id, const juce::StringArray& arguments)
{
    ImportFiles::Target target;
    target.playlistId = id;
    return LibraryVerb::importArguments (database, arguments, target);
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
        return LibraryVerb::ended (code, tr ("Made the playlist %1.", name.quoted()));
    return addPaths (database, id, given.positional);
}

int add (SongDatabase& database, VerbOptions& given)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, given.positional[0]);
    given.positional.remove (0);
    return item ? addPaths (database, item->id, given.positional) : ExitCode::badInput;
}

/** Takes the songs at some places of a list out of it.
    @param placesOf   chooses from the songs; gives nothing after a report */
int removeFrom (SongDatabase& database, const juce::String& name,
                const std::function<std::optional<std::vector<int>> (const SongList&)>& placesOf)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, name);
    if (!item)
        return ExitCode::badInput;
    SongList songs (kind, item->id);
    if (const auto code = database.fillPlaylist (&songs, item->id, SongField::listOrder, true);
        code != LibraryCode::ok)
        return SongTable::unreadable (code);
    const auto places = placesOf (songs);
    if (!places)
        return ExitCode::badInput;
    std::vector<int32_t> entries;
    for (const auto place : *places)
        entries.push_back (songs[place].entryId);
    return LibraryVerb::ended (database.removeEntries (item->id, entries),
                               tr ("Took %1 out of %2.",
                                   LibraryVerb::songs (static_cast<int> (entries.size())),
                                   item->name.quoted()));
}

int remove (SongDatabase& database, VerbOptions& given)
{
    const auto placesOf = [&given] (const SongList& songs) -> std::optional<std::vector<int>>
    {
        std::vector<int> places;
        for (int i = 1; i < given.positional.size(); ++i)
        {
            const auto place = given.positional[i];
            const auto number = place.containsOnly ("0123456789") ? place.getLargeIntValue() : 0;
            if (number < 1 || number > songs.size())
            {
                failWith (tr ("The playlist has places 1 to %1, not %2.", songs.size(), place.quoted()));
                return {};
            }
            places.push_back (static_cast<int> (number) - 1);
        }
        return places;
    };
    return removeFrom (database, given.positional[0], placesOf);
}

int clear (SongDatabase& database, VerbOptions& given)
{
    const auto all = [] (const SongList& songs) -> std::optional<std::vector<int>>
    {
        std::vector<int> places (static_cast<size_t> (songs.size()));
        std::iota (places.begin(), places.end(), 0);
        return places;
    };
    return removeFrom (database, given.positional[0], all);
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
        printLine (tr ("%1, %2 new in the library.", LibraryVerb::songs (result.songs), result.added));
    if (!result.isRead)
        return failWith (
            tr ("%1 can't be read to its end as a playlist (.m3u or .xml).", file.getFullPathName()));
    return result.playlistId >= 0 ? ExitCode::success : LibraryVerb::ended (LibraryCode::failed, {});
}

constexpr std::array actions {
    Action { "list", "", N_ ("the playlists, with their numbers of songs"), 0, 0, Use::read,
             LibraryVerb::onList<LibraryVerb::printPlaylists, kind> },
    Action { "show", "NAME", N_ ("its songs in order"), 1, 1, Use::read,
             LibraryVerb::onList<LibraryVerb::showPlaylist, kind> },
    Action { "create", "NAME [PATH...]", N_ ("a new playlist"), 1, LibraryVerb::anyNumber, Use::write,
             create },
    Action { "add", "NAME PATH...", N_ ("appends files and folders, which are imported if need be"), 2,
             LibraryVerb::anyNumber, Use::change, add },
    Action { "remove", "NAME PLACE...", N_ ("takes out songs by their lines in show, from 1"), 2,
             LibraryVerb::anyNumber, Use::change, remove },
    Action { "clear", "NAME", N_ ("takes out all songs"), 1, 1, Use::change, clear },
    Action { "import", "FILE.m3u|FILE.xml [NAME]", N_ ("a new one from another program's file"), 1, 2,
             Use::write, importFile },
    Action { "rename", "NAME NEWNAME", N_ ("gives it another name"), 2, 2, Use::change,
             LibraryVerb::onList<LibraryVerb::renamePlaylist, kind> },
    Action { "delete", "NAME", N_ ("its songs stay in the library"), 1, 1, Use::change,
             LibraryVerb::onList<LibraryVerb::deletePlaylist, kind> },
};

constexpr std::array options {
    SongTable::columnsOption,
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};
}

int runPlaylist (const juce::StringArray& arguments)
{
    return LibraryVerb::runAction ("playlist", N_ ("Makes, fills and shows playlists."), actions, options,
                                   arguments);
}
