#pragma once

#include "engine/commands/CommandHelpers.h"
#include "mixer/AutoCrossfader.h"
#include "mixer/ChannelStrip.h"

/** The mixer: knobs are single stores, flags are turned under the callback lock. */
namespace CommandTable
{
inline double limited (const CommandCall& call)
{
    return juce::jlimit (0.0, 1.0, static_cast<double> (call.value));
}

/** What a field of a deck, of its setup or of the settings belongs to. */
inline DeckPlayer& owner (CPlatterdex& engine, int deck, const DeckPlayer*)
{
    return *engine.decks.deck (deck);
}

inline DeckSetup& owner (CPlatterdex& engine, int deck, const DeckSetup*)
{
    return setupOf (engine, deck);
}

inline EngineSettings& owner (CPlatterdex& engine, int, const EngineSettings*)
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

inline void moveCrossfader (CPlatterdex& engine, const CommandCall& call)
{
    const CallbackLock lock (engine.getCallbackLock(), "crossfader");
    engine.settings.crossfader = limited (call);
    engine.settings.autoFadeState = AutoCrossfader::idle;
}

template <AutoCrossfader::State side>
void startFade (CPlatterdex& engine, const CommandCall&)
{
    const CallbackLock lock (engine.getCallbackLock(), "fade");
    engine.settings.autoFadeState = side;
    if (engine.settings.automixOn != 0)
        engine.automix.automixDeck = side == AutoCrossfader::toLeft ? 0 : 1;
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
}

// clang-format off
constexpr CommandFamily mixerFamilies[] {
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
};
// clang-format on
}
