#include "ui/preferences/LayoutPreferencesPage.h"

namespace
{
using Kind = SettingControl::Kind;

constexpr const char* panels[] { "0", "1", "2", "3", "4" };
constexpr const char* fontSizes[] { "12", "13", "14", "15", "16", "17", "18", "19", "20", "21", "22" };
constexpr double leastFontSize = 12.0, leastScale = 100.0, scaleStep = 25.0;

// clang-format off
constexpr SettingControl general[] {
    { Kind::toggle, "Show four decks", "fourDeckMode" },
    { Kind::toggle, "Show mixer channels ordered [ABCD]. When disabled [CABD].", "mixerOrderABCD" },
    { Kind::toggle, "Show floating crossfader when mixer is hidden.", "showGhostMixer" },
    { Kind::choice, "Number of left deck utility panels:", "deckPanelsLeft", panels },
    { Kind::choice, "Number of right deck utility panels:", "deckPanelsRight", panels },
};
constexpr SettingControl browser[] {
    { Kind::toggle, "Show cover art", "showCoverArt" },
    { Kind::toggle, "Show iTunes Library", "showItunes" },
    { Kind::choice, "Font size:", "listFontSize", fontSizes, leastFontSize },
};
constexpr SettingControl tooltips[] {
    { Kind::toggle, "Show Tooltips", "showTooltips" },
};
// clang-format on
}

LayoutPreferencesPage::LayoutPreferencesPage (CPlatterdex& e, const HeaderActions& actions)
    : SettingsPage (e, actions.layoutChanged)
{
    addGroup ("General Layout", general);
    if (actions.setScale != nullptr)
        addRow (SettingRows::choice (
            "Interface size:", "Size of everything in the window.",
            { [scale = actions.scale] { return static_cast<double> (scale()); },
              [set = actions.setScale] (double percent) { set (juce::roundToInt (percent)); }, leastScale },
            { "100 %", "125 %", "150 %", "175 %", "200 %" }, leastScale, scaleStep));
    addGroup ("Browser Layout", browser);
    addGroup ("Tooltips", tooltips);
    finish();
}
