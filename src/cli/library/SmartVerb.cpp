#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "library/smart/SmartPlaylist.h"

#include <array>

namespace
{
using LibraryVerb::Action;
using LibraryVerb::Use;
constexpr auto kind = SongListKind::smartPlaylist;

/** Larger documents are none of ours. */
constexpr juce::int64 largestRules = 1 << 20;

int printRules (SongDatabase& database, VerbOptions& given)
{
    const auto item = LibraryVerb::findPlaylist (database, kind, given.positional[0]);
    if (!item)
        return ExitCode::badInput;
    juce::String xml;
    if (const auto code = database.getSmartRules (item->id, xml); code != LibraryCode::ok)
        return SongTable::unreadable (code);
    printLine (xml);
    return ExitCode::success;
}

/** @returns nothing after a report */
std::optional<SmartPlaylist> readRules (const VerbOptions& given)
{
    if (!given.has ("--rules"))
    {
        failWith ("smart create needs --rules FILE; smart rules NAME prints an example.");
        return {};
    }
    const auto file = given.fileOf ("--rules");
    const auto path = file.getFullPathName();
    SmartPlaylist rules;
    if (!file.existsAsFile())
        failWith (path + " does not exist.");
    else if (file.getSize() > largestRules || !parseXml (file.loadFileAsString(), rules))
        failWith (path + " holds no rules of a smart playlist.");
    else if (std::any_of (rules.rules.begin(), rules.rules.end(),
                          [] (const SmartRule& rule) { return rule.field < 0 || rule.operatorNumber < 0; }))
        failWith (path + " has a rule with a field or an operator that there isn't.");
    else if (buildSql (rules).isEmpty())
        failWith (path + " has neither a rule nor a limit.");
    else
        return rules;
    return {};
}

int create (SongDatabase& database, VerbOptions& given)
{
    const auto name = given.positional[0];
    const auto rules = readRules (given);
    if (!rules || !LibraryVerb::isNameFree (database, kind, name))
        return ExitCode::badInput;
    return LibraryVerb::ended (database.createSmartPlaylist (name, buildSql (*rules), buildXml (*rules),
                                                             LibraryVerb::lastPlace (database, kind)),
                               "Made the smart playlist " + name.quoted() + ".");
}

constexpr std::array actions {
    Action { "list", "", "the smart playlists, with their numbers of songs", 0, 0, Use::read,
             LibraryVerb::onList<LibraryVerb::printPlaylists, kind> },
    Action { "show", "NAME", "the songs that fit now", 1, 1, Use::read,
             LibraryVerb::onList<LibraryVerb::showPlaylist, kind> },
    Action { "rules", "NAME", "its rules as XML", 1, 1, Use::read, printRules },
    Action { "create", "NAME --rules FILE.xml", "a new one", 1, 1, Use::write, create },
    Action { "rename", "NAME NEWNAME", "gives it another name", 2, 2, Use::change,
             LibraryVerb::onList<LibraryVerb::renamePlaylist, kind> },
    Action { "delete", "NAME", "its songs stay in the library", 1, 1, Use::change,
             LibraryVerb::onList<LibraryVerb::deletePlaylist, kind> },
};

constexpr std::array options {
    VerbOption { "--rules", "FILE", "rules as smart rules prints them" },
    SongTable::columnsOption,
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, "this text" },
};
}

int runSmart (const juce::StringArray& arguments)
{
    return LibraryVerb::runAction ("smart",
                                   "Makes and shows smart playlists: lists that choose their songs by rules.",
                                   actions, options, arguments);
}
