#pragma once

#include "ui/poll/DeckWatch.h"

#include <span>
#include <vector>

/** The beats of a deck's grid around the place that is looked at: a copy, so that the grid's lock is needed once in some
    seconds and not for each picture. Message thread. */
class BeatWindow
{
public:
    BeatWindow();

    /** Sees to it that the copy holds the beats between two frames of the file. Takes the callback lock to copy, which it
        does when the grid's numbers have changed, when the copy does not reach, and after forget().
        @returns true if the beats are others than before */
    bool update (const DeckWatch&, double first, double last);

    /** True if the last change only added beats to those that stay, and took some away beyond them. */
    bool hasSlid() const noexcept { return slid; }

    /** Another table may stand behind the same numbers. */
    void forget() noexcept { heldTo = heldFrom - 1.0; }

    /** Ascending. */
    std::span<const GridBeat> beats() const noexcept { return held; }

private:
    std::vector<GridBeat> held, fresh;
    GridNumbers grid; ///< of the copied one
    double heldFrom = 0.0, heldTo = -1.0;
    bool slid = false;
};
