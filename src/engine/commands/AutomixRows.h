#pragma once

#include "engine/commands/RowHelpers.h"

/** Automix; its fades are the mixer's. */
namespace CommandTable
{
constexpr CommandRow automixRows[] {
    {
        .numbers = { .first = 435 },
        .name = N_ ("Automix On/Off"),
        .constant = "AUTOMIX_ON_OFF",
        .write = [] (CPlatterdex& e, const CommandCall&)
        { e.decks.requests.toggle (EngineRequest::toggleAutomix); },
        .read = readFlag<&EngineSettings::automixOn>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
};
}
