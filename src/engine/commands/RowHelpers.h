#pragma once

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

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

inline DeckSetup& setupOf (CPlatterdex& engine, int deck)
{
    return engine.settings.deckSetup[static_cast<size_t> (deck)];
}

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
}
