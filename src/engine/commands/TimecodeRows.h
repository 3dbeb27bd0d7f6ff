#pragma once

#include "engine/commands/RowHelpers.h"

/** The hold of control records on the decks. */
namespace CommandTable
{
inline TimecodeDeck& timecodeOf (CPlatterdex& engine, int deck)
{
    return engine.timecodes[static_cast<size_t> (deck)];
}

template <TimecodeDeck::Mode mode>
void setTimecodeMode (CPlatterdex& engine, const CommandCall& call)
{
    timecodeOf (engine, call.deck).setMode (mode);
}

template <TimecodeDeck::Mode mode>
double isTimecodeMode (CPlatterdex& engine, int deck, int)
{
    return timecodeOf (engine, deck).mode() == mode;
}

constexpr CommandRow timecodeRows[] {
    {
        .numbers = perDeck (153),
        .name = N_ ("DVS Absolute Mode {d}"),
        .constant = "DVS_ABSOLUTE_MODE_{d}",
        .write = setTimecodeMode<TimecodeDeck::Mode::absolute>,
        .read = isTimecodeMode<TimecodeDeck::Mode::absolute>,
        .feedback = Feedback::lamp,
        .writes = "timecode on, absolute",
        .reads = "1 if so",
    },
    {
        .numbers = perDeck (157),
        .name = N_ ("DVS Relative Mode {d}"),
        .constant = "DVS_RELATIVE_MODE_{d}",
        .write = setTimecodeMode<TimecodeDeck::Mode::relative>,
        .read = isTimecodeMode<TimecodeDeck::Mode::relative>,
        .feedback = Feedback::lamp,
        .writes = "timecode on, relative",
        .reads = "1 if so",
    },
    {
        .numbers = perDeck (161),
        .name = N_ ("DVS Internal Mode {d}"),
        .constant = "DVS_INTERNAL_MODE_{d}",
        .write = setTimecodeMode<TimecodeDeck::Mode::internal>,
        .read = isTimecodeMode<TimecodeDeck::Mode::internal>,
        .feedback = Feedback::lamp,
        .writes = "timecode off, pitch to its centre",
        .reads = "1 if so",
    },
};
}
