#pragma once

#include "instruments/envelope/Envelope.h"

/** The rules by which a hand changes an envelope. Pure functions on a copy. */
namespace EnvEdit
{
constexpr double snapTime = 0.25, snapLevel = 0.0625;

struct Rules
{
    bool snapX = false, snapY = false;
    bool sliding = false; ///< later points move along
    bool pinLast = true;  ///< the last point keeps its time
};

/** A place with the snaps of the rules applied. Times are at least 0, levels within 0 to 1. */
struct Place
{
    double time = 0.0, level = 0.0;
};
Place snapped (Place, const Rules&);

/** Moves a point. The first keeps its time, as does a pinned last one; the others stay between their neighbours, unless
    later points slide along. */
void movePoint (Envelope&, int index, Place, const Rules&);

/** Puts a point into the segment of its time, whose end keeps its place.
    @returns its index; -1 if the envelope is full */
int insertPoint (Envelope&, Place, std::uint8_t type, const Rules&);

/** True for a point that may go: not the first, not a pinned last one, and two remain. */
bool canDelete (const Envelope&, int index, const Rules&);

/** @param tension   limited to -1 to 1 */
void setTension (Envelope&, int index, double tension);
void setType (Envelope&, int index, std::uint8_t type);
void setLevel (Envelope&, int index, float level);
}
