#include "cli/TerminalOutput.h"
#include "cli/TerminalTable.h"
#include "cli/VerbOptions.h"
#include "cli/Verbs.h"
#include "midi/mapping/MidiMappingFile.h"
#include "midi/native/ModelMapping.h"
#include "midi/native/ModelScript.h"
#include "midi/native/table/ModelList.h"
#include "midi/native/table/ModelPage.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--list", nullptr, N_ ("prints all models, and how each is served") },
    VerbOption { "--show", "MODEL", N_ ("prints the page of a model: its controls, functions and lamps") },
    VerbOption { "--pages", "FOLDER", N_ ("writes the page of each of the 50 models into FOLDER") },
    VerbOption { "--mapping", "MODEL",
                 N_ ("writes the controls that a mapping can have into FILE, to be changed and loaded") },
    VerbOption { "--script", "MODEL",
                 N_ ("writes all controls and lamps as a script into FILE, to be changed and loaded") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr const char* usage =
    "controllers --list | --show MODEL | --pages FOLDER | --mapping MODEL FILE | --script MODEL FILE";

void list()
{
    std::vector<juce::StringArray> rows { { "model", "name", tr ("served by"), "controls", "lamps" } };
    for (int model = 0; model < ModelList::count; ++model)
    {
        const auto& entry = ModelList::entry (model);
        const auto count = [] (size_t n) { return juce::String (static_cast<int> (n)); };
        rows.push_back (
            { juce::String (model), entry.name, supportText (model),
              entry.table != nullptr ? count (entry.table->controls.size()) : juce::String(),
              entry.table != nullptr ? count (entry.table->lamps.size()) : juce::String (entry.remark) });
    }
    printTable (rows, false);
}

bool writePages (const juce::File& folder)
{
    for (int model = 0; model < ModelList::count; ++model)
        if (!folder.getChildFile (juce::String (model).paddedLeft ('0', 2) + ".md")
                 .replaceWithText (modelPage (model), false, false, "\n"))
            return false;
    return true;
}

int writeTable (int model, const juce::File& file, bool asScript)
{
    const auto* table = ModelList::entry (model).table;
    if (table == nullptr)
        return failWith (tr ("%1 has no table to write.", ModelList::entry (model).name));
    MidiMapping mapping;
    fillMapping (*table, mapping);
    if (!(asScript ? writeModelScript (*table, file) : saveMidiMapping (mapping, file)))
        return failWith (tr ("%1 can't be written.", file.getFullPathName()));
    return ExitCode::success;
}
}

int runControllers (const juce::StringArray& arguments)
{
    VerbOptions given (options, arguments);
    const auto model = [&given] (const char* option)
    { return given.wholeNumber (option, -1, 0, ModelList::count - 1).value_or (-1); };
    const auto shown = static_cast<int> (model ("--show")), mapped = static_cast<int> (model ("--mapping")),
               scripted = static_cast<int> (model ("--script"));
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText (
            usage, N_ ("Tells of the controllers that are known by number, and of their tables."), options));
        return ExitCode::success;
    }
    const auto wantsFile = mapped >= 0 || scripted >= 0;
    if (given.has ("--list") + (shown >= 0) + given.has ("--pages") + (mapped >= 0) + (scripted >= 0) != 1
        || given.positional.size() != (wantsFile ? 1 : 0))
        return failWith (tr ("%1: one of these; see platterdex controllers --help.", usage));
    if (wantsFile)
        return writeTable (wantsFile && mapped >= 0 ? mapped : scripted,
                           juce::File::getCurrentWorkingDirectory().getChildFile (given.positional[0]),
                           scripted >= 0);
    if (given.has ("--list"))
        list();
    else if (shown >= 0)
        printLine (modelPage (shown).trimEnd());
    else if (!writePages (given.fileOf ("--pages")))
        return failWith (tr ("%1 can't be written to.", given.fileOf ("--pages").getFullPathName()));
    return ExitCode::success;
}
