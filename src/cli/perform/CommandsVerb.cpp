#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalTable.h"
#include "cli/VerbOptions.h"
#include "engine/CommandTable.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--tsv", nullptr, N_ ("columns between tabs, for other programs") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr std::array columns { "number", "kind", "constant", "name", "write", "read", "state" };

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

std::vector<juce::StringArray> makeRows()
{
    std::vector<juce::StringArray> rows { juce::StringArray (columns.data(),
                                                             static_cast<int> (columns.size())) };
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
}

int runCommands (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText (
            "commands [--tsv]",
            N_ ("Prints the commands that sets, scripts and hosts use: number, kind, constant, name,\n"
                "what a write does, what a read gives, and whether the command does anything yet."),
            options));
        return ExitCode::success;
    }
    if (!given.positional.isEmpty())
        return failWith (tr ("commands takes no argument, not \"%1\".", given.positional[0]));

    printTable (makeRows(), given.has ("--tsv"));
    return ExitCode::success;
}
