#include "ui/preferences/GlobalSettingsPreferencesPage.h"

#include "deck/state/DeckNumbers.h"
#include "session/SimilarRoom.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"

namespace
{
using Kind = SettingControl::Kind;

constexpr const char* slowest[] { "60", "80", "100", "120", "140", "160" };
constexpr const char* tempoRanges[] { "2%",  "4%",  "6%",  "8%",  "10%", "12%", "14%",
                                      "16%", "18%", "20%", "25%", "35%", "50%" };
constexpr const char* inputs[] { N_ ("Input A"), N_ ("Input B"), N_ ("Input C"), N_ ("Input D") };
constexpr const char* sides[] { N_ ("Left"), N_ ("Right") };

// clang-format off
constexpr SettingControl global[] {
    { Kind::toggle, N_ ("Disable Elastique master tempo and key lock engine"), "bypassStretcher" },
    { Kind::toggle, N_ ("Lock playing deck. No loading while deck is playing"), "lockLoadedDecks" },
    { Kind::toggle, N_ ("Show spectral color waveform (CTRL+C)"), "spectralWaveform" },
    { Kind::toggle, N_ ("Slow Decoder/Analysis mode. Enable if you have sound glitches"), "lowPriorityAnalysis" },
    { Kind::choice, N_ ("BPM detector minimum threshold:"), "tempoRangeIndex", slowest },
    { Kind::choice, N_ ("Tempo range:"), "pitchRangeIndex", tempoRanges },
};
constexpr SettingControl automix[] {
    { Kind::seconds, N_ ("Crossfade Time:"), "automixFadeSeconds" },
    { Kind::toggle, N_ ("Enable DJ Style Automix. This mode auto-beat-mix through the Playlist"), "automixSync" },
    { Kind::toggle, N_ ("Enable Bass X-Fade. Blends bass of decks via the auto crossfader"), "automixBassSwap" },
};
constexpr SettingControl mixer[] {
    { Kind::toggle,   N_ ("Enable monitor phone split"), "monitorSplit" },
    { Kind::toggle,   N_ ("Enable monitor overdrive"), "monitorOverdrive" },
    { Kind::toggle,   N_ ("Enable crossfader reverse"), "crossfaderReverse" },
    { Kind::inverted, N_ ("Enable crossfader curvature"), "crossfaderMode" },
    { Kind::percent,  N_ ("Crossfader curvature:"), "crossfaderCurve" },
};
constexpr SettingControl deckTable[] {
    { Kind::toggle,  N_ ("Snap cues and loops to the beat"), "snap" },
    { Kind::toggle,  N_ ("Quantise jumps to the beat"), "quantise" },
    { Kind::choice,  N_ ("Crossfader side:"), "crossfaderSide", sides },
    { Kind::choice,  N_ ("Input:"), "inputPair", inputs },
    { Kind::toggle,  N_ ("Play the input through this deck"), "lineThrough" },
    { Kind::percent, N_ ("Level of the input:"), "lineGain" },
};
// clang-format on
}

GlobalSettingsPreferencesPage::GlobalSettingsPreferencesPage (CPlatterdex& e, const HeaderActions& actions)
    : SettingsPage (e, actions.layoutChanged)
{
    addGroup (tr ("Global Settings"), global);
    addGroup (tr ("Automix Settings"), automix);
    addGroup (tr ("Mixer Settings"), mixer);
    if (actions.session != nullptr)
        addSimilarSongs (*actions.session);
    for (int deck = 0; deck < deckCount; ++deck)
        addGroup (tr ("Deck %1", PanelPaint::letterOf (deck)), deckTable, deck);
    finish();
}

/** The preferences of similar songs, which belong to the session. */
void GlobalSettingsPreferencesPage::addSimilarSongs (Session& session)
{
    addGroup (tr ("Similar Songs"));
    addRow (SettingRows::toggle (
        tr ("Automix continues with similar songs when its list has come to its end"),
        tr ("Plays on with songs of the library that fit the last one by sound, tempo and key."),
        { [&session] { return SimilarRoom::of (session).continuesAutomix() ? 1.0 : 0.0; },
          [&session] (double on) { SimilarRoom::of (session).setContinuesAutomix (on != 0.0); } }));
    juce::StringArray priorities;
    for (const auto& each : SimilarSongs::priorities)
        priorities.add (tr (each.text));
    const auto indexOf = [] (const juce::String& value)
    {
        for (size_t i = 0; i < std::size (SimilarSongs::priorities); ++i)
            if (value == SimilarSongs::priorities[i].value)
                return static_cast<double> (i);
        return 1.0;
    };
    addRow (
        SettingRows::choice (tr ("Similar songs:"), tr ("Orders the recommendations."),
                             { [&session, indexOf] { return indexOf (SimilarRoom::of (session).priority()); },
                               [&session] (double index) {
                                   SimilarRoom::of (session).setPriority (
                                       SimilarSongs::priorities[static_cast<size_t> (index)].value);
                               } },
                             priorities));
    addRow (SettingRows::choice (
        tr ("Keys are written as:"), tr ("Of songs whose key is found from now on."),
        { [&session]
          { return SimilarRoom::of (session).keyNotation() == KeyText::Notation::wheel ? 1.0 : 0.0; },
          [&session] (double wheel)
          {
              // Unwritten, the choice holds until the program ends.
              juce::ignoreUnused (session.preferences().set (KeyText::preference,
                                                             wheel != 0.0 ? KeyText::wheelValue : "letters"));
          } },
        { "C, Am, F#m", "8B, 8A, 11A" }));
}
