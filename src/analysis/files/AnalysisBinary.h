#pragma once

#include "analysis/files/TrackAnalysis.h"

#include <cstddef>
#include <optional>
#include <span>

/** An older form of an analysis, which is read and never written: fields without padding, little-endian, the marks as
    they lie in memory, and the first four cues. */
namespace AnalysisBinary
{
inline constexpr int32_t magic = 1405;

/** @returns a repaired value; nothing if the bytes begin otherwise or end too early */
std::optional<TrackAnalysis> read (std::span<const std::byte>);
}
