#include "ui/decks/DeckPanels.h"

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/decks/BeatStepField.h"
#include "ui/decks/EditMenu.h"
#include "ui/panel/PanelPaint.h"
#include "ui/widgets/PXTextButton.h"
#include "ui/widgets/ValueWords.h"

namespace
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;

constexpr int margin = 4, width = 92, half = 44, right = 52;

// clang-format off
constexpr PlacedControl loopTable[] {
    { { Kind::text, "_loopButton",         "LOOP_",               N_ ("LOOP"), N_ ("Beat loop of the size below on or off"), Lit::deck }, { margin,   0, half, 24 } },
    { { Kind::text, "_leapButton",         "LEAP_",               N_ ("LEAP"), N_ ("Rolling loop: when it ends, the track continues where it would have been without it"), Lit::deck }, { right,    0, half, 24 } },
    { { Kind::sign, "_loopHalfButton",     "LOOP_HALF_",          "left_24", N_ ("Halves the loop size") }, { margin,  38, 24, 24 } },
    { { Kind::sign, "_loopDoubleButton",   "LOOP_DOUBLE_",        "right_24", N_ ("Doubles the loop size") }, { 72,      38, 24, 24 } },
    { { Kind::sign, "_loopBackwardButton", "LOOP_MOVE_BACKWARD_", "left_24", N_ ("Moves the loop back by the beats shown; jumps back if there is no loop") }, { margin,  76, 24, 24 } },
    { { Kind::sign, "_loopForwardButton",  "LOOP_MOVE_FORWARD_",  "right_24", N_ ("Moves the loop forward by the beats shown; jumps forward if there is no loop") }, { 72,      76, 24, 24 } },
    { { Kind::text, "_loopInButton",       "LOOP_IN_",            N_ ("IN"), N_ ("Loop in: sets the start of a manual loop") }, { margin, 110, half, 24 } },
    { { Kind::text, "_loopOutButton",      "LOOP_OUT_",           N_ ("OUT"), N_ ("Loop out: sets the end of the manual loop and starts it; leaves a loop that is running") }, { right,  110, half, 24 } },
    { { Kind::text, "_reloopButton",       "RELOOP_",             N_ ("RELOOP"), N_ ("Resumes the manual loop") }, { margin, 138, width, 24 } },
};

constexpr PlacedControl cueTable[] {
    { { Kind::text, "_rewindButton",     "REWIND_",      N_ ("REW"), N_ ("Returns to the start of the track") }, { margin, 138, half, 24 } },
    { { Kind::text, "_startPointButton", "START_POINT_", N_ ("START"), N_ ("Start point: playback never goes before it"), Lit::deck }, { right,  138, half, 24 } },
};

constexpr PlacedControl keyTable[] {
    { { Kind::knob, "_keyTuningSlider", "KEY_TUNING_", "", N_ ("Key shift, up to an octave up or down"), Lit::plain, "", true, ControlSpec::Words::semitones }, { 30,       4, 40, 40 } },
    { { Kind::text, "_keyResetButton",  "KEY_RESET_",  N_ ("RESET"), N_ ("Resets the key to the track's own"), Lit::never }, { margin, 110, width, 24 } },
    { { Kind::text, "_keyLockButton",   "KEY_LOCK_",   N_ ("LOCK"), N_ ("Key lock: tempo changes leave the key alone") }, { margin, 138, width, 24 } },
};

constexpr PlacedControl gridTable[] {
    { { Kind::text, "_downbeatButton", "DOWNBEAT_", N_ ("DOWNBEAT"), N_ ("Makes the nearest beat the first of a bar. Right click on the panel to undo."), Lit::never }, { margin, 138, width, 24 } },
};
// clang-format on

const juce::Rectangle<int> loopSizeArea { 32, 38, 36, 24 }, moveSizeArea { 32, 76, 36, 24 };
const juce::Rectangle<int> tuningArea { margin, 48, width, 20 }, trackTempoArea { margin, 12, width, 20 };
constexpr int hotCueHeight = 32, hotCueStep = 34;
}

DeckLoopPanel::DeckLoopPanel (CPlatterdex& e, int deck) : ControlPanel (e)
{
    addControls (loopTable, deck);
    addLabel (tr ("SIZE"), { margin, 26, width, 12 });
    addLabel (tr ("MOVE"), { margin, 64, width, 12 });
    for (const auto& [name, constant, area, tip] :
         { std::tuple { "_loopSizeField", "LOOP_SIZE_", loopSizeArea,
                        N_ ("Size of the loop in beats. Wheel to change, click for a list.") },
           std::tuple { "_loopMoveSizeField", "LOOP_MOVE_SIZE_", moveSizeArea,
                        N_ ("Size of a move in beats. Wheel to change, click for a list.") } })
    {
        auto& field = own (std::make_unique<BeatStepField> (name));
        field.setTooltip (tr (tip));
        field.bind (e, CommandTable::numberOf (constant, deck));
        field.setBounds (area);
        // At once: step by step a loop that runs would pass through all sizes between.
        field.onChoose = [&e, deck, isLoop = std::string_view (constant) == "LOOP_SIZE_"] (int size)
        { isLoop ? e.loops.setSize (deck, size) : e.loops.setMoveSize (deck, size); };
    }
}

