#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/TerminalTable.h"
#include "cli/VerbOptions.h"
#include "instruments/presets/SmartKnobLibrary.h"
#include "instruments/slicegate/FactoryPresets.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsFolder.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--root", "DIR", N_ ("lists the user's files of this folder") },
    VerbOption { "--tsv", nullptr, N_ ("columns between tabs, for other programs") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

juce::String textOf (std::string_view words)
{
    return juce::String::fromUTF8 (words.data(), static_cast<int> (words.size()));
}

void addFiles (std::vector<juce::StringArray>& rows, const char* instrument, const juce::File& folder)
{
    auto files = folder.findChildFiles (juce::File::findFiles, false, "*.xml");
    files.sort();
    for (const auto& file : files)
        rows.push_back ({ instrument, "-", tr ("User files"), oneLine (file.getFullPathName()) });
}

std::vector<juce::StringArray> makeRows (const Folders& folders)
{
    EngineSettings settings;
    loadSettings (settings, folders.setup(), folders); // defaults where there is no file
    std::vector<juce::StringArray> rows { { "instrument", "id", "group", "name" } };
    for (const auto& group : FactoryPresets::groups())
        for (const auto& entry : group.presets)
            rows.push_back (
                { "slicegate", juce::String (entry.id), textOf (group.name), textOf (entry.name) });
    addFiles (rows, "slicegate", folderOf (settings.slicegateFolder, folders.slicegateFiles()));
    for (const auto& group : SmartKnobLibrary::groups())
        for (const auto& entry : group.entries)
            rows.push_back ({ "smartknob", juce::String (entry.id), group.name, entry.name });
    addFiles (rows, "smartknob", folderOf (settings.smartknobFolder, folders.smartknobFiles()));
    return rows;
}
}

int runPresets (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (given.has ("--help"))
    {
        printLine (helpText (
            "presets [--tsv] [--root DIR]",
            N_ ("Prints the presets of pads and SmartKnobs: the program's own with the ids that sets use,\n"
                "and the user's files."),
            options));
        return ExitCode::success;
    }
    if (!given.positional.isEmpty())
        return failWith (tr ("presets takes no argument, not \"%1\".", given.positional[0]));
    auto folders = Folders::ofProcess();
    if (given.has ("--root"))
        folders.root = given.fileOf ("--root");
    printTable (makeRows (folders), given.has ("--tsv"));
    return ExitCode::success;
}
