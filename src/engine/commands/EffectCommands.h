#pragma once

#include "engine/commands/CommandHelpers.h"
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

// clang-format off
constexpr CommandFamily effectFamilies[] {
    { 257, 1, 0, 4, 1, "Filter {d}", "FILTER_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.setFilter (c.value); }); },
      [] (CPlatterdex& e, int deck, int) { return rackOf (e, deck).filterValue(); }, 0.5, "low-pass below 0.5, high-pass above", "the value" },
    { 298, 1, 0, 4, 1, "FX Dry/Wet Group {d}", "FX_DRY_WET_GROUP_{d}", K::value, S::continuous, setDryWet,
      readSlot<FxParameter::dryWet>, 0, "dry 0 to wet 1, of all three effects", "the value",
      [] (CPlatterdex& e, int deck, int) { return FxText::percent (rackOf (e, deck).dryWet()); } },
    { 302, 1, 0, 4, 1, "FX High Band Group {d}", "FX_HIGH_BAND_GROUP_{d}", K::trigger, S::trigger,
      toggleBand<BandSplit::high>, readBand<BandSplit::high>, 0, "toggles", "the flag" },
    { 306, 1, 0, 4, 1, "FX Mid Band Group {d}", "FX_MID_BAND_GROUP_{d}", K::trigger, S::trigger,
      toggleBand<BandSplit::mid>, readBand<BandSplit::mid>, 0, "toggles", "the flag" },
    { 310, 1, 0, 4, 1, "FX Low Band Group {d}", "FX_LOW_BAND_GROUP_{d}", K::trigger, S::trigger,
      toggleBand<BandSplit::low>, readBand<BandSplit::low>, 0, "toggles", "the flag" },
    { 314, 3, 1, 4, 9, "Effect Param {n} Group {d}", "EFFECT_PARAM_{n}_GROUP_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.setFxParameter (c.which, FxParameter::step, c.value); }); },
      readSlot<FxParameter::step>, 0, "time or rate in steps, room of the reverb; of the selected effect", "the value", slotText<FxParameter::step> },
    { 317, 3, 1, 4, 9, "Effect On {n} Group {d}", "EFFECT_ON_{n}_GROUP_{d}", K::trigger, S::trigger, toggleEffect,
      [] (CPlatterdex& e, int deck, int slot) -> double { return rackOf (e, deck).slot (slot).isOn(); }, 0, "toggles", "the flag" },
    { 320, 3, 1, 4, 9, "Effect Select {n} Group {d}", "EFFECT_SELECT_{n}_GROUP_{d}", K::value, S::continuous,
      [] (CPlatterdex& e, const CommandCall& c) { changeRack (e, c.deck, [&c] (EffectRack& rack) { rack.selectFx (c.which, c.value); }); },
      [] (CPlatterdex& e, int deck, int slot) { return rackOf (e, deck).slot (slot).selector(); }, 0, "chooses one of ten effects, 0 to 1", "the value",
      [] (CPlatterdex& e, int deck, int slot) { return std::string (FxType::name (rackOf (e, deck).slot (slot).selected())); } },
    { 350, 1, 0, 4, 1, "FX Dry/Wet Reset Group {d}", "FX_DRY_WET_RESET_GROUP_{d}", K::trigger, S::trigger, resetDryWet,
      readSlot<FxParameter::dryWet>, 0, "dry", "the dry/wet value" },
};
// clang-format on
}
