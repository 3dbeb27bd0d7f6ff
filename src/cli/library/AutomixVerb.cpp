#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
using LibraryVerb::Action;
using LibraryVerb::Use;

int add (SongDatabase& database, VerbOptions& given)
{
    ImportFiles::Target target;
    target.isAutomix = true;
    return LibraryVerb::importArguments (database, given.positional, target);
}

int clear (SongDatabase& database, VerbOptions&)
{
    const auto count = database.countAutomix();
    return LibraryVerb::ended (count < 0 ? count : database.clearAutomix(),
                               tr ("Took %1 out of the automix list.", LibraryVerb::songs (count)));
}

constexpr std::array actions {
    Action { "show", "", N_ ("the songs in the order in which they are played"), 0, 0, Use::read,
             LibraryVerb::onList<LibraryVerb::showPlaylist, SongListKind::automix> },
    Action { "add", "PATH...", N_ ("appends files and folders, which are imported if need be"), 1,
             LibraryVerb::anyNumber, Use::write, add },
    Action { "clear", "", N_ ("takes out all songs"), 0, 0, Use::change, clear },
};

constexpr std::array options {
    SongTable::columnsOption,
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};
}

int runAutomix (const juce::StringArray& arguments)
{
    return LibraryVerb::runAction ("automix", N_ ("Shows, fills and clears the list that automix plays."),
                                   actions, options, arguments);
}
