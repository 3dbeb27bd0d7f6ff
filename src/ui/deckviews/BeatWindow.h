#pragma once

#include "tracks/BeatGrid.h"

#include <juce_core/juce_core.h>

#include <span>
#include <vector>

struct DeckPlayer;

/** The beats of a deck's grid around the place that is looked at: a copy, so that the grid's lock is needed once in some
    seconds and not for each picture. Message thread. */
class BeatWindow
{
public:
    struct Beat
    {
        double frame = 0.0;       ///< of the file
        int32_t fromDownbeat = 0; ///< entries of the grid, half a beat each: an even number
        bool operator== (const Beat&) const = default;
    };

    BeatWindow();

    enum class Copy
    {
        ifNeeded, ///< copies when the grid's numbers have changed or the copy does not reach
        always    ///< finds marks that were moved in place, too
    };

    /** Sees to it that the copy holds the beats between two frames. Takes the callback lock to copy.
        @returns true if the marks are others than before */
    bool update (const DeckPlayer&, double first, double last, Copy);

    /** Ascending. */
    std::span<const Beat> beats() const noexcept { return held; }

private:
    static constexpr size_t mostBeats = 1024;

    void copy (const BeatGrid&, double first, double last);

    std::vector<Beat> held, fresh;
    BeatGrid grid; ///< the numbers of the copied one; its table is not looked at
    double heldFrom = 0.0, heldTo = -1.0;
};
