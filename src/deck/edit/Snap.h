#pragma once

#include "tracks/BeatGrid.h"

#include <optional>

/** The one rule by which places are stored: the place that is heard, or with the deck's Snap flag on and a beat table
    there, the even beat nearest to it. In frames within the track. Under the callback lock. */
class Snap
{
public:
    Snap (const BeatGrid& deckGrid, double heardPosition, bool isOn) noexcept
        : grid (deckGrid),
          heard (heardPosition),
          snaps (isOn && deckGrid.numBeats > 0)
    {
    }

    /** @returns nothing where Snap is on and no even beat lies within reach */
    std::optional<double> place() const noexcept;

    /** The same, but the plain place where the snap fails. */
    double placeOrPlain() const noexcept { return place().value_or (withinTrack (heard)); }

private:
    double withinTrack (double frame) const noexcept;

    const BeatGrid grid;
    const double heard;
    const bool snaps;
};
