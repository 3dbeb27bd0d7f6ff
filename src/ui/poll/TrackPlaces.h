#pragma once

#include "deck/DeckPlayer.h"

#include <array>
#include <optional>

/** The places of a deck that views mark, as they stood at one look. Frames of the file. */
struct TrackPlaces
{
    struct Loop
    {
        double in = 0.0, out = 0.0;
        bool running = false;
        bool operator== (const Loop&) const = default;
    };

    std::array<double, cueSlotCount> cues {}; ///< emptyCue or less where there is none
    int currentCue = 0;
    std::optional<double> startPoint, loopIn, loopOut;
    std::optional<Loop> loop; ///< the one that runs, else the one that is set

    bool operator== (const TrackPlaces&) const = default;

    bool hasCue (int slot) const noexcept { return cues[static_cast<size_t> (slot)] > emptyCue; }

    /** Any thread, no lock. */
    static TrackPlaces of (const DeckPlayer&);
};
