#pragma once

#include "deck/DeckWorld.h"
#include "deck/edit/Snap.h"

/** The snap of a deck as it is heard now. Under the callback lock. */
inline Snap snapOf (DeckWorld& world, const DeckPlayer& deck) noexcept
{
    return { deck.grid(), deck.heardPosition(), world.setup (deck).snap != 0 };
}
