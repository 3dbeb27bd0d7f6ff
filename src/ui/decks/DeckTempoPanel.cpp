#include "ui/decks/DeckTempoPanel.h"

#include "engine/CPlatterdex.h"
#include "ui/panel/PanelPaint.h"
#include "ui/widgets/PXImageLinearSlider.h"

namespace
{
using Kind = ControlRow::Kind;
using Lit = ControlRow::Lit;

constexpr int column = 36, columnWidth = 60;
constexpr int pitchRanges = 13;

// clang-format off
constexpr ControlRow table[] {
    { Kind::fader, "_pitchSlider",      "PITCH_",                  "pitch_164", { 4, 0, 28, 164 }, "Pitch: down is faster" },
    { Kind::text,  "_pitchResetButton", "PITCH_RESET_",            "RESET", { column, 110, columnWidth, 24 }, "Pitch to its centre", Lit::never },
    { Kind::text,  "_keyLockButton",    "KEY_LOCK_",               "KEY",   { column, 138, columnWidth, 24 }, "Key lock: the tempo moves, the key stays" },
};
// clang-format on

const juce::Rectangle<int> tempoArea { column - 3, 0, columnWidth + 6, 24 },
    tempoUnit { column, 24, columnWidth, 12 }, pitchArea = tempoArea.translated (0, 40),
                                               pitchUnit = tempoUnit.translated (0, 40);
const juce::Rectangle<int> rangeArea { column, 82, columnWidth, 24 };

/** What the fader adds to the speed. @param percent   the number of figures stays, so that it never outgrows its place */
juce::String pitchText (double percent)
{
    return juce::String::formatted (std::abs (percent) < 99.995 ? "%+.2f" : "%+.1f",
                                    std::abs (percent) < 0.005 ? 0.0 : percent);
}
}

DeckTempoPanel::DeckTempoPanel (CPlatterdex& e, int deck)
    : ControlPanel (e, Pace::moving),
      deckIndex (deck),
      range (own (std::make_unique<MenuButton>()))
{
    addControls (table, deck);
    addLabel ("BPM", tempoUnit);
    addLabel ("%", pitchUnit);
    range.setComponentID ("_pitchRangeButton");
    range.setTooltip ("How far the pitch faders of all decks reach");
    range.setBounds (rangeArea);
    range.onFillMenu = [this] (juce::PopupMenu& menu)
    {
        for (int index = 0; index < pitchRanges; ++index)
            menu.addItem (index + 1, juce::String (juce::roundToInt (50.0 * pitchRangeOf (index))) + " %",
                          true, engine.settings.pitchRangeIndex == index);
    };
    range.onMenuChoice = [this] (int id)
    {
        engine.settings.pitchRangeIndex = static_cast<int8_t> (id - 1);
        engine.decks.setPitchRange (id - 1);
        refresh();
    };
}

void DeckTempoPanel::pollMoving()
{
    pollControls();
    const auto& deck = *engine.decks.deck (deckIndex);
    Texts next;
    // Without a grid nobody knows how fast the music is.
    next.tempo = deck.track.numBeats > 0 || deck.marks.fixedGrid != 0
                     ? juce::String (deck.marks.bpm * deck.tempo.factor, 2)
                     : PanelPaint::dash();
    next.pitch = pitchText (100.0 * (deck.tempo.pitch - 0.5) * engine.decks.pitchRange);
    if (next == shown)
        return;
    shown = next;
    repaint (tempoArea);
    repaint (pitchArea);
}

void DeckTempoPanel::pollCalm()
{
    range.setButtonText (juce::String (juce::roundToInt (100.0 * engine.decks.pitchRange)) + " %");
}

void DeckTempoPanel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::value (g, shown.tempo, tempoArea, juce::Justification::centred, SMLookAndFeel::figureSize);
    PanelPaint::value (g, shown.pitch, pitchArea, juce::Justification::centred, SMLookAndFeel::figureSize);
}
