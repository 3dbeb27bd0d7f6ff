#include "ui/decks/DeckPanels.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "skin/Palette.h"
#include "ui/decks/BeatStepField.h"
#include "ui/decks/EditMenu.h"
#include "ui/panel/PanelPaint.h"
#include "ui/widgets/PXTextButton.h"

namespace
{
using Kind = ControlRow::Kind;
using Lit = ControlRow::Lit;

constexpr int margin = 4, width = 92, half = 44, right = 52;

// clang-format off
constexpr ControlRow loopTable[] {
    { Kind::text, "_loopButton",         "LOOP_",               "LOOP",     { margin,   0, half, 24 }, "Beat loop of the size below, on or off", Lit::deck },
    { Kind::text, "_leapButton",         "LEAP_",               "LEAP",     { right,    0, half, 24 }, "Rolling loop: when it ends the track goes on where it would be by then", Lit::deck },
    { Kind::sign, "_loopHalfButton",     "LOOP_HALF_",          "left_24",  { margin,  38, 24, 24 }, "Halves the loop" },
    { Kind::sign, "_loopDoubleButton",   "LOOP_DOUBLE_",        "right_24", { 72,      38, 24, 24 }, "Doubles the loop" },
    { Kind::sign, "_loopBackwardButton", "LOOP_MOVE_BACKWARD_", "left_24",  { margin,  76, 24, 24 }, "Moves the loop, or the position, back by the beats between the arrows" },
    { Kind::sign, "_loopForwardButton",  "LOOP_MOVE_FORWARD_",  "right_24", { 72,      76, 24, 24 }, "Moves the loop, or the position, on by the beats between the arrows" },
    { Kind::text, "_loopInButton",       "LOOP_IN_",            "IN",       { margin, 110, half, 24 }, "Start of a loop by hand" },
    { Kind::text, "_loopOutButton",      "LOOP_OUT_",           "OUT",      { right,  110, half, 24 }, "End of a loop by hand, or the way out of a loop" },
    { Kind::text, "_reloopButton",       "RELOOP_",             "RELOOP",   { margin, 138, width, 24 }, "Takes the loop by hand up again" },
};

constexpr ControlRow cueTable[] {
    { Kind::text, "_rewindButton",     "REWIND_",      "REW",   { margin, 138, half, 24 }, "Back to the start of the track" },
    { Kind::text, "_startPointButton", "START_POINT_", "START", { right,  138, half, 24 }, "Start point: nothing before it is played", Lit::deck },
};

constexpr ControlRow keyTable[] {
    { Kind::knob, "_keyTuningSlider", "KEY_TUNING_", "",      { 30,       4, 40, 40 }, "Key of the track, up to an octave either way", Lit::plain, "", true },
    { Kind::text, "_keyResetButton",  "KEY_RESET_",  "RESET", { margin, 110, width, 24 }, "Back to the track's own key", Lit::never },
    { Kind::text, "_keyLockButton",   "KEY_LOCK_",   "LOCK",  { margin, 138, width, 24 }, "Key lock: the tempo moves, the key stays" },
};

constexpr ControlRow gridTable[] {
    { Kind::text, "_downbeatButton", "DOWNBEAT_", "DOWNBEAT", { margin, 138, width, 24 }, "The beat nearest to the position becomes the first of a bar. Right click on the panel takes edits back.", Lit::never },
};
// clang-format on

const juce::Rectangle<int> loopSizeArea { 32, 38, 36, 24 }, moveSizeArea { 32, 76, 36, 24 };
const juce::Rectangle<int> tuningArea { margin, 48, width, 20 };
constexpr int hotCueHeight = 32, hotCueStep = 34;
}

DeckLoopPanel::DeckLoopPanel (CPlatterdex& e, int deck) : ControlPanel (e, Pace::calm)
{
    addControls (loopTable, deck);
    addLabel ("SIZE", { margin, 26, width, 12 });
    addLabel ("MOVE", { margin, 64, width, 12 });
    for (const auto& [name, constant, area, tip] :
         { std::tuple { "_loopSizeField", "LOOP_SIZE_", loopSizeArea, "Size of the loop in beats" },
           std::tuple { "_loopMoveSizeField", "LOOP_MOVE_SIZE_", moveSizeArea,
                        "How far a move goes, in beats" } })
    {
        auto& field = own (std::make_unique<BeatStepField> (name));
        field.setTooltip (juce::String (tip) + ". Turn the wheel, or click for the list.");
        field.bind (e, CommandTable::numberOf (constant, deck));
        field.setBounds (area);
    }
}

DeckCuePanel::DeckCuePanel (CPlatterdex& e, int deck) : ControlPanel (e, Pace::calm), deckIndex (deck)
{
    for (int slot = 0; slot < hotCueCount; ++slot)
    {
        const auto number = std::to_string (slot + 1);
        const auto set = "HOT_CUE_" + number + "_", remove = "DELETE_HOT_CUE_" + number + "_";
        const auto tip = "Hot cue " + number + ": sets it, or jumps to it. Right click deletes it.";
        auto* made =
            addControl ({ Kind::text,
                          "_hotCueButton",
                          set.c_str(),
                          number.c_str(),
                          { slot % 2 == 0 ? margin : right, slot / 2 * hotCueStep, half, hotCueHeight },
                          tip.c_str(),
                          Lit::deck,
                          remove.c_str() },
                        deck);
        buttons[static_cast<size_t> (slot)] = dynamic_cast<PXTextButton*> (made);
    }
    addControls (cueTable, deck);
}

