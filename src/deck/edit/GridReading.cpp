#include "deck/edit/GridReading.h"

#include <algorithm>

const std::array<GridReading, GridReading::count>& GridReading::all() noexcept
{
    static constexpr std::array<GridReading, count> readings { {
        { "right", N_ ("It Is Right As It Stands") },
        { "half", N_ ("Half a Beat On"), 1 },
        { "beat", N_ ("Bar One Beat On"), 2 },
        { "3/2", N_ ("Tempo x 3/2"), 0, 3, 2 },
        { "2/3", N_ ("Tempo x 2/3"), 0, 2, 3 },
        { "4/3", N_ ("Tempo x 4/3"), 0, 4, 3 },
        { "3/4", N_ ("Tempo x 3/4"), 0, 3, 4 },
    } };
    return readings;
}

const GridReading* GridReading::find (std::string_view name) noexcept
{
    const auto found =
        std::find_if (all().begin(), all().end(), [name] (const auto& each) { return each.name == name; });
    return found != all().end() ? &*found : nullptr;
}
