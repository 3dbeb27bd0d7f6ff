#pragma once

#include "engine/commands/RowHelpers.h"

/** The levels of decks and master, which can only be read. */
namespace CommandTable
{
constexpr CommandRow meterRows[] {
    {
        .numbers = { .first = 1001, .decks = 4 },
        .name = N_ ("Level {d}"),
        .constant = "LEVEL_{d}",
        .kind = Kind::meter,
        .read = [] (CPlatterdex& e, int deck, int) { return channelOf (e, deck).level(); },
        .feedback = Feedback::meter,
        .reads = "the larger of the last two samples, 0 to 1",
    },
    {
        .numbers = { .first = 1005, .count = 2 },
        .name = N_ ("Master Level {n}"),
        .constant = "MASTER_LEVEL_{n}",
        .kind = Kind::meter,
        .read = [] (CPlatterdex& e, int, int side) -> double { return e.masterMeters.level (side); },
        .feedback = Feedback::meter,
        .reads = "the level of the left (1) and right (2) side, 0 to 1",
    },
};
}
