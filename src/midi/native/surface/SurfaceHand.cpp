#include "midi/native/surface/SurfaceHand.h"

#include "engine/CommandTable.h"
#include "midi/control/MidiControl.h"
#include "midi/native/surface/Surface.h"
#include "midi/native/table/FunctionNumbers.h"

#include <cmath>

namespace
{
/** The way that one step of an endless knob moves a value, and a pitch. */
constexpr double knobStep = 0.05, pitchStep = 0.0005;

/** More steps of one message than a knob makes are a turn of the hand, not a wish for the end of the scale. */
constexpr double mostKnobSteps = 4.0, mostListSteps = 16.0;

constexpr double semitone = 1.0 / 24.0;
constexpr double effectChoices = 9.0; ///< between the first and the last of ten

/** Seconds of the track for a unit of a turn in search mode. */
constexpr double searchSeconds = 0.1;
}

SurfaceHand::SurfaceHand (MidiControl& c, const Model& m, SurfaceState& s,
                          std::array<PitchPickup, 4>& p) noexcept
    : control (c),
      engine (c.engine),
      model (m),
      state (s),
      pickups (p)
{
}

void SurfaceHand::act (const Function& function, int deck, Decks side, const ControlValue& value)
{
    const auto act = rowOf (function.id).act;
    const auto number = commandOf (function, deck);
    const auto isPress = !value.isRelative && value.isPressed;
    if (!value.isRelative)
        state.held[static_cast<size_t> (function.id)][static_cast<size_t> (deck)] = value.isPressed ? 1 : 0;
    switch (act)
    {
    case Act::command:
        command (function, deck, value);
        break;
    case Act::reverse:
        engine.transport.setReverse (deck, value.isPressed);
        break;
    case Act::rollBeats:
        rollOfSize (deck, function.which, value.isPressed);
        break;
    case Act::jog:
    case Act::jogBend:
    case Act::jogScratch:
    case Act::jogSearch:
        turnJog (act, deck, value.steps);
        break;
    case Act::touch:
        if (!value.isPressed || !model.jog.touchNeedsScratchMode
            || state.scratchMode[static_cast<size_t> (deck)] != 0)
            engine.setParameter (number, value.isPressed ? 1.0f : 0.0f);
        break;
    case Act::shift:
        state.shift[side == Decks::listed ? static_cast<size_t> (deck) : SurfaceState::wholeSurface] =
            value.isPressed ? 1 : 0;
        break;
    case Act::shown:
        break;
    default:
        if (isPress || value.steps > 0.0)
            change (function, deck, side);
        break;
    }
}

void SurfaceHand::change (const Function& function, int deck, Decks side)
{
    const auto flip = [] (Relaxed<uint8_t>& flag) { flag = flag == 0 ? 1 : 0; };
    const auto number = commandOf (function, deck);
    const auto d = static_cast<size_t> (deck);
    auto& whole = state.mode[SurfaceState::wholeSurface];
    const auto set = [&] (double value)
    { engine.setParameter (number, static_cast<float> (juce::jlimit (0.0, 1.0, value))); };
    const double reading = number > 0 ? engine.controlValue (number) : 0.0;
    switch (rowOf (function.id).act)
    {
    case Act::centre:
        set (0.5);
        break;
    case Act::fullOrNone:
        set (reading > 0.5 ? 0.0 : 1.0);
        break;
    case Act::nextOfTen:
        set (std::fmod (std::round (reading * effectChoices) + 1.0, effectChoices + 1.0) / effectChoices);
        break;
    case Act::stepDown:
        set (reading - semitone);
        break;
    case Act::stepUp:
        set (reading + semitone);
        break;
    case Act::storeCue:
        engine.transport.setCue (deck, function.id == FunctionId::setCue
                                           ? engine.decks.deck (deck)->play.currentCue.get()
                                           : function.which);
        break;
    case Act::stop:
        if (engine.decks.deck (deck)->play.on != 0)
            engine.transport.playPause (deck);
        break;
    case Act::loopBeats:
        loopOfSize (deck, function.which);
        break;
    case Act::tap:
        engine.grids.tapTempo (deck);
        break;
    case Act::timecode:
        engine.timecodes[d].setMode (engine.timecodes[d].mode() == TimecodeDeck::Mode::internal
                                         ? TimecodeDeck::Mode::relative
                                         : TimecodeDeck::Mode::internal);
        break;
    case Act::timecodeMode:
        engine.timecodes[d].setMode (engine.timecodes[d].mode() == TimecodeDeck::Mode::absolute
                                         ? TimecodeDeck::Mode::relative
                                         : TimecodeDeck::Mode::absolute);
        break;
    case Act::scratchMode:
        flip (state.scratchMode[d]);
        break;
    case Act::searchMode:
        flip (state.searchMode[d]);
        break;
    case Act::deckMode:
        state.mode[d] = function.which;
        break;
    case Act::deckModeFlip:
        flip (state.mode[d]);
        break;
    case Act::surfaceMode:
        whole = function.which;
        break;
    case Act::surfaceModeFlip:
        flip (whole);
        break;
    case Act::decksShown:
    {
        auto& four = engine.settings.editor[EditorPreference::fourDeckMode];
        four = four == 0 ? 1 : 0;
        break;
    }
    case Act::selectDeck:
        if (side != Decks::listed)
            state.deckOfSide[static_cast<size_t> (side) - 1] = function.which;
        break;
    case Act::nextDeck:
        state.selectNextDeck (side);
        break;
    default:
        break;
    }
    if (const auto layers = model.layerMessages; !layers.empty())
        Surface::send (control, layers.subspan (std::min<size_t> (whole, layers.size() - 1), 1));
}

