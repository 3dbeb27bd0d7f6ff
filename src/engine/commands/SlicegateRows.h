#pragma once

#include "engine/commands/RowHelpers.h"

/** The commands of the Slicegate pads. */
namespace CommandTable
{
constexpr CommandRow slicegateRows[] {
    {
        .numbers = { .first = 377, .count = 8, .stride = 1, .decks = 4, .deckStride = 8 },
        .name = "Slicegate Pad {d}.{n}",
        .constant = "SLICEGATE_PAD_{d}_{n}",
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.slicegates[static_cast<size_t> (c.deck)].trigger (c.which); },
        .read = [] (CPlatterdex& e, int deck, int pad) -> double
        { return e.slicegates[static_cast<size_t> (deck)].padState (pad) == PadState::running; },
        .feedback = Feedback::lamp,
        .writes = "presses the pad",
        .reads = "1 while it runs",
    },
};
}
