#pragma once

#include "engine/commands/RowHelpers.h"

/** Cue and the hot cues. */
namespace CommandTable
{
inline double readStoppedAtCue (CPlatterdex& engine, int deck, int)
{
    return Transport::isStoppedAtCue (*deckOf (engine, deck));
}

inline double readCueSet (CPlatterdex& engine, int deck, int slot)
{
    return deckOf (engine, deck)->marks.cues[static_cast<size_t> (slot)] > emptyCue;
}

inline double readCueEmpty (CPlatterdex& engine, int deck, int slot)
{
    return !(deckOf (engine, deck)->marks.cues[static_cast<size_t> (slot)] > emptyCue);
}

constexpr CommandRow cueRows[] {
    {
        .numbers = perDeck (45),
        .name = N_ ("Cue {d}"),
        .constant = "CUE_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.cue (c.deck, true); },
        .read = readStoppedAtCue,
        .feedback = Feedback::lamp,
        .writes = "presses Cue, never releases it",
        .reads = "1 if stopped at a cue",
    },
    {
        .numbers = { .first = 49, .count = 8, .stride = 4, .decks = 4, .deckStride = 1 },
        .name = N_ ("Set Hot Cue #{n} {d}"),
        .constant = "HOT_CUE_{n}_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.jumpToCue (c.deck, c.which); },
        .read = readCueSet,
        .feedback = Feedback::lamp,
        .writes = "sets an empty slot, else jumps to it",
        .reads = "1 if set",
    },
    {
        .numbers = { .first = 81, .count = 8, .stride = 4, .decks = 4, .deckStride = 1 },
        .name = N_ ("Delete Hot Cue #{n} {d}"),
        .constant = "DELETE_HOT_CUE_{n}_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.deleteCue (c.deck, c.which); },
        .read = readCueEmpty,
        .feedback = Feedback::lamp,
        .writes = "empties the slot",
        .reads = "1 if empty",
    },
    {
        .numbers = perDeck (189),
        .name = N_ ("Cue/Stutter {d}"),
        .constant = "CUE_STUTTER_{d}",
        .kind = Kind::state,
        .shape = Shape::held,
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.cue (c.deck, c.isPressed()); },
        .read = readStoppedAtCue,
        .feedback = Feedback::lamp,
        .writes = "presses and releases Cue",
        .reads = "1 if stopped at a cue",
    },
    {
        .numbers = perDeck (461),
        .name = N_ ("Cue/Play {d}"),
        .constant = "CUE_PLAY_{d}",
        .kind = Kind::state,
        .shape = Shape::held,
        .write = [] (CPlatterdex& e, const CommandCall& c) { e.transport.cuePlay (c.deck, c.isPressed()); },
        .writes = "stores the cue, plays from release; back to the cue while playing",
        .reads = "0",
    },
};
}
