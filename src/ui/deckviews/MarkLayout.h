#pragma once

#include "ui/deckviews/TrackScale.h"
#include "ui/poll/DeckWatch.h"

#include <optional>
#include <span>
#include <vector>

enum class MarkKind
{
    none,
    downbeat, ///< the anchor of the grid
    phrase,   ///< every 16th beat from it
    bar,      ///< every 4th
    beat,
    hotCue,
    cuePoint, ///< what the Cue button goes to
    startPoint,
    loopIn,
    loopOut
};

/** The mark of an entry of the grid.
    @param fromDownbeat   entries, half a beat each, from the downbeat's */
constexpr MarkKind kindOfBeat (int fromDownbeat) noexcept
{
    if (fromDownbeat == 0)
        return MarkKind::downbeat;
    if (fromDownbeat % 32 == 0)
        return MarkKind::phrase;
    if (fromDownbeat % 8 == 0)
        return MarkKind::bar;
    return fromDownbeat % 2 == 0 ? MarkKind::beat : MarkKind::none;
}

/** The number that stands at a downbeat, phrase or bar: that of the downbeat's is 1. */
constexpr int barNumber (int fromDownbeat) noexcept
{
    return fromDownbeat / 8 + 1;
}

struct Mark
{
    MarkKind kind = MarkKind::none;
    int x = 0;            ///< physical pixels from the view's left edge
    int number = 0;       ///< of the bar or the cue slot, from 1; 0 for none
    bool running = false; ///< of a loop's ends
    bool operator== (const Mark&) const = default;
};

/** The marks of a window on a track. */
struct MarkLayout
{
    struct Region
    {
        int left = 0, right = 0; ///< physical pixels, within the window
        bool running = false;
        bool operator== (const Region&) const = default;
    };

    std::vector<Mark> beats; ///< in the order they are drawn, as the flags
    std::vector<Mark> flags;
    std::optional<Region> loop;
    int unreachable = 0; ///< the columns before the start point

    bool operator== (const MarkLayout&) const = default;

    /** @param left    the physical column of the track at the window's left edge
        @param width   of the window, physical pixels */
    static MarkLayout of (std::span<const GridBeat>, const TrackPlaces&, TrackScale, int64_t left, int width);
};
