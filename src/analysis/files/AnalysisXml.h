#pragma once

#include "analysis/files/TrackAnalysis.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>

/** The XML form of an analysis, in UTF-8: elements and attributes have a fixed order, so that equal values are equal
    bytes. Numbers read back exactly as they were. */
namespace AnalysisXml
{
inline constexpr int version = 2000; ///< written and never looked at

std::string write (const TrackAnalysis&);

/** Reads what write() gives, and whatever else may stand in a file. A mark with an index beyond the stated number of
    marks and a cue beyond the sixteenth are passed over; of several with one index the last counts; marks behind a
    missing one are lost. The value is repaired.
    @returns nothing if the bytes are no XML, or not the one of an analysis */
std::optional<TrackAnalysis> read (std::span<const std::byte>);
}
