#pragma once

#include "engine/commands/RowHelpers.h"
#include "fx/BeatSteps.h"

/** The decks' filters and effect racks. */
namespace CommandTable
{
inline EffectRack& rackOf (CPlatterdex& engine, int deck)
{
    return engine.effectRacks[static_cast<size_t> (deck)];
}

/** Does something to a deck's effect rack between two blocks. */
template <typename Change>
void changeRack (CPlatterdex& engine, int deck, Change&& change)
{
    const CallbackLock lock (engine.getCallbackLock(), "effects");
    change (rackOf (engine, deck));
}

template <BandSplit::Band band>
void toggleBand (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck, [] (EffectRack& rack) { rack.setBand (band, !rack.isBandOn (band)); });
}

template <BandSplit::Band band>
double readBand (CPlatterdex& engine, int deck, int)
{
    return rackOf (engine, deck).isBandOn (band);
}

template <FxParameter parameter>
double readSlot (CPlatterdex& engine, int deck, int slot)
{
    return rackOf (engine, deck).slot (slot).parameter (parameter);
}

template <FxParameter parameter>
std::string slotText (CPlatterdex& engine, int deck, int slot)
{
    return rackOf (engine, deck).fxParameterText (slot, parameter);
}

inline void setDryWet (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck, [&call] (EffectRack& rack) { rack.setDryWet (call.value); });
}

inline void resetDryWet (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck, [] (EffectRack& rack) { rack.setDryWet (0.0); });
}

inline void toggleEffect (CPlatterdex& engine, const CommandCall& call)
{
    changeRack (engine, call.deck,
                [slot = call.which] (EffectRack& rack)
                { rack.setFxParameter (slot, FxParameter::bypass, rack.slot (slot).isOn() ? 1.0 : 0.0); });
}

constexpr CommandRow effectRows[] {
    {
        .numbers = perDeck (257),
        .name = "Filter {d}",
        .constant = "FILTER_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.setFilter (c.value); }); },
        .read = [] (CPlatterdex& e, int deck, int) { return rackOf (e, deck).filterValue(); },
        .rest = 0.5,
        .feedback = Feedback::level,
        .writes = "low-pass below 0.5, high-pass above",
        .reads = "the value",
    },
    {
        .numbers = perDeck (298),
        .name = "FX Dry/Wet Group {d}",
        .constant = "FX_DRY_WET_GROUP_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = setDryWet,
        .read = readSlot<FxParameter::dryWet>,
        .text = [] (CPlatterdex& e, int deck, int) { return FxText::percent (rackOf (e, deck).dryWet()); },
        .feedback = Feedback::level,
        .writes = "dry 0 to wet 1, of all three effects",
        .reads = "the value",
    },
    {
        .numbers = perDeck (302),
        .name = "FX High Band Group {d}",
        .constant = "FX_HIGH_BAND_GROUP_{d}",
        .write = toggleBand<BandSplit::high>,
        .read = readBand<BandSplit::high>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (306),
        .name = "FX Mid Band Group {d}",
        .constant = "FX_MID_BAND_GROUP_{d}",
        .write = toggleBand<BandSplit::mid>,
        .read = readBand<BandSplit::mid>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (310),
        .name = "FX Low Band Group {d}",
        .constant = "FX_LOW_BAND_GROUP_{d}",
        .write = toggleBand<BandSplit::low>,
        .read = readBand<BandSplit::low>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = { .first = 314, .count = 3, .stride = 1, .decks = 4, .deckStride = 9 },
        .name = "Effect Param {n} Group {d}",
        .constant = "EFFECT_PARAM_{n}_GROUP_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write =
            [] (CPlatterdex& e, const CommandCall& c)
        {
            changeRack (e, c.deck,
                        [&c] (EffectRack& rack)
                        { rack.setFxParameter (c.which, FxParameter::step, c.value); });
        },
        .read = readSlot<FxParameter::step>,
        .text = slotText<FxParameter::step>,
        .feedback = Feedback::level,
        .writes = "time or rate in steps, room of the reverb; of the selected effect",
        .reads = "the value",
    },
    {
        .numbers = { .first = 317, .count = 3, .stride = 1, .decks = 4, .deckStride = 9 },
        .name = "Effect On {n} Group {d}",
        .constant = "EFFECT_ON_{n}_GROUP_{d}",
        .write = toggleEffect,
        .read = [] (CPlatterdex& e, int deck, int slot) -> double
        { return rackOf (e, deck).slot (slot).isOn(); },
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = { .first = 320, .count = 3, .stride = 1, .decks = 4, .deckStride = 9 },
        .name = "Effect Select {n} Group {d}",
        .constant = "EFFECT_SELECT_{n}_GROUP_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = [] (CPlatterdex& e, const CommandCall& c)
        { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.selectFx (c.which, c.value); }); },
        .read = [] (CPlatterdex& e, int deck, int slot) { return rackOf (e, deck).slot (slot).selector(); },
        .text = [] (CPlatterdex& e, int deck, int slot)
        { return std::string (FxType::name (rackOf (e, deck).slot (slot).selected())); },
        .feedback = Feedback::level,
        .writes = "chooses one of ten effects, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = perDeck (350),
        .name = "FX Dry/Wet Reset Group {d}",
        .constant = "FX_DRY_WET_RESET_GROUP_{d}",
        .write = resetDryWet,
        .read = readSlot<FxParameter::dryWet>,
        .writes = "dry",
        .reads = "the dry/wet value",
    },
};
}
