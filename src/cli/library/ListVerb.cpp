#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/library/LibrarySource.h"
#include "cli/library/LibraryVerb.h"
#include "cli/library/SongTable.h"
#include "support/Suggestion.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--kind", "KIND", N_ ("what to list (library)") },
    VerbOption { "--sort", "COLUMN", N_ ("the order (a list's own, or artist)") },
    VerbOption { "--desc", nullptr, N_ ("the other way round") },
    VerbOption { "--search", "TEXT",
                 N_ ("only songs that have all the words, or bpm:120-126, key:8A, year:1990-, rating:>3") },
    VerbOption { "--in", "COLUMNS", N_ ("where --search looks, with commas between (artist,title,album)") },
    SongTable::columnsOption,
    RootFolder::option,
    RootFolder::libraryOption,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

std::optional<SongField> fieldNamed (const juce::String& name)
{
    const auto field = fieldOfColumn (name.toStdString());
    if (!field)
    {
        juce::StringArray names;
        for (const auto* each : SongDatabase::columnNames)
            names.add (each);
        failWith (tr ("There is no column %1 to sort by or search in; there are %2.%3", name.quoted(),
                      names.joinIntoString (", "), didYouMean (name, names)));
    }
    return field;
}

/** @returns nothing after a report */
std::optional<LibraryOrder> orderOf (const VerbOptions& given)
{
    LibraryOrder order;
    order.ascending = !given.has ("--desc");
    if (given.has ("--sort"))
    {
        const auto field = fieldNamed (given.valueOf ("--sort"));
        if (!field)
            return {};
        order.sort = *field;
    }
    if (given.has ("--in") && !given.has ("--search"))
    {
        failWith (tr ("--in says where --search looks, which isn't there."));
        return {};
    }
    if (!given.has ("--search"))
        return order;

    order.term = given.valueOf ("--search");
    const auto names = given.has ("--in") ? given.valueOf ("--in") : juce::String ("artist,title,album");
    for (const auto& name : juce::StringArray::fromTokens (names, ",", {}))
    {
        const auto field = fieldNamed (name.trim());
        if (!field)
            return {};
        order.searchIn.push_back (*field);
    }
    return order;
}

/** The values of a field, each with its number of songs. */
int printValues (SongDatabase& database, SongField field)
{
    juce::StringArray values;
    if (const auto code = database.listDistinct (field, values); code != LibraryCode::ok)
        return SongTable::unreadable (code);
    printLine ("name\tsongs");
    for (const auto& value : values)
        printLine (oneLine (value) + "\t" + juce::String (database.countWhere (field, value)));
    return ExitCode::success;
}

int list (SongDatabase& database, const VerbOptions& given)
{
    const auto kind = given.has ("--kind") ? given.valueOf ("--kind") : juce::String ("library");
    auto arguments = given.positional;
    for (const auto& [word, field] :
         { std::pair ("albums", SongField::album), std::pair ("artists", SongField::artist),
           std::pair ("genres", SongField::genre) })
        if (kind == word && arguments.isEmpty())
            return printValues (database, field);

    const auto order = orderOf (given);
    const auto table = SongTable::withColumns (given);
    if (!order || !table)
        return ExitCode::badInput;
    const auto source = LibrarySource::find (database, kind, arguments);
    if (!source)
        return ExitCode::badInput;
    if (!arguments.isEmpty())
        return failWith (tr ("list doesn't know what to do with %1.", arguments[0].quoted()));

    SongList songs;
    if (const auto code = source->fill (database, songs, *order); code != LibraryCode::ok)
        return SongTable::unreadable (code);
    return table->print (database, songs);
}
}

int runList (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        const auto description =
            tr ("Prints songs, one a line, below a line with the columns' names, with tabs between.\nKinds: "
                "%1;\n       and albums, artists, genres for the names there are.",
                LibrarySource::kindWords());
        printLine (
            helpText ("list [--kind KIND [NAME]] [--sort COLUMN] [--desc] [--search TEXT [--in COLUMNS]]\n"
                      "                       [--columns NAMES] [--root DIR] [--library FILE]",
                      description.toRawUTF8(), options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    const auto session = LibraryVerb::open (given, LibraryVerb::Use::read);
    return session != nullptr ? list (*session->library(), given) : ExitCode::badInput;
}