void DeckCuePanel::paintOverChildren (juce::Graphics& g)
{
    // A slot that is set bears the colour of its flag on the waveform.
    for (size_t slot = 0; slot < buttons.size(); ++slot)
        if (buttons[slot] != nullptr && buttons[slot]->getToggleState())
        {
            g.setColour (palette::cues[slot]);
            g.fillRect (buttons[slot]->getBounds().reduced (4).removeFromLeft (4));
        }
}

void DeckCuePanel::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
        EditMenu::show (engine, deckIndex, *this);
}

DeckKeyPanel::DeckKeyPanel (CPlatterdex& e, int deck) : ControlPanel (e, Pace::calm), deckIndex (deck)
{
    addControls (keyTable, deck);
    for (const auto step : { -1, 1 })
    {
        auto& button = own (std::make_unique<PXTextButton> (step < 0 ? "-1" : "+1"));
        button.setComponentID ("_keyStepButton");
        button.setTooltip (step < 0 ? "A semitone lower" : "A semitone higher");
        button.setTriggeredOnMouseDown (true);
        button.onClick = [this, step] { tune (engine.decks.deck (deckIndex)->tempo.keyTuning + step); };
        button.setBounds (step < 0 ? margin : right, 82, half, 24);
    }
}

void DeckKeyPanel::tune (double semitones)
{
    engine.transport.setKeyTuning (deckIndex, std::round (semitones));
    pollCalm();
}

void DeckKeyPanel::pollCalm()
{
    ControlPanel::pollCalm();
    const auto semitones = engine.decks.deck (deckIndex)->tempo.keyTuning.get();
    const auto next = juce::String::formatted ("%+.2f", std::abs (semitones) < 0.005 ? 0.0 : semitones);
    if (next == shown)
        return;
    shown = next;
    repaint (tuningArea);
}

void DeckKeyPanel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::value (g, shown, tuningArea, juce::Justification::centred, SMLookAndFeel::titleSize);
}

DeckGridPanel::DeckGridPanel (CPlatterdex& e, int deck)
    : ControlPanel (e, Pace::calm),
      deckIndex (deck),
      fixed (addButton ("_gridModeButton", "FIXED", { margin, 112, width, 24 },
                        "A grid of equal beats, or the beats as they were found",
                        [this] { engine.grids.toggleGridMode (deckIndex); }))
{
    addControls (gridTable, deck);
    addButton ("_halveTempoButton", "/2", { margin, 34, half, 24 }, "Halves the track's tempo",
               [this] { engine.grids.halveTempo (deckIndex); });
    addButton ("_doubleTempoButton", "x2", { right, 34, half, 24 }, "Doubles the track's tempo",
               [this] { engine.grids.doubleTempo (deckIndex); });
    addButton ("_tapButton", "TAP", { margin, 60, width, 24 },
               "Tap the beat: from the second tap on it sets the tempo",
               [this] { engine.grids.tapTempo (deckIndex); });
    addButton ("_gridBackButton", "<", { margin, 86, 24, 24 }, "Moves a fixed grid back a little",
               [this] { engine.grids.moveGrid (deckIndex, -1); });
    addButton ("_gridOnButton", ">", { 72, 86, 24, 24 }, "Moves a fixed grid on a little",
               [this] { engine.grids.moveGrid (deckIndex, 1); });
    addLabel ("MOVE", { 28, 86, 44, 24 });
    addLabel ("TRACK BPM", { margin, 0, width, 12 });
}

PXTextButton& DeckGridPanel::addButton (const char* name, const char* text, juce::Rectangle<int> area,
                                        const char* tip, std::function<void()> act)
{
    auto& button = own (std::make_unique<PXTextButton> (text));
    button.setComponentID (name);
    button.setTooltip (tip);
    button.setTriggeredOnMouseDown (true);
    button.onClick = [this, act]
    {
        act();
        pollCalm();
    };
    button.setBounds (area);
    return button;
}

void DeckGridPanel::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
        EditMenu::show (engine, deckIndex, *this);
}

void DeckGridPanel::pollCalm()
{
    ControlPanel::pollCalm();
    const auto& deck = *engine.decks.deck (deckIndex);
    fixed.setToggleState (deck.marks.fixedGrid != 0, juce::dontSendNotification);
    const auto next = deck.track.numBeats > 0 || deck.marks.fixedGrid != 0
                          ? juce::String (deck.marks.bpm.get(), 2)
                          : PanelPaint::dash();
    if (next == tempo)
        return;
    tempo = next;
    repaint();
}

void DeckGridPanel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::value (g, tempo, { margin, 12, width, 20 }, juce::Justification::centred,
                       SMLookAndFeel::titleSize);
}
