#pragma once

#include "instruments/slicegate/SlicegatePreset.h"

#include <span>
#include <string_view>
#include <vector>

/** The patterns that the system brings along. They are written in resources/slicegate as text, and turned into
    constant data while building. Any thread. */
namespace FactoryPresets
{
/** The preset of a pad without a pattern. */
inline constexpr int emptyPreset = 100;

/** The range of ids; others are "Empty". */
inline constexpr int firstId = 100, lastId = 1132;

struct Entry
{
    int id = emptyPreset;
    std::string_view name;
};

struct Group
{
    std::string_view name;
    int menuPlace = 0; ///< from 1; the groups of 0 stand in no menu
    std::vector<Entry> presets;
};

/** All groups, by id. */
std::span<const Group> groups();

/** The groups of the pads' menu, in its order. */
std::span<const Group* const> menu();

/** The name of an id; "Empty" for those without a pattern. */
std::string_view nameOf (int id);

/** The contents of an id; those of "Empty" for one without a pattern. */
SlicegatePreset preset (int id);

/** The preset that a deck's pad begins with. @param deck   0 to 3 @param pad   0 to 7 */
constexpr int initialPreset (int deck, int pad) noexcept
{
    return 1101 + deck * padCount + pad;
}
}
