#include "ui/preferences/LayoutPreferencesPage.h"

#include "session/LanguageChoice.h"
#include "session/Session.h"
#include "support/language/Translate.h"

namespace
{
using Kind = SettingControl::Kind;

constexpr const char* panels[] { "0", "1", "2", "3", "4" };
constexpr const char* fontSizes[] { "12", "13", "14", "15", "16", "17", "18", "19", "20", "21", "22" };
constexpr double leastFontSize = 12.0, leastScale = 100.0, scaleStep = 25.0;

// clang-format off
constexpr SettingControl general[] {
    { Kind::toggle, N_ ("Show four decks"), "fourDeckMode" },
    { Kind::toggle, N_ ("Show mixer channels ordered [ABCD]. When disabled [CABD]."), "mixerOrderABCD" },
    { Kind::toggle, N_ ("Show floating crossfader when mixer is hidden."), "showGhostMixer" },
    { Kind::choice, N_ ("Number of left deck utility panels:"), "deckPanelsLeft", panels },
    { Kind::choice, N_ ("Number of right deck utility panels:"), "deckPanelsRight", panels },
};
constexpr SettingControl browser[] {
    { Kind::toggle, N_ ("Show cover art"), "showCoverArt" },
    { Kind::toggle, N_ ("Show iTunes Library"), "showItunes" },
    { Kind::choice, N_ ("Font size:"), "listFontSize", fontSizes, leastFontSize },
};
constexpr SettingControl tooltips[] {
    { Kind::toggle, N_ ("Show Tooltips"), "showTooltips" },
};
// clang-format on

std::unique_ptr<SettingRow> languageRow (Session& session)
{
    const auto languages = LanguageChoice::all (session.folders);
    juce::StringArray names;
    for (const auto& language : languages)
        names.add (tr (language.name));
    const auto inUse = [languages]
    {
        for (size_t i = 0; i < languages.size(); ++i)
            if (languages[i].code == LanguageInUse::code())
                return static_cast<double> (i);
        return 0.0;
    };
    const auto choose = [languages, &session] (double index)
    {
        const auto fault =
            LanguageChoice::choose (languages[static_cast<size_t> (index)], session.preferences());
        if (fault.isNotEmpty() && session.prompts != nullptr)
            session.prompts->notify (tr ("Language"), fault);
    };
    return SettingRows::choice (
        tr ("Select language:"),
        tr ("Language of all texts. Further ones can be put into the folder \"languages\"."),
        { inUse, choose }, names);
}
}

LayoutPreferencesPage::LayoutPreferencesPage (CPlatterdex& e, const HeaderActions& actions)
    : SettingsPage (e, actions.layoutChanged)
{
    addGroup (tr ("General Layout"), general);
    if (actions.setScale != nullptr)
        addRow (SettingRows::choice (
            tr ("Interface size:"), tr ("Size of everything in the window."),
            { [scale = actions.scale] { return static_cast<double> (scale()); },
              [set = actions.setScale] (double percent) { set (juce::roundToInt (percent)); }, leastScale },
            { "100 %", "125 %", "150 %", "175 %", "200 %" }, leastScale, scaleStep));
    addGroup (tr ("Browser Layout"), browser);
    addGroup (tr ("Tooltips"), tooltips);
    if (actions.session != nullptr)
        addRow (languageRow (*actions.session));
    finish();
}
