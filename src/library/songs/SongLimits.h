#pragma once

#include <algorithm>
#include <cstdint>

/** A stored number as a list holds it: what lies outside 32 bits comes as the nearest that fits. */
constexpr uint32_t asUnsigned32 (int64_t stored)
{
    return static_cast<uint32_t> (std::clamp<int64_t> (stored, 0, UINT32_MAX));
}
