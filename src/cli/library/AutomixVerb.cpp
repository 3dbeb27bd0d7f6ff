#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/library/LibrarySource.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"

#include <array>

namespace
{
using LibraryVerb::Action;
using LibraryVerb::Use;

int show (SongDatabase& database, VerbOptions& given)
{
    const auto table = SongTable::withColumns (given);
    if (!table)
        return ExitCode::badInput;
    SongList songs (SongListKind::automix);
    const auto code = database.fillAutomix (&songs, SongField::listOrder, true);
    return code == LibraryCode::ok ? table->print (database, songs) : SongTable::unreadable (code);
}

int add (SongDatabase& database, VerbOptions& given)
{
    const auto paths = LibraryVerb::importablePaths (given.positional);
    if (!paths)
        return ExitCode::badInput;
    ImportFiles::Target target;
    target.isAutomix = true;
    return LibraryVerb::importPaths (database, *paths, target);
}

int clear (SongDatabase& database, VerbOptions&)
{
    const auto count = database.countAutomix();
    return LibraryVerb::ended (count < 0 ? count : database.clearAutomix(),
                               "Took " + LibraryVerb::songs (count) + " out of the automix list.");
}

constexpr std::array actions {
    Action { "show", "", "the songs in the order in which they are played", 0, 0, Use::read, show },
    Action { "add", "PATH...", "appends files and folders, which are imported if need be", 1,
             LibraryVerb::anyNumber, Use::write, add },
    Action { "clear", "", "takes out all songs", 0, 0, Use::change, clear },
};

constexpr std::array options {
    SongTable::columnsOption,
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, "this text" },
};
}

int runAutomix (const juce::StringArray& arguments)
{
    return LibraryVerb::runAction ("automix", "Shows, fills and clears the list that automix plays.", actions,
                                   options, arguments);
}
