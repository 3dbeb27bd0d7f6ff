#include "engine/CommandTable.h"

#include "engine/CPlatterdex.h"
#include "engine/UnbuiltCommands.h"
#include "mixer/AutoCrossfader.h"
#include "mixer/ChannelStrip.h"
#include "fx/BeatSteps.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

namespace CommandTable
{
namespace
{
const DeckPlayer* deckOf (CPlatterdex& engine, int deck)
{
    return engine.decks.deck (deck);
}

DeckSetup& setupOf (CPlatterdex& engine, int deck)
{
    return engine.settings.deckSetup[static_cast<size_t> (deck)];
}

void post (CPlatterdex& engine, int number)
{
    engine.listeners.post (EngineEvent::browserCommand, number);
}

/** The write of a browser's command: the editor answers. */
template <int number>
void browse (CPlatterdex& engine, const CommandCall& call)
{
    post (engine, number + call.deck);
}

/** The same for a knob of steps: +1 is the command `down`, -1 is `up`. */
template <int up, int down>
void browseStep (CPlatterdex& engine, const CommandCall& call)
{
    post (engine, call.step() > 0 ? down : up);
}

double nothing (CPlatterdex&, int, int)
{
    return 0.0;
}

double readPlaying (CPlatterdex& engine, int deck, int)
{
    return deckOf (engine, deck)->playState != 0;
}

double readSync (CPlatterdex& engine, int deck, int)
{
    return setupOf (engine, deck).sync != 0;
}

double readPitch (CPlatterdex& engine, int deck, int)
{
    return deckOf (engine, deck)->pitch;
}

double readStoppedAtCue (CPlatterdex& engine, int deck, int)
{
    return Transport::isStoppedAtCue (*deckOf (engine, deck));
}

double readCueSet (CPlatterdex& engine, int deck, int slot)
{
    return deckOf (engine, deck)->cues[static_cast<size_t> (slot)] > emptyCue;
}

double readCueEmpty (CPlatterdex& engine, int deck, int slot)
{
    return !(deckOf (engine, deck)->cues[static_cast<size_t> (slot)] > emptyCue);
}

void toggleSnap (CPlatterdex& engine, const CommandCall&)
{
    const CallbackLock lock (engine.getCallbackLock(), "snap");
    const auto next = static_cast<int8_t> (engine.settings.deckSetup[0].snap == 0);
    for (auto& setup : engine.settings.deckSetup)
        setup.snap = setup.quantise = next;
}

void toggleRecorder (CPlatterdex& engine, const CommandCall&)
{
    engine.toggleRecorder();
}

// The mixer: knobs are single stores, flags are turned under the callback lock.

double limited (const CommandCall& call)
{
    return juce::jlimit (0.0, 1.0, static_cast<double> (call.value));
}

/** What a field of a deck, of its setup or of the settings belongs to. */
DeckPlayer& owner (CPlatterdex& engine, int deck, const DeckPlayer*)
{
    return *engine.decks.deck (deck);
}

DeckSetup& owner (CPlatterdex& engine, int deck, const DeckSetup*)
{
    return setupOf (engine, deck);
}

EngineSettings& owner (CPlatterdex& engine, int, const EngineSettings*)
{
    return engine.settings;
}

template <typename Owner, typename Value>
Relaxed<Value>& fieldOf (CPlatterdex& engine, int deck, Relaxed<Value> Owner::*field)
{
    return owner (engine, deck, static_cast<const Owner*> (nullptr)).*field;
}

template <auto field>
double readField (CPlatterdex& engine, int deck, int)
{
    return fieldOf (engine, deck, field).get();
}

template <auto field>
void setLevel (CPlatterdex& engine, const CommandCall& call)
{
    fieldOf (engine, call.deck, field) = limited (call);
}

template <auto field>
void centre (CPlatterdex& engine, const CommandCall& call)
{
    fieldOf (engine, call.deck, field) = 0.5;
}

template <auto field>
double readFlag (CPlatterdex& engine, int deck, int)
{
    return fieldOf (engine, deck, field) != 0;
}

template <auto field>
void toggle (CPlatterdex& engine, const CommandCall& call)
{
    const CallbackLock lock (engine.getCallbackLock(), "mixer flag");
    auto& flag = fieldOf (engine, call.deck, field);
    flag = static_cast<int8_t> (flag == 0);
}

template <int8_t side>
void assign (CPlatterdex& engine, const CommandCall& call)
{
    setupOf (engine, call.deck).crossfaderSide = side;
}

template <int8_t side>
double readSide (CPlatterdex& engine, int deck, int)
{
    return (setupOf (engine, deck).crossfaderSide != 0) == (side != 0);
}

void moveCrossfader (CPlatterdex& engine, const CommandCall& call)
{
    const CallbackLock lock (engine.getCallbackLock(), "crossfader");
    engine.settings.crossfader = limited (call);
    engine.settings.autoFadeState = AutoCrossfader::idle;
}

template <AutoCrossfader::State side>
void startFade (CPlatterdex& engine, const CommandCall&)
{
    engine.settings.autoFadeState = side;
}

template <AutoCrossfader::State side>
double isFading (CPlatterdex& engine, int, int)
{
    return engine.settings.autoFadeState == side;
}

template <ChannelStrip::MixOverride wanted>
void overrideMix (CPlatterdex& engine, const CommandCall& call)
{
    const CallbackLock lock (engine.getCallbackLock(), "punch or cut");
    auto& current = engine.decks.deck (call.deck)->mixOverride;
    current = static_cast<int8_t> (current == wanted ? 0 : wanted);
}

template <ChannelStrip::MixOverride wanted>
double readOverride (CPlatterdex& engine, int deck, int)
{
    return deckOf (engine, deck)->mixOverride == wanted;
=======
EffectRack& rackOf (CPlatterdex& engine, int deck)
{
    return engine.effectRacks[static_cast<size_t> (deck)];
}

/** Does something to a deck's effect rack between two blocks. */
template <typename Change>
void changeRack (CPlatterdex& engine, int deck, Change&& change)
{
    const CallbackLock lock (engine.getCallbackLock(), "effects");
    change (rackOf (engine, deck));
}

template <BandSplit::Band band>
void toggleBand (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck, [] (EffectRack& rack) { rack.setBand (band, !rack.isBandOn (band)); });
}

template <BandSplit::Band band>
double readBand (CPlatterdex& engine, int deck, int)
{
    return rackOf (engine, deck).isBandOn (band);
}

template <FxParameter parameter>
double readSlot (CPlatterdex& engine, int deck, int slot)
{
    return rackOf (engine, deck).slot (slot).parameter (parameter);
}

template <FxParameter parameter>
std::string slotText (CPlatterdex& engine, int deck, int slot)
{
    return rackOf (engine, deck).fxParameterText (slot, parameter);
}

void setDryWet (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck, [&call] (EffectRack& rack) { rack.setDryWet (call.value); });
}

void resetDryWet (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck, [] (EffectRack& rack) { rack.setDryWet (0.0); });
}

