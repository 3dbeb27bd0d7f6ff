#include "cli/library/LibraryVerb.h"

#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/TerminalProgress.h"
#include "cli/TerminalPrompts.h"
#include "cli/library/LibrarySource.h"
#include "cli/library/SongTable.h"
#include "library/import/MusicFolders.h"
#include "support/Suggestion.h"
#include "support/files/AudioFileTypes.h"
#include "support/language/Translate.h"
#include "tracks/TrackFault.h"

#include <algorithm>

namespace
{
/** @returns nothing after a report: a list that can't be read just now is not one that is not there */
std::optional<std::vector<SourceItem>> playlistsOf (SongDatabase& database, SongListKind kind)
{
    std::vector<SourceItem> found;
    const auto code = kind == SongListKind::smartPlaylist ? database.listSmartPlaylists (found)
                                                          : database.listPlaylists (found);
    if (code == LibraryCode::ok)
        return found;
    SongTable::unreadable (code);
    return {};
}

const char* wordFor (SongListKind kind)
{
    return kind == SongListKind::smartPlaylist ? N_ ("smart playlist") : N_ ("playlist");
}

juce::String actionHelp (const char* verb, const char* description,
                         std::span<const LibraryVerb::Action> actions, std::span<const VerbOption> options)
{
    juce::String text = tr (description);
    text << "\n\n";
    for (const auto& action : actions)
        text << "  "
             << (juce::String (verb) + " " + action.name + " " + action.arguments)
                    .trimEnd()
                    .paddedRight (' ', 44)
             << tr (action.help) << "\n";
    return helpText ((juce::String (verb) + " ACTION ...").toRawUTF8(), text.trimEnd().toRawUTF8(), options);
}
}

