#pragma once

#include "instruments/slicegate/FactoryPresets.h"

#include <cstdint>
#include <span>
#include <string_view>

/** A breakpoint of a factory pattern. */
struct PatternPoint
{
    double delta; ///< beats
    float value, tension;
    uint8_t type; ///< a SegmentShape
};

struct PatternRow
{
    FactoryPresets::Entry entry;
    std::span<const PatternPoint> time, volume;
};

struct PatternGroupRow
{
    std::string_view name;
    int menuPlace;  ///< from 1; 0 stands in no menu
    bool setsFlags; ///< its presets set a pad's flags; the others leave them
    std::span<const PatternRow> patterns;
};

/** The groups by id. Made by px_pattern_maker while building. */
std::span<const PatternGroupRow> factoryPatterns();
