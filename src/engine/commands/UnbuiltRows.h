#pragma once

#include "engine/commands/RowHelpers.h"

/** The commands whose part of the system does not exist yet: their writes do nothing and they read as without a deck.
    Numbers, names and kinds are final. A row moves from here to the file of its part when it is given its write; this
    list is empty when the system is complete. */
namespace CommandTable
{
constexpr CommandRow unbuiltRows[] {
    // Plug-in slots
    {
        .numbers = perDeck (437),
        .name = "VST Dry/Wet Slot {d}",
        .constant = "VST_DRY_WET_SLOT_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .feedback = Feedback::level,
        .writes = "dry 0 to wet 1",
        .reads = "the value",
    },
    {
        .numbers = perDeck (441),
        .name = "VST On Slot {d}",
        .constant = "VST_ON_SLOT_{d}",
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (445),
        .name = "VST Set Insert/Send Signal Routing Slot {d}",
        .constant = "VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_{d}",
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (449),
        .name = "VST Param 1 Slot {d}",
        .constant = "VST_PARAM_1_SLOT_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .feedback = Feedback::level,
        .writes = "the parameter, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = perDeck (453),
        .name = "VST Param 2 Slot {d}",
        .constant = "VST_PARAM_2_SLOT_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .feedback = Feedback::level,
        .writes = "the parameter, 0 to 1",
        .reads = "the value",
    },
};
}
