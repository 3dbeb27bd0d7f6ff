#pragma once

#include "engine/commands/RowHelpers.h"

/** The beat grid and what snaps to it. Further commands of the grid panel have no numbers: see GridCommands. */
namespace CommandTable
{
inline void toggleSnap (CPlatterdex& engine, const CommandCall&)
{
    const CallbackLock lock (engine.getCallbackLock(), "snap");
    const auto next = static_cast<int8_t> (engine.settings.deckSetup[0].snap == 0);
    for (auto& setup : engine.settings.deckSetup)
        setup.snap = setup.quantise = next;
}

constexpr CommandRow gridRows[] {
    {
        .numbers = perDeck (165),
        .name = N_ ("Downbeat {d}"),
        .constant = "DOWNBEAT_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.grids.setDownbeat (c.deck); },
        .writes = "the nearest beat becomes the downbeat",
        .reads = "0",
    },
    {
        .numbers = { .first = 436 },
        .name = N_ ("Snap"),
        .constant = "SNAP",
        .write = toggleSnap,
        .read = [] (CPlatterdex& e, int, int) -> double { return setupOf (e, 0).snap != 0; },
        .feedback = Feedback::lamp,
        .writes = "toggles snap and quantise of all decks",
        .reads = "the flag of deck A",
    },
};
}
