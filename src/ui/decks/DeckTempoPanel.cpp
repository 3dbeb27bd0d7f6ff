#include "ui/decks/DeckTempoPanel.h"

#include "engine/CPlatterdex.h"
#include "engine/SettingChange.h"
#include "support/language/Translate.h"
#include "ui/panel/PanelPaint.h"
#include "ui/widgets/PXImageLinearSlider.h"

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;
using Words = ControlSpec::Words;

constexpr int column = 36, columnWidth = 60;
constexpr int pitchRanges = 13;

/** The way of the fader to either side of its middle. @param range   from end to end */
juce::String reachText (double range)
{
    return juce::String (juce::roundToInt (50.0 * range)) + " %";
}

// clang-format off
constexpr PlacedControl table[] {
    { { Kind::fader, "_pitchSlider",      "PITCH_",                  "pitch_164", N_ ("Pitch fader: down is faster. The wheel moves it by 0.1 %, with Shift by 0.02 %"), Lit::plain, "", false, Words::pitch }, { 4, 0, 28, 164 } },
    { { Kind::text,  "_pitchResetButton", "PITCH_RESET_",            N_ ("RESET"), N_ ("Returns the pitch to 0 %"), Lit::never }, { column, 110, columnWidth, 24 } },
    { { Kind::text,  "_keyLockButton",    "KEY_LOCK_",               N_ ("KEY"), N_ ("Key lock: tempo changes leave the key alone") }, { column, 138, columnWidth, 24 } },
};
// clang-format on

const juce::Rectangle<int> tempoArea { column - 3, 0, columnWidth + 6, 24 },
    tempoUnit { column, 24, columnWidth, 12 }, pitchArea = tempoArea.translated (0, 40),
                                               pitchUnit = tempoUnit.translated (0, 40);
const juce::Rectangle<int> rangeArea { column, 82, columnWidth, 24 };

/** The tempo's unit, with the deck that it follows and how it is in time with that.
    @param beatRatio   see SyncState::beatRatio
    @param leader      0 to 3, or -1 for none */
juce::String unitText (double beatRatio, int leader)
{
    if (beatRatio == 0.0)
        return tr ("NO SYNC");
    const juce::String ratio (beatRatio == 1.0 ? "" : beatRatio < 1.0 ? " 1/2" : " 2/1");
    return leader < 0 ? "BPM" + ratio : "BPM = " + PanelPaint::letterOf (leader) + ratio;
}

/** A followed tempo swings by a hundredth as its phase is held; nobody wants to read that. */
constexpr double restlessBpm = 0.025;

/** The percent that the fader adds to the speed. The number of figures stays, so that it never outgrows its place. */
juce::String pitchText (double percent)
{
    return juce::String::formatted (std::abs (percent) < 99.995 ? "%+.2f" : "%+.1f",
                                    std::abs (percent) < 0.005 ? 0.0 : percent);
}
}

DeckTempoPanel::DeckTempoPanel (CPlatterdex& e, int deck)
    : ControlPanel (e),
      watch (e, deck),
      range (own (std::make_unique<MenuButton>()))
{
    addControls (table, deck);
    addLabel ("%", pitchUnit);
    range.setComponentID ("_pitchRangeButton");
    range.setTooltip (tr ("Pitch range of all decks, up and down"));
    range.setBounds (rangeArea);
    range.onFillMenu = [this] (juce::PopupMenu& menu)
    {
        for (int index = 0; index < pitchRanges; ++index)
            menu.addItem (index + 1, reachText (pitchRangeOf (index)), true,
                          engine.settings.pitchRangeIndex == index);
    };
    range.onMenuChoice = [this] (int id)
    {
        changeSetting (engine, NamedSetting::find ("pitchRangeIndex"), id - 1);
        refresh();
    };
}

void DeckTempoPanel::pollMoving()
{
    pollControls();
    const int master = engine.settings.masterDeck;
    const auto follows = engine.settings.deckSetup[static_cast<size_t> (watch.deck())].sync != 0
                         && master >= 0 && master < deckCount && master != watch.deck();
    if (const auto heard = watch->bpm(); !follows || std::abs (heard - steadyBpm) > restlessBpm)
        steadyBpm = heard;
    const Texts next { PanelPaint::bpm (watch->grid, steadyBpm),
                       unitText (watch->beatRatio, follows ? master : -1),
                       pitchText (100.0 * watch->pitchShare) };
    if (next == shown)
        return;
    shown = next;
    repaint (tempoArea.getUnion (tempoUnit));
    repaint (pitchArea);
}

void DeckTempoPanel::pollCalm()
{
    range.setButtonText (reachText (watch->pitchRange));
}

void DeckTempoPanel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::value (g, shown.tempo, tempoArea, juce::Justification::centred, SMLookAndFeel::figureSize);
    PanelPaint::label (g, shown.unit, tempoUnit);
    PanelPaint::value (g, shown.pitch, pitchArea, juce::Justification::centred, SMLookAndFeel::figureSize);
}
