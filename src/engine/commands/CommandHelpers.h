#pragma once

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"

/** What the writes and reads of several families share. */
namespace CommandTable
{
using K = CommandKind;
using S = MappingShape;

inline const DeckPlayer* deckOf (CPlatterdex& engine, int deck)
{
    return engine.decks.deck (deck);
}

inline DeckSetup& setupOf (CPlatterdex& engine, int deck)
{
    return engine.settings.deckSetup[static_cast<size_t> (deck)];
}

inline double nothing (CPlatterdex&, int, int)
{
    return 0.0;
}
}