int LibraryVerb::runAction (const char* verb, const char* description, std::span<const Action> actions,
                            std::span<const VerbOption> options, const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (actionHelp (verb, description, actions, options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());

    if (given.positional.isEmpty())
        return failWith (tr ("%1 needs an action; see platterdex %1 --help.", verb));
    const auto name = given.positional[0];
    const auto action =
        std::find_if (actions.begin(), actions.end(), [&name] (const Action& a) { return name == a.name; });
    if (action == actions.end())
    {
        juce::StringArray names;
        for (const auto& each : actions)
            names.add (each.name);
        return failWith (tr ("%1 has no action %2; see platterdex %1 --help.%3", verb, name.quoted(),
                             didYouMean (name, names)));
    }
    given.positional.remove (0);
    if (given.positional.size() < action->least || given.positional.size() > action->most)
        return failWith (action->most == 0 ? tr ("%1 %2 takes no argument.", verb, name)
                                           : tr ("%1 %2 takes %3.", verb, name, action->arguments));

    const auto session = open (given, action->use);
    return session != nullptr ? action->run (*session->library(), given) : ExitCode::badInput;
}

std::unique_ptr<Session> LibraryVerb::open (const VerbOptions& given, Use use)
{
    Session::Options options;
    options.library = RootFolder::library (given);
    options.prompts = std::make_shared<TerminalPrompts>();
    auto session = std::make_unique<Session> (std::move (options));
    if (const auto fault = session->openLibrary (use); fault.isNotEmpty())
    {
        failWith (fault);
        return {};
    }
    return session;
}

std::optional<SourceItem> LibraryVerb::findPlaylist (SongDatabase& database, SongListKind kind,
                                                     const juce::String& name)
{
    auto found = playlistsOf (database, kind);
    if (!found)
        return {};
    juce::StringArray names;
    for (const auto& item : *found)
        names.add (item.name);
    std::erase_if (*found, [&name] (const SourceItem& item) { return item.name != name; });
    if (found->size() == 1)
        return found->front();
    const auto word = tr (wordFor (kind));
    failWith (found->empty() ? tr ("There is no %1 %2.%3", word, name.quoted(), didYouMean (name, names))
                             : tr ("%1 lists are called %2; they need names of their own first.",
                                   found->size(), name.quoted()));
    return {};
}

bool LibraryVerb::isNameFree (SongDatabase& database, SongListKind kind, const juce::String& name)
{
    const auto all = playlistsOf (database, kind);
    if (!all)
        return false;
    if (name.trim().isEmpty())
        failWith (tr ("The list needs a name."));
    else if (std::any_of (all->begin(), all->end(),
                          [&name] (const SourceItem& item) { return item.name == name; }))
        failWith (tr ("There is a list %1 already.", name.quoted()));
    else
        return true;
    return false;
}

int32_t LibraryVerb::lastPlace (SongDatabase& database, SongListKind kind)
{
    int32_t last = 0;
    for (const auto& item : playlistsOf (database, kind).value_or (std::vector<SourceItem>()))
        last = std::max (last, item.sortOrder);
    return last + 1;
}

int LibraryVerb::printPlaylists (SongDatabase& database, SongListKind kind, VerbOptions&)
{
    const auto playlists = playlistsOf (database, kind);
    if (!playlists)
        return ExitCode::badInput;
    printLine ("name\tsongs");
    for (const auto& item : *playlists)
    {
        SongList songs;
        if (const auto code = LibrarySource { kind, item.name, item.id }.fill (database, songs, {});
            code != LibraryCode::ok)
            return SongTable::unreadable (code);
        printLine (oneLine (item.name) + "\t" + juce::String (songs.size()));
    }
    return ExitCode::success;
}

int LibraryVerb::showPlaylist (SongDatabase& database, SongListKind kind, VerbOptions& given)
{
    const auto table = SongTable::withColumns (given);
    if (!table)
        return ExitCode::badInput;
    LibrarySource source { kind, {}, -1 };
    if (kind != SongListKind::automix)
    {
        const auto item = findPlaylist (database, kind, given.positional[0]);
        if (!item)
            return ExitCode::badInput;
        source = { kind, item->name, item->id };
    }
    SongList songs;
    const auto code = source.fill (database, songs, {});
    return code == LibraryCode::ok ? table->print (database, songs) : SongTable::unreadable (code);
}

int LibraryVerb::renamePlaylist (SongDatabase& database, SongListKind kind, VerbOptions& given)
{
    const auto item = findPlaylist (database, kind, given.positional[0]);
    const auto name = given.positional[1];
    if (!item || !isNameFree (database, kind, name))
        return ExitCode::badInput;
    return ended (kind == SongListKind::smartPlaylist ? database.renameSmartPlaylist (item->id, name)
                                                      : database.renamePlaylist (item->id, name),
                  tr ("Named it %1.", name.quoted()));
}

int LibraryVerb::deletePlaylist (SongDatabase& database, SongListKind kind, VerbOptions& given)
{
    const auto item = findPlaylist (database, kind, given.positional[0]);
    if (!item)
        return ExitCode::badInput;
    return ended (kind == SongListKind::smartPlaylist ? database.deleteSmartPlaylist (item->id)
                                                      : database.deletePlaylist (item->id),
                  tr ("Deleted the %1 %2.", tr (wordFor (kind)), item->name.quoted()));
}

std::optional<juce::StringArray> LibraryVerb::importablePaths (const juce::StringArray& arguments)
{
    juce::StringArray paths;
    for (const auto& argument : arguments)
    {
        const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (argument);
        const auto path = file.getFullPathName();
        if (!file.exists() || (!file.isDirectory() && !AudioFileTypes::matches (file)))
        {
            failWith (file.exists() ? tr ("%1 is no audio file of a kind that is played.", path)
                                    : tr ("%1 does not exist.", path));
            return {};
        }
        paths.add (path);
    }
    return paths;
}

int LibraryVerb::importArguments (SongDatabase& database, const juce::StringArray& arguments,
                                  const ImportFiles::Target& target)
{
    const auto paths = importablePaths (arguments);
    return paths ? importPaths (database, *paths, target) : ExitCode::badInput;
}

juce::String LibraryVerb::whyNotStored (int code)
{
    switch (code)
    {
    case LibraryCode::busy:
        return tr ("The import ended: another program is writing to the library.");
    case LibraryCode::full:
        return tr ("The import ended: the disk is full.");
    default:
        return tr ("The import ended: the library can't be written to (code %1).", code);
    }
}

int LibraryVerb::importPaths (SongDatabase& database, const juce::StringArray& paths,
                              const ImportFiles::Target& target)
{
    ImportResult result;
    {
        TerminalProgress progress;
        result = ImportFiles (&database, paths, target, importJudge (Session::decoderBesideBinary()))
                     .run (progress);
    }
    const auto count = [] (int files) { return trPlural ("%1 audio file", "%1 audio files", files); };
    if (result.code == LibraryCode::ok && !result.isCancelled)
        MusicFolders (MusicFolders::beside (database.file())).note (paths);
    if (result.isLocked() && result.added == 0)
        return failWith (tr ("The import ended: another program is writing to the library."));
    for (const auto& refused : result.unplayable)
        failWith (oneLine (refused));
    printLine (tr ("%1, %2 new in the library.", count (result.accepted), result.added));
    if (result.code != LibraryCode::ok)
        return failWith (tr ("%1 %2 not stored.", whyNotStored (result.code), count (result.refused)));
    if (result.refused > 0)
        return failWith (tr ("The library refused %1.", count (result.refused)));
    if (result.isCancelled)
        return failWith (tr ("The import was interrupted; what was done is kept."));
    if (!result.unplayable.isEmpty())
        return failWith (tr ("%1 not imported, which no deck could load.", count (result.unplayable.size())));
    return ExitCode::success;
}

int LibraryVerb::ended (int code, const juce::String& done)
{
    if (code == LibraryCode::ok)
    {
        printLine (done);
        return ExitCode::success;
    }
    return failWith (code == LibraryCode::busy
                         ? tr ("Nothing was changed: another program is at work in the library.")
                     : code == LibraryCode::full ? tr ("Nothing was changed: the disk is full.")
                                                 : tr ("The library refused the change (code %1).", code));
}

juce::String LibraryVerb::songs (int count)
{
    return trPlural ("%1 song", "%1 songs", count);
}
