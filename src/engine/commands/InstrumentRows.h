#pragma once

#include "engine/commands/RowHelpers.h"

/** The commands of the decks' SmartKnobs and Slicegate pads. */
namespace CommandTable
{
constexpr CommandRow instrumentRows[] {
    {
        .numbers = { .first = 173, .count = 2, .stride = 1, .decks = 4, .deckStride = 2 },
        .name = N_ ("Smartknob #{n} {d}"),
        .constant = "SMARTKNOB_{n}_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.smartKnobs.setSmartKnobValue (c.deck, c.which, static_cast<double> (c.value)); },
        .read = [] (CPlatterdex& e, int deck, int knob) { return e.smartKnobs.value (deck, knob); },
        .feedback = Feedback::level,
        .writes = "the knob, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = { .first = 181, .count = 2, .stride = 1, .decks = 4, .deckStride = 2 },
        .name = N_ ("Smartknob #{n} On {d}"),
        .constant = "SMARTKNOB_{n}_ON_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.smartKnobs.setSmartKnobOn (c.deck, c.which, !e.smartKnobs.isOn (c.deck, c.which)); },
        .read = [] (CPlatterdex& e, int deck, int knob) -> double { return e.smartKnobs.isOn (deck, knob); },
        .feedback = Feedback::lamp,
        .writes = "toggles; on needs a track",
        .reads = "the flag",
    },
    {
        .numbers = { .first = 377, .count = 8, .stride = 1, .decks = 4, .deckStride = 8 },
        .name = N_ ("Slicegate Pad {d}.{n}"),
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
