#pragma once

#include "engine/commands/RowHelpers.h"

/** The commands of the decks' slots for other people's plug-ins. */
namespace CommandTable
{
inline VstSlot& slotOf (CPlatterdex& engine, int deck)
{
    return engine.vstSlots[static_cast<size_t> (deck)];
}

/** Takes a row of the slot over from the deck's SmartKnobs, after a hand has moved it. */
inline void takeFromKnobs (CPlatterdex& engine, int deck, SmartKnobRow row)
{
    const CallbackLock lock (engine.getCallbackLock(), "plug-in by hand");
    engine.smartKnobs.handMoved (deck, row);
}

template <int which>
void writePluginParameter (CPlatterdex& engine, const CommandCall& call)
{
    slotOf (engine, call.deck).paramValues[which] = limited (call);
    takeFromKnobs (engine, call.deck, which == 0 ? SmartKnobRow::pluginParam1 : SmartKnobRow::pluginParam2);
}

template <int which>
double readPluginParameter (CPlatterdex& engine, int deck, int)
{
    return slotOf (engine, deck).paramValues[which];
}

constexpr CommandRow pluginRows[] {
    {
        .numbers = perDeck (437),
        .name = N_ ("VST Dry/Wet Slot {d}"),
        .constant = "VST_DRY_WET_SLOT_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write =
            [] (CPlatterdex& e, const CommandCall& c)
        {
            slotOf (e, c.deck).dryWet = limited (c);
            takeFromKnobs (e, c.deck, SmartKnobRow::pluginDryWet);
        },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return slotOf (e, deck).dryWet; },
        .rest = 0.5,
        .feedback = Feedback::level,
        .writes = "dry 0 to wet 1",
        .reads = "the value",
    },
    {
        .numbers = perDeck (441),
        .name = N_ ("VST On Slot {d}"),
        .constant = "VST_ON_SLOT_{d}",
        .write =
            [] (CPlatterdex& e, const CommandCall& c)
        {
            auto& slot = slotOf (e, c.deck);
            slot.setOn (!slot.isOn());
            takeFromKnobs (e, c.deck, SmartKnobRow::pluginOn);
        },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return slotOf (e, deck).isOn(); },
        .feedback = Feedback::lamp,
        .writes = "toggles; on also after a fault",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (445),
        .name = N_ ("VST Set Insert/Send Signal Routing Slot {d}"),
        .constant = "VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_{d}",
        .write =
            [] (CPlatterdex& e, const CommandCall& c)
        {
            auto& insert = slotOf (e, c.deck).isInsert;
            insert = static_cast<int8_t> (insert == 0);
        },
        .read = [] (CPlatterdex& e, int deck, int) -> double { return slotOf (e, deck).isInsert; },
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "1 insert, 0 send",
    },
    {
        .numbers = perDeck (449),
        .name = N_ ("VST Param 1 Slot {d}"),
        .constant = "VST_PARAM_1_SLOT_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writePluginParameter<0>,
        .read = readPluginParameter<0>,
        .rest = 0.5,
        .feedback = Feedback::level,
        .writes = "the parameter, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = perDeck (453),
        .name = N_ ("VST Param 2 Slot {d}"),
        .constant = "VST_PARAM_2_SLOT_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writePluginParameter<1>,
        .read = readPluginParameter<1>,
        .rest = 0.5,
        .feedback = Feedback::level,
        .writes = "the parameter, 0 to 1",
        .reads = "the value",
    },
};
}
