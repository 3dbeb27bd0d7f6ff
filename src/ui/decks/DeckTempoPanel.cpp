#include "ui/decks/DeckTempoPanel.h"

#include "engine/CPlatterdex.h"
#include "engine/SettingChange.h"
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
    { { Kind::fader, "_pitchSlider",      "PITCH_",                  "pitch_164", "Pitch fader: down is faster", Lit::plain, "", false, Words::pitch }, { 4, 0, 28, 164 } },
    { { Kind::text,  "_pitchResetButton", "PITCH_RESET_",            "RESET", "Returns the pitch to 0 %", Lit::never }, { column, 110, columnWidth, 24 } },
    { { Kind::text,  "_keyLockButton",    "KEY_LOCK_",               "KEY", "Key lock: tempo changes leave the key alone" }, { column, 138, columnWidth, 24 } },
};
// clang-format on

const juce::Rectangle<int> tempoArea { column - 3, 0, columnWidth + 6, 24 },
    tempoUnit { column, 24, columnWidth, 12 }, pitchArea = tempoArea.translated (0, 40),
                                               pitchUnit = tempoUnit.translated (0, 40);
const juce::Rectangle<int> rangeArea { column, 82, columnWidth, 24 };

/** The tempo's unit, with how it is in time with what the deck follows. @param beatRatio   see SyncState::beatRatio */
juce::String unitText (double beatRatio)
{
    if (beatRatio == 0.0)
        return "NO SYNC";
    return beatRatio == 1.0 ? "BPM" : beatRatio < 1.0 ? "BPM 1/2" : "BPM 2/1";
}

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
    range.setTooltip ("Pitch range of all decks, up and down");
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
    const Texts next { PanelPaint::bpm (watch->grid, watch->bpm()), unitText (watch->beatRatio),
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
