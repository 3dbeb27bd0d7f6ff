#pragma once

#include "deck/DeckWorld.h"

#include <optional>

/** The one rule by which places are stored: what is stored is the place that is heard, and with the deck's Snap flag on
    and a beat table there, the even beat nearest to it. Under the callback lock. */
namespace Snap
{
/** The place to store, in frames within the track.
    @returns nothing where Snap is on and no even beat lies within reach */
std::optional<double> heardPlace (DeckWorld&, const DeckPlayer&) noexcept;

/** The same, but the plain place where the snap fails. */
double heardPlaceOrPlain (DeckWorld&, const DeckPlayer&) noexcept;
}
