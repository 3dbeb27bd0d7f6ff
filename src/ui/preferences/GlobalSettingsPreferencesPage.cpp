#include "ui/preferences/GlobalSettingsPreferencesPage.h"

#include "deck/state/DeckNumbers.h"
#include "ui/panel/PanelPaint.h"

namespace
{
using Kind = SettingControl::Kind;

constexpr const char* slowest[] { "60", "80", "100", "120", "140", "160" };
constexpr const char* tempoRanges[] { "2%",  "4%",  "6%",  "8%",  "10%", "12%", "14%",
                                      "16%", "18%", "20%", "25%", "35%", "50%" };
constexpr const char* inputs[] { "Input A", "Input B", "Input C", "Input D" };
constexpr const char* sides[] { "Left", "Right" };

// clang-format off
constexpr SettingControl global[] {
    { Kind::toggle, "Disable Elastique master tempo and key lock engine", "bypassStretcher" },
    { Kind::toggle, "Lock playing deck. No loading while deck is playing", "lockLoadedDecks" },
    { Kind::toggle, "Show spectral color waveform (CTRL+C)", "spectralWaveform" },
    { Kind::toggle, "Slow Decoder/Analysis mode. Enable if you have sound glitches", "lowPriorityAnalysis" },
    { Kind::choice, "BPM detector minimum threshold:", "tempoRangeIndex", slowest },
    { Kind::choice, "Tempo range:", "pitchRangeIndex", tempoRanges },
};
constexpr SettingControl automix[] {
    { Kind::seconds, "Crossfade Time:", "automixFadeSeconds" },
    { Kind::toggle, "Enable DJ Style Automix. This mode auto-beat-mix through the Playlist", "automixSync" },
    { Kind::toggle, "Enable Bass X-Fade. Blends bass of decks via the auto crossfader", "automixBassSwap" },
};
constexpr SettingControl mixer[] {
    { Kind::toggle,   "Enable monitor phone split", "monitorSplit" },
    { Kind::toggle,   "Enable monitor overdrive", "monitorOverdrive" },
    { Kind::toggle,   "Enable crossfader reverse", "crossfaderReverse" },
    { Kind::inverted, "Enable crossfader curvature", "crossfaderMode" },
    { Kind::percent,  "Crossfader curvature:", "crossfaderCurve" },
};
constexpr SettingControl deckTable[] {
    { Kind::toggle,  "Snap cues and loops to the beat", "snap" },
    { Kind::toggle,  "Quantise jumps to the beat", "quantise" },
    { Kind::choice,  "Crossfader side:", "crossfaderSide", sides },
    { Kind::choice,  "Input:", "inputPair", inputs },
    { Kind::toggle,  "Play the input through this deck", "lineThrough" },
    { Kind::percent, "Level of the input:", "lineGain" },
};
// clang-format on
}

GlobalSettingsPreferencesPage::GlobalSettingsPreferencesPage (CPlatterdex& e, const HeaderActions& actions)
    : SettingsPage (e, actions.layoutChanged)
{
    addGroup ("Global Settings", global);
    addGroup ("Automix Settings", automix);
    addGroup ("Mixer Settings", mixer);
    if (actions.audioSettings != nullptr)
    {
        addGroup ("Audio Device");
        addRow (
            SettingRows::button ("Card, rate and block size:",
                                 "Opens the settings of the audio device: card, sample rate, block size and "
                                 "a test tone.",
                                 "Audio settings...", actions.audioSettings));
    }
    for (int deck = 0; deck < deckCount; ++deck)
        addGroup ("Deck " + PanelPaint::letterOf (deck), deckTable, deck);
    finish();
}
