#pragma once

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "mixer/ChannelParameters.h"
#include "support/language/Translate.h"

/** Reads and writes that the rows of several parts share. */
namespace CommandTable
{
using Kind = CommandKind;
using Shape = MappingShape;
using Polarity = CommandPolarity;
using Feedback = CommandFeedback;

inline const DeckPlayer* deckOf (CPlatterdex& engine, int deck)
{
    return engine.decks.deck (deck);
}

inline Channel& channelOf (CPlatterdex& engine, int deck)
{
    return engine.channels[static_cast<size_t> (deck)];
}

inline DeckSetup& setupOf (CPlatterdex& engine, int deck)
{
    return engine.settings.deckSetup[static_cast<size_t> (deck)];
}

inline double limited (const CommandCall& call)
{
    return juce::jlimit (0.0, 1.0, static_cast<double> (call.value));
}

/** The owner of a field: a deck's setup, or the settings. */
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

/** The reads and writes of a channel's parameter. @tparam first   the parameter, or that of slot 1 for a row with a number */
template <ChannelParameter first>
double readParameter (CPlatterdex& engine, int deck, int slot)
{
    return ChannelParameters::row (ChannelParameters::ofSlot (first, slot)).get (channelOf (engine, deck));
}

template <ChannelParameter first>
std::string parameterText (CPlatterdex& engine, int deck, int slot)
{
    return ChannelParameters::row (ChannelParameters::ofSlot (first, slot)).text (channelOf (engine, deck));
}

/** Moves a parameter by hand, which takes it over from the deck's SmartKnobs. */
inline void setParameter (CPlatterdex& engine, int deck, ChannelParameter id, double value)
{
    const auto& row = ChannelParameters::row (id);
    if (row.isSingleStore && !engine.smartKnobs.isAnyOn (deck))
        return row.set (channelOf (engine, deck), value);
    const CallbackLock lock (engine.getCallbackLock(), "channel parameter");
    row.set (channelOf (engine, deck), value);
    engine.smartKnobs.handMoved (deck, id);
}

template <ChannelParameter first>
void writeParameter (CPlatterdex& engine, const CommandCall& call)
{
    setParameter (engine, call.deck, ChannelParameters::ofSlot (first, call.which),
                  static_cast<double> (call.value));
}

constexpr double restOf (ChannelParameter id) noexcept
{
    return ChannelParameters::row (id).rest;
}

template <ChannelParameter id>
void resetParameter (CPlatterdex& engine, const CommandCall& call)
{
    setParameter (engine, call.deck, id, restOf (id));
}

template <ChannelParameter first>
void toggleParameter (CPlatterdex& engine, const CommandCall& call)
{
    const CallbackLock lock (engine.getCallbackLock(), "channel switch");
    const auto id = ChannelParameters::ofSlot (first, call.which);
    const auto& row = ChannelParameters::row (id);
    auto& channel = channelOf (engine, call.deck);
    row.set (channel, row.get (channel) < 0.5 ? 1.0 : 0.0);
    engine.smartKnobs.handMoved (call.deck, id);
}
}