void SurfaceHand::command (const Function& function, int deck, const ControlValue& value)
{
    const auto number = commandOf (function, deck);
    switch (CommandTable::find (number)->kind)
    {
    case CommandKind::trigger:
        if (value.isPressed)
            engine.setParameter (number, 1.0f);
        break;
    case CommandKind::state:
        engine.setParameter (number, value.isPressed ? 1.0f : 0.0f);
        break;
    case CommandKind::value:
        if (function.id == FunctionId::pitch)
            movePitch (number, deck, value);
        else
            moveValue (number, deck, value);
        break;
    case CommandKind::relative:
        stepCommand (number, value.steps);
        break;
    case CommandKind::meter:
        break;
    }
}

void SurfaceHand::moveValue (int number, int, const ControlValue& value)
{
    const auto steps = juce::jlimit (-mostKnobSteps, mostKnobSteps, value.steps);
    const auto place = value.isRelative ? engine.controlValue (number) + steps * knobStep : value.position;
    engine.setParameter (number, static_cast<float> (juce::jlimit (0.0, 1.0, place)));
}

bool SurfaceHand::ownsPitch (int deck) const
{
    const auto d = static_cast<size_t> (deck);
    return engine.settings.deckSetup[d].sync != 0
           || engine.timecodes[d].mode() != TimecodeDeck::Mode::internal;
}

void SurfaceHand::movePitch (int number, int deck, const ControlValue& value)
{
    if (ownsPitch (deck))
        return;
    // The command is written from the top of the slider down: a turn to the right is faster, and a smaller value.
    auto written = engine.controlValue (number) - value.steps * pitchStep;
    if (!value.isRelative)
    {
        if (!pickups[static_cast<size_t> (deck)].follows (1.0 - value.position, engine.getParameter (number),
                                                          engine.decks.clock(), value.isCoarse))
            return;
        written = value.position;
    }
    engine.setParameter (number, static_cast<float> (juce::jlimit (0.0, 1.0, written)));
}

void SurfaceHand::stepCommand (int number, double steps)
{
    const auto count = static_cast<int> (std::min (std::abs (steps), mostListSteps));
    for (int i = 0; i < count; ++i)
        engine.setParameter (number, steps > 0.0 ? CommandCall::stepUp : CommandCall::stepDown);
}

void SurfaceHand::loopOfSize (int deck, int size)
{
    const auto* player = engine.decks.deck (deck);
    const auto isOn = player->loops.mode == beatLoop && player->loops.rolling == 0;
    const auto isThisOne = isOn && player->loopSizes.loop == size;
    engine.loops.setSize (deck, size);
    if (!isOn || isThisOne)
        engine.loops.toggleLoop (deck);
}

void SurfaceHand::rollOfSize (int deck, int size, bool pressed)
{
    const auto isRolling = engine.decks.deck (deck)->loops.rolling != 0;
    if (pressed)
        engine.loops.setSize (deck, size);
    if (pressed != isRolling)
        engine.loops.toggleLeap (deck);
}

void SurfaceHand::turnJog (Act act, int deck, double steps)
{
    const auto& jog = model.jog;
    const auto d = static_cast<size_t> (deck);
    const auto* player = engine.decks.deck (deck);
    const auto turn = (jog.law == Jog::Law::steps ? steps : steps / 127.0) / jog.stepsPerUnit;
    const auto bend = (jog.law == Jog::Law::power ? std::exp2 (turn) - 1.0 : turn) * jog.bend;
    if (act == Act::jogSearch || (act == Act::jog && state.searchMode[d] != 0))
    {
        const auto units = steps / jog.stepsPerUnit;
        engine.transport.seekFrames (deck, player->heardPosition()
                                               + units * searchSeconds * player->track.sampleRate);
        return;
    }
    const auto bends =
        act == Act::jogBend || jog.feelsHand || (player->play.on != 0 && state.scratchMode[d] == 0);
    if (act != Act::jogScratch && bends)
        engine.transport.bendJog (deck, 1.0, -bend, turn * jog.scratch);
    else
        engine.transport.spinJog (deck, turn * jog.scratch);
}
