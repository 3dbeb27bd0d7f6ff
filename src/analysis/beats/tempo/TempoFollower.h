#pragma once

#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/Pulse.h"

#include <optional>

/** Follows a tempo that moves, as a band's without a click or a record's on a slow motor. */
namespace TempoFollower
{
struct Result
{
    Pulse pulse;
    double agreement = 0.0; ///< how like itself the function is along the tempo's path, on average; up to 1
};

/** A pulse along the onsets. The tempo is followed first, in stretches of some seconds, and then the beats, of which
    each falls on a strong onset about one local beat after the last.
    @param bpm   where the tempo lies most of the time
    @returns nothing when the function is too short for it */
std::optional<Result> follow (const OnsetFunction&, double bpm);
}
