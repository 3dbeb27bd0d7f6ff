#pragma once

#include "engine/commands/RowHelpers.h"

/** The decks' SmartKnobs. */
namespace CommandTable
{
constexpr CommandRow smartKnobRows[] {
    {
        .numbers = { .first = 173, .count = 2, .stride = 1, .decks = 4, .deckStride = 2 },
        .name = "Smartknob #{n} {d}",
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
        .name = "Smartknob #{n} On {d}",
        .constant = "SMARTKNOB_{n}_ON_{d}",
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { e.smartKnobs.setSmartKnobOn (c.deck, c.which, !e.smartKnobs.isOn (c.deck, c.which)); },
        .read = [] (CPlatterdex& e, int deck, int knob) -> double { return e.smartKnobs.isOn (deck, knob); },
        .feedback = Feedback::lamp,
        .writes = "toggles; on needs a track",
        .reads = "the flag",
    },
};
}
