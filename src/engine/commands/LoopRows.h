#pragma once

#include "engine/commands/RowHelpers.h"

/** Loops, beat jumps and the start point. */
namespace CommandTable
{
constexpr CommandRow loopRows[] {
    {
        .numbers = perDeck (113),
        .name = N_ ("Loop {d}"),
        .constant = "LOOP_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.toggleLoop (c.deck); },
        .read = [] (CPlatterdex& e, int deck, int) -> double
        {
            const auto* d = deckOf (e, deck);
            return d->loops.mode == beatLoop && d->loops.rolling == 0;
        },
        .feedback = Feedback::lamp,
        .writes = "beat loop on or off",
        .reads = "1 in a beat loop that does not roll",
    },
    {
        .numbers = perDeck (117),
        .name = N_ ("Leap {d}"),
        .constant = "LEAP_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.toggleLeap (c.deck); },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->loops.rolling != 0; },
        .feedback = Feedback::lamp,
        .writes = "rolling beat loop on or off",
        .reads = "1 while rolling",
    },
    {
        .numbers = perDeck (121),
        .name = N_ ("Loop Move Backward {d}"),
        .constant = "LOOP_MOVE_BACKWARD_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.moveLoop (c.deck, -1); },
        .writes = "moves back by the loop move size",
        .reads = "0",
    },
    {
        .numbers = perDeck (125),
        .name = N_ ("Loop Move Forward {d}"),
        .constant = "LOOP_MOVE_FORWARD_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.moveLoop (c.deck, 1); },
        .writes = "moves on by the loop move size",
        .reads = "0",
    },
    {
        .numbers = perDeck (129),
        .name = N_ ("Loop Half {d}"),
        .constant = "LOOP_HALF_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeSize (c.deck, -1); },
        .writes = "halves the loop",
        .reads = "0",
    },
    {
        .numbers = perDeck (133),
        .name = N_ ("Loop Double {d}"),
        .constant = "LOOP_DOUBLE_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeSize (c.deck, 1); },
        .writes = "doubles the loop",
        .reads = "0",
    },
    {
        .numbers = perDeck (137),
        .name = N_ ("Loop Size {d}"),
        .constant = "LOOP_SIZE_{d}",
        .kind = Kind::relative,
        .shape = Shape::stepped,
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeSize (c.deck, c.step()); },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->loopSizes.loop; },
        .range = { 0.0, 10.0, 1.0 },
        .rest = 7.0,
        .absent = 7.0,
        .feedback = Feedback::level,
        .writes = "steps the loop size, 0 to 10",
        .reads = "the size",
    },
    {
        .numbers = perDeck (141),
        .name = N_ ("Loop In {d}"),
        .constant = "LOOP_IN_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.loopIn (c.deck); },
        .writes = "stores the loop's start",
        .reads = "0",
    },
    {
        .numbers = perDeck (145),
        .name = N_ ("Loop Out {d}"),
        .constant = "LOOP_OUT_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.loopOut (c.deck); },
        .writes = "stores the loop's end and starts it, or leaves a loop",
        .reads = "0",
    },
    {
        .numbers = perDeck (149),
        .name = N_ ("Reloop {d}"),
        .constant = "RELOOP_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.reloop (c.deck); },
        .writes = "resumes the manual loop",
        .reads = "0",
    },
    {
        .numbers = perDeck (169),
        .name = N_ ("Start Point {d}"),
        .constant = "START_POINT_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.toggleStartPoint (c.deck); },
        .read = [] (CPlatterdex& e, int deck, int) -> double
        { return deckOf (e, deck)->marks.startPointOn != 0; },
        .feedback = Feedback::lamp,
        .writes = "start point on or off",
        .reads = "1 if on",
    },
    {
        .numbers = perDeck (457),
        .name = N_ ("Loop Move Size {d}"),
        .constant = "LOOP_MOVE_SIZE_{d}",
        .kind = Kind::relative,
        .shape = Shape::stepped,
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.loops.changeMoveSize (c.deck, c.step()); },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return deckOf (e, deck)->loopSizes.move; },
        .range = { 0.0, 10.0, 1.0 },
        .rest = 5.0,
        .absent = 5.0,
        .feedback = Feedback::level,
        .writes = "steps the size, 0 to 10",
        .reads = "the size",
    },
};
}
