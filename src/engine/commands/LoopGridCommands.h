#pragma once

#include "engine/commands/CommandHelpers.h"

/** Loops, beat jumps, start point and downbeat. What else the grid panel offers has no numbers: see GridCommands. */
namespace CommandTable
{
// clang-format off
constexpr CommandFamily loopGridFamilies[] {
    { 113, 1, 0, 4, 1, "Loop {d}", "LOOP_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.toggleLoop (c.deck); },
      [] (CPlatterdex& e, int deck, int) -> double { const auto* d = deckOf (e, deck); return d->loops.mode == beatLoop && d->loops.rolling == 0; }, 0, "beat loop on or off", "1 in a beat loop that does not roll" },
    { 117, 1, 0, 4, 1, "Leap {d}", "LEAP_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.toggleLeap (c.deck); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->loops.rolling != 0; }, 0, "rolling beat loop on or off", "1 while rolling" },
    { 121, 1, 0, 4, 1, "Loop Move Backward {d}", "LOOP_MOVE_BACKWARD_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.moveLoop (c.deck, -1); },
      nothing, 0, "moves back by the loop move size", "0" },
    { 125, 1, 0, 4, 1, "Loop Move Forward {d}", "LOOP_MOVE_FORWARD_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.moveLoop (c.deck, 1); },
      nothing, 0, "moves on by the loop move size", "0" },
    { 129, 1, 0, 4, 1, "Loop Half {d}", "LOOP_HALF_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeSize (c.deck, -1); },
      nothing, 0, "halves the loop", "0" },
    { 133, 1, 0, 4, 1, "Loop Double {d}", "LOOP_DOUBLE_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeSize (c.deck, 1); },
      nothing, 0, "doubles the loop", "0" },
    { 137, 1, 0, 4, 1, "Loop Size {d}", "LOOP_SIZE_{d}", K::relative, S::stepped,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeSize (c.deck, c.step()); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->loopSizes.loop; }, 7, "steps the loop size, 0 to 10", "the size" },
    { 141, 1, 0, 4, 1, "Loop In {d}", "LOOP_IN_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.loopIn (c.deck); },
      nothing, 0, "stores the loop's start", "0" },
    { 145, 1, 0, 4, 1, "Loop Out {d}", "LOOP_OUT_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.loopOut (c.deck); },
      nothing, 0, "stores the loop's end and starts it, or leaves a loop", "0" },
    { 149, 1, 0, 4, 1, "Reloop {d}", "RELOOP_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.reloop (c.deck); },
      nothing, 0, "takes up the manual loop again", "0" },
    { 165, 1, 0, 4, 1, "Downbeat {d}", "DOWNBEAT_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.grids.setDownbeat (c.deck); },
      nothing, 0, "the nearest beat becomes the downbeat", "0" },
    { 169, 1, 0, 4, 1, "Start Point {d}", "START_POINT_{d}", K::trigger, S::trigger,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.toggleStartPoint (c.deck); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->marks.startPointOn != 0; }, 0, "start point on or off", "1 if on" },
    { 457, 1, 0, 4, 1, "Loop Move Size {d}", "LOOP_MOVE_SIZE_{d}", K::relative, S::stepped,
      [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeMoveSize (c.deck, c.step()); },
      [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->loopSizes.move; }, 5, "steps the size, 0 to 10", "the size" },
};
// clang-format on
}