DeckCuePanel::DeckCuePanel (CPlatterdex& e, int deck) : ControlPanel (e), watch (e, deck)
{
    for (int slot = 0; slot < hotCueCount; ++slot)
    {
        const auto number = std::to_string (slot + 1);
        const auto set = "HOT_CUE_" + number + "_", remove = "DELETE_HOT_CUE_" + number + "_";
        const auto tip = tr ("Hot cue %1: sets it, or jumps to it. Right click to delete.", number);
        auto* made =
            addControl ({ Kind::text, "_hotCueButton", set.c_str(), number.c_str(), tip.toRawUTF8(),
                          Lit::deck, remove.c_str() },
                        deck, { slot % 2 == 0 ? margin : right, slot / 2 * hotCueStep, half, hotCueHeight });
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
    // The slot that Cue writes and goes to has a frame.
    if (cueSlot >= 0 && cueSlot < hotCueCount && buttons[static_cast<size_t> (cueSlot)] != nullptr)
    {
        g.setColour (palette::value);
        g.drawRect (buttons[static_cast<size_t> (cueSlot)]->getBounds(), 1);
    }
}

void DeckCuePanel::pollMoving()
{
    pollControls();
    if (std::exchange (cueSlot, watch->places.currentCue) != watch->places.currentCue)
        repaint();
}

void DeckCuePanel::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
        EditMenu::show (engine, watch, *this);
}

DeckKeyPanel::DeckKeyPanel (CPlatterdex& e, int deck) : ControlPanel (e), watch (e, deck)
{
    addControls (keyTable, deck);
    for (const auto step : { -1, 1 })
    {
        auto& button = own (std::make_unique<PXTextButton> (step < 0 ? "-1" : "+1"));
        button.setComponentID ("_keyStepButton");
        button.setTooltip (step < 0 ? tr ("One semitone down") : tr ("One semitone up"));
        button.setTriggeredOnMouseDown (true);
        button.onClick = [this, step] { tune (watch.look().semitones + step); };
        button.setBounds (step < 0 ? margin : right, 82, half, 24);
    }
}

void DeckKeyPanel::tune (double semitones)
{
    engine.transport.setKeyTuning (watch.deck(), std::round (semitones));
    refresh();
}

void DeckKeyPanel::pollMoving()
{
    pollControls();
    const auto semitones = watch->semitones;
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
    : ControlPanel (e),
      watch (e, deck),
      fixed (addButton ("_gridModeButton", tr ("FIXED"), { margin, 112, half, 24 },
                        tr ("Fixed grid: equal beats in place of the detected ones"),
                        [this] { engine.grids.toggleGridMode (watch.deck()); }))
{
    addControls (gridTable, deck);
    addButton ("_halveTempoButton", "/2", { margin, 34, half, 24 }, tr ("Halves the BPM of the track"),
               [this] { engine.grids.halveTempo (watch.deck()); });
    addButton ("_doubleTempoButton", "x2", { right, 34, half, 24 }, tr ("Doubles the BPM of the track"),
               [this] { engine.grids.doubleTempo (watch.deck()); });
    addButton ("_tapButton", tr ("TAP"), { margin, 60, half, 24 },
               tr ("Tap along with the beat: from the second tap on it sets the BPM"),
               [this] { engine.grids.tapTempo (watch.deck()); });
    addButton ("_enterTempoButton", tr ("SET"), { right, 60, half, 24 }, tr ("Enter the BPM of the track"),
               [this] { enterTempo(); });
    addButton ("_syncToAnalysisButton", tr ("SYNC"), { right, 112, half, 24 },
               tr ("Sync to analysis: measures the BPM again, near the one shown"),
               [this] { engine.grids.analyseAgain (watch.deck()); });
    for (const auto direction : { -1, 1 })
        moves.push_back (&addButton (direction < 0 ? "_gridBackButton" : "_gridOnButton",
                                     direction < 0 ? "<" : ">", { direction < 0 ? margin : 72, 86, 24, 24 },
                                     direction < 0 ? tr ("Moves the fixed grid a little earlier")
                                                   : tr ("Moves the fixed grid a little later"),
                                     [this, direction] { engine.grids.moveGrid (watch.deck(), direction); }));
    addLabel (tr ("MOVE"), { 28, 86, 44, 24 });
    addLabel (tr ("TRACK BPM"), { margin, 0, width, 12 });
}

PXTextButton& DeckGridPanel::addButton (const char* name, const juce::String& text, juce::Rectangle<int> area,
                                        const juce::String& tip, std::function<void()> act)
{
    auto& button = own (std::make_unique<PXTextButton> (text));
    button.setComponentID (name);
    button.setTooltip (tip);
    button.setTriggeredOnMouseDown (true);
    button.onClick = [this, act]
    {
        act();
        refresh();
    };
    button.setBounds (area);
    return button;
}

void DeckGridPanel::enterTempo()
{
    if (watch->loadedFrames < 1)
        return;
    const auto words = ValueWords::tempo();
    entry = ValueEntry::open (*this, trackTempoArea, words.text (watch->grid.bpm),
                              [this, words] (const juce::String& typed)
                              {
                                  const auto bpm = words.value (typed);
                                  if (bpm.has_value())
                                      engine.grids.setTempo (watch.deck(), *bpm);
                                  refresh();
                                  return bpm.has_value();
                              });
}

void DeckGridPanel::mouseDown (const juce::MouseEvent& event)
{
    if (event.mods.isPopupMenu())
        EditMenu::show (engine, watch, *this);
}

void DeckGridPanel::pollMoving()
{
    pollControls();
    fixed.setToggleState (watch->grid.fixed, juce::dontSendNotification);
    for (auto* button : moves)
        button->setEnabled (watch->grid.fixed); // the beats of a table stay where they were found
    const auto next = PanelPaint::bpm (watch->grid, watch->grid.bpm);
    if (next == tempo)
        return;
    tempo = next;
    repaint();
}

void DeckGridPanel::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::value (g, tempo, trackTempoArea, juce::Justification::centred, SMLookAndFeel::titleSize);
}
