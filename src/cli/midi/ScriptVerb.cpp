#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "cli/Verbs.h"
#include "midi/script/ScriptLanguage.h"
#include "midi/script/ShippedScripts.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--check", nullptr,
                 N_ ("build the scripts and print what the compiler says; nothing of them runs") },
    VerbOption { "--examples", "FOLDER", N_ ("write px_commands.h and the example scripts into a folder") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

/** "script.c:3:5: error: ..." */
juce::String lineOf (const ScriptEntry& entry)
{
    constexpr std::array words { "error", "warning", "info" };
    juce::String line (entry.file);
    if (entry.line > 0)
        line << ":" << entry.line << ":" << entry.column;
    return oneLine (line + ": " + words[static_cast<size_t> (entry.kind)] + ": " + entry.text);
}

/** Builds a script as the program would. @returns false if it has errors */
bool check (const juce::File& file)
{
    ScriptJournal journal;
    ScriptTurn turn;
    const ScriptWorld world { .journal = journal };
    ScriptFunctions functions (world, turn);
    ScriptLanguage language (functions);
    const auto built = language.build (file, {});
    for (const auto& message : built.messages)
        reportLine (lineOf (message));
    if (built.program)
        printLine (tr ("%1: fine", oneLine (file.getFullPathName())));
    return built.program.has_value();
}
}

int runScript (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText ("script FILE... --check",
                             N_ ("Builds scripts for MIDI controllers and prints errors and warnings, each "
                                 "with its file, line\n"
                                 "and column. Ends with 0 if all of them could run, else with 2."),
                             options));
        return ExitCode::success;
    }
    if (given.has ("--examples"))
    {
        const auto folder = given.fileOf ("--examples");
        return ShippedScripts::install (folder)
                   ? ExitCode::success
                   : failWith (tr ("The scripts can't be written into %1.", folder.getFullPathName()));
    }
    if (given.positional.isEmpty())
        return failWith (tr ("script needs the name of a script."));
    if (!given.has ("--check"))
        return failWith (tr ("script needs --check; scripts run in the program's window."));

    auto areFine = true;
    for (const auto& name : given.positional)
        areFine = check (juce::File::getCurrentWorkingDirectory().getChildFile (name)) && areFine;
    return areFine ? ExitCode::success : ExitCode::badInput;
}
