#pragma once

#include "support/language/Translate.h"

#include <array>
#include <string_view>

/** A way to hear the beats of a track: as they stand or, for a grid that is wrong in one of the ways in which grids are wrong,
    moved by half a beat or by a beat of the bar, or at a tempo in the ratio of small numbers to the music's. */
struct GridReading
{
    std::string_view name;  ///< in sets
    const char* label;      ///< in menus
    int halfBeatsOn = 0;    ///< by which the downbeat moves
    int beats = 1, per = 1; ///< so many beats where `per` were; the downbeat stays

    bool changesTempo() const noexcept { return beats != per; }

    static constexpr size_t count = 7;
    static const std::array<GridReading, count>& all() noexcept;

    /** @returns null for a name of none */
    static const GridReading* find (std::string_view name) noexcept;
};
