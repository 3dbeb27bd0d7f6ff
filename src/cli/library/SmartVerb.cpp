#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "library/smart/SmartPlaylist.h"
#include "support/language/Translate.h"

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
        failWith (tr ("smart create needs --rules FILE; smart rules NAME prints an example."));
        return {};
    }
    const auto file = given.fileOf ("--rules");
    const auto path = file.getFullPathName();
    SmartPlaylist rules;
    if (!file.existsAsFile())
        failWith (tr ("%1 does not exist.", path));
    else if (file.getSize() > largestRules || !parseXml (file.loadFileAsString(), rules))
        failWith (tr ("%1 holds no rules of a smart playlist.", path));
    else if (std::any_of (rules.rules.begin(), rules.rules.end(),
                          [] (const SmartRule& rule) { return rule.field < 0 || rule.operatorNumber < 0; }))
        failWith (tr ("%1 has a rule with a field or an operator that there isn't.", path));
    else if (buildSql (rules).isEmpty())
        failWith (tr ("%1 has neither a rule nor a limit.", path));
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
                               tr ("Made the smart playlist %1.", name.quoted()));
}

constexpr std::array actions {
    Action { "list", "", N_ ("the smart playlists, with their numbers of songs"), 0, 0, Use::read,
             LibraryVerb::onList<LibraryVerb::printPlaylists, kind> },
    Action { "show", "NAME", N_ ("the songs that fit now"), 1, 1, Use::read,
             LibraryVerb::onList<LibraryVerb::showPlaylist, kind> },
    Action { "rules", "NAME", N_ ("its rules as XML"), 1, 1, Use::read, printRules },
    Action { "create", "NAME --rules FILE.xml", N_ ("a new one"), 1, 1, Use::write, create },
    Action { "rename", "NAME NEWNAME", N_ ("gives it another name"), 2, 2, Use::change,
             LibraryVerb::onList<LibraryVerb::renamePlaylist, kind> },
    Action { "delete", "NAME", N_ ("its songs stay in the library"), 1, 1, Use::change,
             LibraryVerb::onList<LibraryVerb::deletePlaylist, kind> },
};

constexpr std::array options {
    VerbOption { "--rules", "FILE", N_ ("rules as smart rules prints them") },
    SongTable::columnsOption,
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};
}

int runSmart (const juce::StringArray& arguments)
{
    return LibraryVerb::runAction (
        "smart", N_ ("Makes and shows smart playlists: lists that choose their songs by rules."), actions,
        options, arguments);
}
