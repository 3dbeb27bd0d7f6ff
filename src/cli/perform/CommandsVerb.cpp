#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "engine/CommandTable.h"

#include <algorithm>
#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--tsv", nullptr, "columns between tabs, for other programs" },
    VerbOption { "--help", nullptr, "this text" },
};

constexpr std::array columns { "number", "kind", "constant", "name", "write", "read", "state" };

using Row = std::array<juce::String, columns.size()>;

const char* nameOf (CommandKind kind)
{
    switch (kind)
    {
    case CommandKind::trigger:
        return "trigger";
    case CommandKind::state:
        return "state";
    case CommandKind::value:
        return "value";
    case CommandKind::relative:
        return "relative";
    case CommandKind::meter:
        break;
    }
    return "meter";
}

std::vector<Row> makeRows()
{
    std::vector<Row> rows;
    Row head;
    std::copy (columns.begin(), columns.end(), head.begin());
    rows.push_back (head);
    const auto text = [] (std::string_view words) { return juce::String (words.data(), words.size()); };
    for (const int number : CommandTable::numbers())
    {
        const auto command = CommandTable::find (number);
        rows.push_back ({ juce::String (number), nameOf (command->kind), CommandTable::constant (number),
                          CommandTable::name (number), text (command->writes), text (command->reads),
                          CommandTable::isUnbuilt (number) ? "unbuilt" : "built" });
    }
    return rows;
}

std::array<int, columns.size()> widthsOf (const std::vector<Row>& rows)
{
    std::array<int, columns.size()> widths {};
    for (const auto& row : rows)
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max (widths[i], row[i].length());
    return widths;
}
}

int runCommands (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (
            helpText ("commands [--tsv]",
                      "Prints the commands that sets, scripts and hosts use: number, kind, constant, name,\n"
                      "what a write does, what a read gives, and whether the command does anything yet.",
                      options));
        return ExitCode::success;
    }
    if (!given.positional.isEmpty())
        return failWith ("commands takes no argument, not \"" + given.positional[0] + "\".");

    const auto rows = makeRows();
    const auto widths = widthsOf (rows);
    const auto tabs = given.has ("--tsv");
    for (const auto& row : rows)
    {
        juce::String line;
        for (size_t i = 0; i < row.size(); ++i)
            line << (tabs ? row[i] + "\t" : row[i].paddedRight (' ', widths[i] + 2));
        printLine (tabs ? line.dropLastCharacters (1) : line.trimEnd());
    }
    return ExitCode::success;
}
