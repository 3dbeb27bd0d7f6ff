#include "cli/RootFolder.h"
#include "cli/TerminalOutput.h"
#include "cli/TerminalTable.h"
#include "cli/Verbs.h"
#include "deck/state/DeckNumbers.h"
#include "settings/SettingNames.h"
#include "settings/SettingsFile.h"
#include "support/language/Translate.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--changed", nullptr, N_ ("only what is not as it was at first") },
    VerbOption { "--tsv", nullptr, N_ ("columns between tabs, for other programs") },
    RootFolder::option,
    VerbOption { "--help", nullptr, N_ ("this text") },
};

std::vector<juce::StringArray> makeRows (const EngineSettings& now, const EngineSettings& atFirst,
                                         bool changedOnly)
{
    std::vector<juce::StringArray> rows { { "name", "value", "default", "meaning" } };
    for (const auto& row : SettingName::all())
        for (int deck = 0; deck < (row.isOfDeck ? deckCount : 1); ++deck)
        {
            const NamedSetting setting { &row, deck };
            const auto value = setting.valueIn (now), rest = setting.valueIn (atFirst);
            if (!changedOnly || value != rest)
                rows.push_back ({ setting.fullName(), value, rest,
                                  tr (juce::String (row.meaning.data(), row.meaning.size())) });
        }
    return rows;
}
}

int runSettings (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (
            "settings [--changed] [--tsv] [--root DIR]",
            N_ ("Lists the settings: their names as sets write them, their values and their meaning."),
            options));
        return ExitCode::success;
    }
    if (given.error().isNotEmpty())
        return failWith (given.error());
    if (!given.positional.isEmpty())
        return failWith (tr ("settings takes no \"%1\".", given.positional[0]));
    const auto folders = RootFolder::find (given);
    if (!folders)
        return ExitCode::badInput;
    auto settings = defaultSettings (*folders);
    loadSettings (settings, folders->setup(), *folders);
    printTable (makeRows (settings, defaultSettings (*folders), given.has ("--changed")),
                given.has ("--tsv"));
    return ExitCode::success;
}