void toggleEffect (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck,
                [slot = call.which] (EffectRack& rack)
                { rack.setFxParameter (slot, FxParameter::bypass, rack.slot (slot).isOn() ? 1.0 : 0.0); });
}

// clang-format off
constexpr CommandFamily builtFamilies[] {
    { 1, 1, 0, 4, 1, "Play/Pause {d}", "PLAY_PAUSE_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.playPause (c.deck); }, readPlaying, 0, "play or stop", "1 while playing" },
    { 5, 1, 0, 4, 1, "Play Synchronized {d}", "PLAY_SYNCHRONIZED_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.playSynchronized (c.deck); }, readPlaying, 0, "starts in tempo and phase", "1 while playing" },
    { 9, 1, 0, 4, 1, "Set Master {d}", "MASTER_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setMaster (c.deck); },
      [] (CPlatterdex& e, int deck, int) -> double { return e.decks.isStandalone != 0 && e.settings.masterDeck == deck; }, 0, "the deck becomes master", "1 if standalone and this is the master" },
    { 13, 1, 0, 4, 1, "Sync {d}", "SYNC_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.toggleSync (c.deck, true); }, readSync, 0, "matches tempo and phase once", "the flag" },
    { 17, 1, 0, 4, 1, "Sync Lock {d}", "SYNC_LOCK_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.toggleSync (c.deck, false); }, readSync, 0, "follows the reference until toggled off", "the flag" },
    { 21, 1, 0, 4, 1, "Pitch {d}", "PITCH_{d}", K::value, S::pitch,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setPitch (c.deck, 1.0 - c.value); }, readPitch, 1, "the fader, reading from high to low", "the pitch, not turned round" },
    { 25, 1, 0, 4, 1, "Pitch Reset {d}", "PITCH_RESET_{d}", K::trigger, S::resetToCentre,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setPitch (c.deck, 0.5); }, readPitch, 1, "pitch to its centre", "the pitch" },
    { 29, 1, 0, 4, 1, "Pitch Bend Nudge (-4.00%) {d}", "PITCH_BEND_NUDGE_MINUS_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setNudge (c.deck, c.isPressed() ? -1 : 0); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->nudge < 0; }, 0, "slower while held", "1 while held" },
    { 33, 1, 0, 4, 1, "Pitch Bend Nudge (+4.00%) {d}", "PITCH_BEND_NUDGE_PLUS_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setNudge (c.deck, c.isPressed() ? 1 : 0); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->nudge > 0; }, 0, "faster while held", "1 while held" },
    { 37, 1, 0, 4, 1, "Key Tuning {d}", "KEY_TUNING_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setKeyTuning (c.deck, (c.value - 0.5) * 24.0); },
      [] (CPlatterdex& e, int deck, int) { return juce::jlimit (0.0, 1.0, deckOf (e, deck)->keyTuning / 24.0 + 0.5); }, 0, "the key, 0 to 1 for -12 to 12 semitones", "the value" },
    { 41, 1, 0, 4, 1, "Key Lock {d}", "KEY_LOCK_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setKeyLock (c.deck, deckOf (e, c.deck)->keyLock == 0); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->keyLock != 0; }, 0, "toggles", "the flag" },
    { 45, 1, 0, 4, 1, "Cue {d}", "CUE_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.cue (c.deck, true); }, readStoppedAtCue, 0, "presses Cue, never releases it", "1 if stopped at a cue" },
    { 49, 8, 4, 4, 1, "Set Hot Cue #{n} {d}", "HOT_CUE_{n}_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.jumpToCue (c.deck, c.which); }, readCueSet, 0, "sets an empty slot, else jumps to it", "1 if set" },
    { 81, 8, 4, 4, 1, "Delete Hot Cue #{n} {d}", "DELETE_HOT_CUE_{n}_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.deleteCue (c.deck, c.which); }, readCueEmpty, 0, "empties the slot", "1 if empty" },
    { 189, 1, 0, 4, 1, "Cue/Stutter {d}", "CUE_STUTTER_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.cue (c.deck, c.isPressed()); }, readStoppedAtCue, 0, "presses and releases Cue", "1 if stopped at a cue" },
    { 193, 1, 0, 4, 1, "Rewind {d}", "REWIND_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.rewind (c.deck); }, nothing, 0, "to the track's start", "0" },
    { 197, 1, 0, 4, 1, "Key Reset {d}", "KEY_RESET_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setKeyTuning (c.deck, 0.0); },
      [] (CPlatterdex& e, int deck, int) { return deckOf (e, deck)->keyTuning.get(); }, 0, "key to its own", "the key in semitones" },
    { 201, 1, 0, 4, 1, "Jog {d}", "JOG_{d}", K::value, S::jog,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.bendJog (c.deck, c.value, c.arg1, c.arg2); }, nothing, 0, "a step of the wheel, with bend and scratch scale", "0" },
    { 205, 1, 0, 4, 1, "Jog Scratch On {d}", "JOG_SCRATCH_ON_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.setScratch (c.deck, c.isPressed(), false); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->scratchOn != 0; }, 0, "scratch while held", "1 in scratch" },
    { 209, 1, 0, 4, 1, "Seek {d}", "SEEK_{d}", K::value, S::seek,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.seekNormalised (c.deck, c.value); },
      [] (CPlatterdex& e, int deck, int) { const auto* d = deckOf (e, deck); const double frames = d->loadedFrames; return frames > 0.0 ? d->position / frames : 0.0; }, 0, "the position, 0 to 1 of the track", "the position" },
    { 213, 1, 0, 4, 1, "Gain {d}", "GAIN_{d}", K::value, S::continuous, setLevel<&DeckPlayer::gain>, readField<&DeckPlayer::gain>, 0, "the gain, 0 to 1, 0.5 unity", "the value" },
    { 217, 1, 0, 4, 1, "Gain Reset {d}", "GAIN_RESET_{d}", K::trigger, S::trigger, centre<&DeckPlayer::gain>, readField<&DeckPlayer::gain>, 0, "gain to 0.5", "the gain" },
    { 221, 1, 0, 4, 1, "EQ High {d}", "EQ_HIGH_{d}", K::value, S::continuous, setLevel<&DeckPlayer::eqHigh>, readField<&DeckPlayer::eqHigh>, 0.5, "the band, 0 to 1, 0.5 flat", "the value" },
    { 225, 1, 0, 4, 1, "EQ High Reset {d}", "EQ_HIGH_RESET_{d}", K::trigger, S::trigger, centre<&DeckPlayer::eqHigh>, readField<&DeckPlayer::eqHigh>, 0.5, "the band to 0.5", "the value" },
    { 229, 1, 0, 4, 1, "EQ High Kill {d}", "EQ_HIGH_KILL_{d}", K::trigger, S::trigger, toggle<&DeckPlayer::killHigh>, readFlag<&DeckPlayer::killHigh>, 0, "toggles", "the flag" },
    { 233, 1, 0, 4, 1, "EQ Mid {d}", "EQ_MID_{d}", K::value, S::continuous, setLevel<&DeckPlayer::eqMid>, readField<&DeckPlayer::eqMid>, 0.5, "the band, 0 to 1, 0.5 flat", "the value" },
    { 237, 1, 0, 4, 1, "EQ Mid Reset {d}", "EQ_MID_RESET_{d}", K::trigger, S::trigger, centre<&DeckPlayer::eqMid>, readField<&DeckPlayer::eqMid>, 0.5, "the band to 0.5", "the value" },
    { 241, 1, 0, 4, 1, "EQ Mid Kill {d}", "EQ_MID_KILL_{d}", K::trigger, S::trigger, toggle<&DeckPlayer::killMid>, readFlag<&DeckPlayer::killMid>, 0, "toggles", "the flag" },
    { 245, 1, 0, 4, 1, "EQ Low {d}", "EQ_LOW_{d}", K::value, S::continuous, setLevel<&DeckPlayer::eqLow>, readField<&DeckPlayer::eqLow>, 0.5, "the band, 0 to 1, 0.5 flat", "the value" },
    { 249, 1, 0, 4, 1, "EQ Low Reset {d}", "EQ_LOW_RESET_{d}", K::trigger, S::trigger, centre<&DeckPlayer::eqLow>, readField<&DeckPlayer::eqLow>, 0.5, "the band to 0.5", "the value" },
    { 253, 1, 0, 4, 1, "EQ Low Kill {d}", "EQ_LOW_KILL_{d}", K::trigger, S::trigger, toggle<&DeckPlayer::killLow>, readFlag<&DeckPlayer::killLow>, 0, "toggles", "the flag" },
    { 257, 1, 0, 4, 1, "Filter {d}", "FILTER_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.setFilter (c.value); }); },
      [] (CPlatterdex& e, int deck, int) { return rackOf (e, deck).filterValue(); }, 0.5, "low-pass below 0.5, high-pass above", "the value" },
    { 261, 1, 0, 4, 1, "Volume {d}", "VOLUME_{d}", K::value, S::continuous, setLevel<&DeckPlayer::volume>, readField<&DeckPlayer::volume>, 0, "the fader, 0 to 1", "the value" },
    { 265, 1, 0, 4, 1, "PFL {d}", "PFL_{d}", K::trigger, S::trigger, toggle<&DeckSetup::pfl>, readFlag<&DeckSetup::pfl>, 0, "toggles", "the flag" },
    { 269, 1, 0, 4, 1, "Crossfader Assign Left {d}", "CROSSFADER_ASSIGN_LEFT_{d}", K::trigger, S::trigger, assign<0>, readSide<0>, 0, "the deck to the left side", "1 if left" },
    { 273, 1, 0, 4, 1, "Crossfader Assign Right {d}", "CROSSFADER_ASSIGN_RIGHT_{d}", K::trigger, S::trigger, assign<1>, readSide<1>, 0, "the deck to the right side", "1 if right" },
    { 277, 1, 0, 1, 0, "Crossfader", "CROSSFADER", K::value, S::continuous, moveCrossfader, readField<&EngineSettings::crossfader>, 0.5, "the position, 0 left to 1 right; stops an automatic fade", "the position" },
    { 278, 1, 0, 1, 0, "Crossfader Curve", "CROSSFADER_CURVE", K::value, S::continuous, setLevel<&EngineSettings::crossfaderCurve>, readField<&EngineSettings::crossfaderCurve>, 0.5, "the curve, 0 to 1", "the curve" },
    { 279, 1, 0, 1, 0, "Auto Crossfader Left", "AUTO_CROSSFADER_LEFT", K::trigger, S::trigger, startFade<AutoCrossfader::toLeft>, isFading<AutoCrossfader::toLeft>, 0, "starts the fade to the left", "1 during it" },
    { 280, 1, 0, 1, 0, "Auto Crossfader Right", "AUTO_CROSSFADER_RIGHT", K::trigger, S::trigger, startFade<AutoCrossfader::toRight>, isFading<AutoCrossfader::toRight>, 0, "starts the fade to the right", "1 during it" },
    { 281, 1, 0, 1, 0, "Monitor Volume", "MONITOR_VOLUME", K::value, S::continuous, setLevel<&EngineSettings::monitorVolume>, readField<&EngineSettings::monitorVolume>, 0, "the volume, 0 to 1", "the value" },
    { 282, 1, 0, 1, 0, "Monitor Mix", "MONITOR_MIX", K::value, S::continuous, setLevel<&EngineSettings::monitorMix>, readField<&EngineSettings::monitorMix>, 0, "0 cue to 1 master", "the value" },
    { 283, 1, 0, 1, 0, "Monitor Phone Split", "MONITOR_PHONE_SPLIT", K::trigger, S::trigger, toggle<&EngineSettings::monitorSplit>, readFlag<&EngineSettings::monitorSplit>, 0, "toggles", "the flag" },
    { 284, 1, 0, 1, 0, "Monitor Overdrive", "MONITOR_OVERDRIVE", K::trigger, S::trigger, toggle<&EngineSettings::monitorOverdrive>, readFlag<&EngineSettings::monitorOverdrive>, 0, "toggles", "the flag" },
    { 285, 1, 0, 4, 1, "Balance {d}", "BALANCE_{d}", K::value, S::continuous, setLevel<&DeckPlayer::balance>, readField<&DeckPlayer::balance>, 0, "0 left to 1 right", "the value" },
    { 289, 1, 0, 4, 1, "Punch {d}", "PUNCH_{d}", K::trigger, S::trigger, overrideMix<ChannelStrip::punch>, readOverride<ChannelStrip::punch>, 0, "full level past the crossfader, or back", "1 if so" },
    { 293, 1, 0, 4, 1, "Cut {d}", "CUT_{d}", K::trigger, S::trigger, overrideMix<ChannelStrip::cut>, readOverride<ChannelStrip::cut>, 0, "cut past the crossfader, or back", "1 if so" },
    { 297, 1, 0, 1, 0, "Master Volume", "MASTER_VOLUME", K::value, S::continuous, setLevel<&EngineSettings::masterVolume>, readField<&EngineSettings::masterVolume>, 0, "the volume, 0 to 1", "the value" },
    { 298, 1, 0, 4, 1, "FX Dry/Wet Group {d}", "FX_DRY_WET_GROUP_{d}", K::value, S::continuous, setDryWet,
      readSlot<FxParameter::dryWet>, 0, "dry 0 to wet 1, of all three effects", "the value",
      [] (CPlatterdex& e, int deck, int) { return FxText::percent (rackOf (e, deck).dryWet()); } },
    { 302, 1, 0, 4, 1, "FX High Band Group {d}", "FX_HIGH_BAND_GROUP_{d}", K::trigger, S::trigger,
      toggleBand<BandSplit::high>, readBand<BandSplit::high>, 0, "toggles", "the flag" },
    { 306, 1, 0, 4, 1, "FX Mid Band Group {d}", "FX_MID_BAND_GROUP_{d}", K::trigger, S::trigger,
      toggleBand<BandSplit::mid>, readBand<BandSplit::mid>, 0, "toggles", "the flag" },
    { 310, 1, 0, 4, 1, "FX Low Band Group {d}", "FX_LOW_BAND_GROUP_{d}", K::trigger, S::trigger,
      toggleBand<BandSplit::low>, readBand<BandSplit::low>, 0, "toggles", "the flag" },
    { 314, 3, 1, 4, 9, "Effect Param {n} Group {d}", "EFFECT_PARAM_{n}_GROUP_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.setFxParameter (c.which, FxParameter::step, c.value); }); },
      readSlot<FxParameter::step>, 0, "time or rate in steps, room of the reverb; of the selected effect", "the value", slotText<FxParameter::step> },
    { 317, 3, 1, 4, 9, "Effect On {n} Group {d}", "EFFECT_ON_{n}_GROUP_{d}", K::trigger, S::trigger, toggleEffect,
      [] (CPlatterdex& e, int deck, int slot) -> double { return rackOf (e, deck).slot (slot).isOn(); }, 0, "toggles", "the flag" },
    { 320, 3, 1, 4, 9, "Effect Select {n} Group {d}", "EFFECT_SELECT_{n}_GROUP_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.selectFx (c.which, c.value); }); },
      [] (CPlatterdex& e, int deck, int slot) { return rackOf (e, deck).slot (slot).selector(); }, 0, "chooses one of ten effects, 0 to 1", "the value",
      [] (CPlatterdex& e, int deck, int slot) { return std::string (FxType::name (rackOf (e, deck).slot (slot).selected())); } },
    { 350, 1, 0, 4, 1, "FX Dry/Wet Reset Group {d}", "FX_DRY_WET_RESET_GROUP_{d}", K::trigger, S::trigger, resetDryWet,
      readSlot<FxParameter::dryWet>, 0, "dry", "the dry/wet value" },
    { 409, 1, 0, 1, 0, "Playlist Up", "PLAYLIST_UP", K::trigger, S::trigger, browse<409>, nothing, 0, "posted to the editor", "0" },
    { 410, 1, 0, 1, 0, "Playlist Down", "PLAYLIST_DOWN", K::trigger, S::trigger, browse<410>, nothing, 0, "posted to the editor", "0" },
    { 411, 1, 0, 1, 0, "Playlist Page Up", "PLAYLIST_PAGE_UP", K::trigger, S::trigger, browse<411>, nothing, 0, "posted to the editor", "0" },
    { 412, 1, 0, 1, 0, "Playlist Page Down", "PLAYLIST_PAGE_DOWN", K::trigger, S::trigger, browse<412>, nothing, 0, "posted to the editor", "0" },
    { 413, 1, 0, 1, 0, "Playlist Select", "PLAYLIST_SELECT", K::relative, S::stepped, browseStep<409, 410>, nothing, 0, "down for +1, up for -1", "0" },
    { 414, 1, 0, 4, 1, "Playlist Load {d}", "PLAYLIST_LOAD_{d}", K::trigger, S::trigger, browse<414>, nothing, 0, "posted to the editor", "0" },
    { 418, 1, 0, 1, 0, "Playlist Preview", "PLAYLIST_PREVIEW", K::trigger, S::trigger, browse<418>, nothing, 0, "posted to the editor", "0" },
    { 419, 1, 0, 1, 0, "Preview Play/Pause", "PREVIEW_PLAY_PAUSE", K::trigger, S::trigger, browse<419>, nothing, 0, "posted to the editor", "0" },
    { 420, 1, 0, 1, 0, "Directory Up", "DIRECTORY_UP", K::trigger, S::trigger, browse<420>, nothing, 0, "posted to the editor", "0" },
    { 421, 1, 0, 1, 0, "Directory Down", "DIRECTORY_DOWN", K::trigger, S::trigger, browse<421>, nothing, 0, "posted to the editor", "0" },
    { 422, 1, 0, 1, 0, "Directory Select", "DIRECTORY_SELECT", K::relative, S::stepped, browseStep<420, 421>, nothing, 0, "down for +1, up for -1", "0" },
    { 423, 1, 0, 1, 0, "Directory Enter", "DIRECTORY_ENTER", K::trigger, S::trigger, browse<423>, nothing, 0, "posted to the editor", "0" },
    { 424, 1, 0, 1, 0, "Directory Exit", "DIRECTORY_EXIT", K::trigger, S::trigger, browse<424>, nothing, 0, "posted to the editor", "0" },
    { 425, 1, 0, 1, 0, "File Browser Up", "FILE_BROWSER_UP", K::trigger, S::trigger, browse<425>, nothing, 0, "posted to the editor", "0" },
    { 426, 1, 0, 1, 0, "File Browser Down", "FILE_BROWSER_DOWN", K::trigger, S::trigger, browse<426>, nothing, 0, "posted to the editor", "0" },
    { 427, 1, 0, 1, 0, "File Browser Select", "FILE_BROWSER_SELECT", K::relative, S::stepped, browseStep<425, 426>, nothing, 0, "down for +1, up for -1", "0" },
    { 428, 1, 0, 1, 0, "File Browser Enter", "FILE_BROWSER_ENTER", K::trigger, S::trigger, browse<428>, nothing, 0, "posted to the editor", "0" },
    { 429, 1, 0, 1, 0, "File Browser Exit", "FILE_BROWSER_EXIT", K::trigger, S::trigger, browse<429>, nothing, 0, "posted to the editor", "0" },
    { 430, 1, 0, 4, 1, "File Browser Load {d}", "FILE_BROWSER_LOAD_{d}", K::trigger, S::trigger, browse<430>, nothing, 0, "posted to the editor", "0" },
    { 434, 1, 0, 1, 0, "File Browser Preview", "FILE_BROWSER_PREVIEW", K::trigger, S::trigger, browse<434>, nothing, 0, "posted to the editor", "0" },
    { 436, 1, 0, 1, 0, "Snap", "SNAP", K::trigger, S::trigger, toggleSnap,
      [] (CPlatterdex& e, int, int) -> double { return setupOf (e, 0).snap != 0; }, 0, "toggles snap and quantise of all decks", "the flag of deck A" },
    { 461, 1, 0, 4, 1, "Cue/Play {d}", "CUE_PLAY_{d}", K::state, S::held,
      [] (CPlatterdex& e, const CommandCall& c) { e.transport.cuePlay (c.deck, c.isPressed()); }, nothing, 0, "stores the cue, plays from release; back to the cue while playing", "0" },
    { 465, 1, 0, 1, 0, "Disk Recorder", "DISK_RECORDER", K::trigger, S::trigger, toggleRecorder,
      [] (CPlatterdex& e, int, int) -> double { return e.recorder.isRecording(); }, 0, "starts or stops the recording", "1 while recording" },
};
// clang-format on

constexpr int builtCount = std::size (builtFamilies), familyCount = builtCount + std::size (unbuiltFamilies);

constexpr const CommandFamily& familyAt (int index)
{
    return index < builtCount ? builtFamilies[index] : unbuiltFamilies[index - builtCount];
}

/** Where a command stands: the index of its family, or none, and its place in it. */
struct Entry
{
    int family = -1, deck = 0, which = 0;
};

struct Table
{
    std::array<Entry, commandCount + 1> entries {};
    bool complete = true;
};

constexpr Table makeTable()
{
    Table made;
    int placed = 0;
    for (int index = 0; index < familyCount; ++index)
    {
        const auto& family = familyAt (index);
        for (int deck = 0; deck < family.deckCount; ++deck)
            for (int which = 0; which < family.whichCount; ++which)
            {
                const auto number = family.first + which * family.whichStride + deck * family.deckStride;
                if (number < 1 || number > commandCount
                    || made.entries[static_cast<size_t> (number)].family >= 0)
                    made.complete = false;
                else
                    made.entries[static_cast<size_t> (number)] = { index, deck, which };
                ++placed;
            }
    }
    made.complete = made.complete && placed == commandCount;
    return made;
}

constexpr auto table = makeTable();
static_assert (table.complete, "the families leave a number out, or claim one twice");

std::string fillIn (const char* pattern, const Command& command)
{
    std::string text (pattern);
    const auto replace = [&text] (std::string_view placeholder, const std::string& value)
    {
        if (const auto at = text.find (placeholder); at != std::string::npos)
            text.replace (at, placeholder.size(), value);
    };
    replace ("{d}", std::string (1, static_cast<char> ('A' + command.deck)));
    replace ("{n}", std::to_string (command.which + 1));
    return text;
}
}

Command find (int number) noexcept
{
    if (number < 1 || number > commandCount)
        return {};
    const auto& entry = table.entries[static_cast<size_t> (number)];
    return { &familyAt (entry.family), entry.deck, entry.which };
}

std::string name (int number)
{
    const auto command = find (number);
    return command.family != nullptr ? fillIn (command.family->name, command) : std::string();
}

std::string constant (int number)
{
    const auto command = find (number);
    return command.family != nullptr ? fillIn (command.family->constant, command) : std::string();
}

int numberOf (std::string_view wanted)
{
    static const auto numbers = []
    {
        std::unordered_map<std::string, int> all;
        for (int number = 1; number <= commandCount; ++number)
            all.emplace (constant (number), number);
        return all;
    }();
    const auto found = numbers.find (std::string (wanted));
    return found != numbers.end() ? found->second : 0;
}

bool isUnbuilt (int number) noexcept
{
    const auto command = find (number);
    return command.family != nullptr && command.family->write == nullptr;
}
}
