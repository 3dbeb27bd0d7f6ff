#pragma once

#include "fx/effect/BeatSteps.h"
#include "mixer/ChannelParameter.h"

#include <algorithm>

/** The table of a channel's parameters. */
namespace ChannelParameters
{
/** The parameter of the same kind that belongs to slot 1, 2 or 3. @param slot   0 to 2 */
constexpr ChannelParameter ofSlot (ChannelParameter ofSlot1, int slot) noexcept
{
    return static_cast<ChannelParameter> (static_cast<int> (ofSlot1) + slot);
}

namespace Rows
{
using Id = ChannelParameter;
using Row = ChannelParameterRow;

template <auto field>
constexpr Row knob (Id id, std::string_view name, double rest)
{
    return { .id = id,
             .name = name,
             .rest = rest,
             .isSingleStore = true,
             .get = [] (const Channel& channel) { return (channel.knobs.*field).get(); },
             .set = [] (Channel& channel, double value)
             { channel.knobs.*field = std::clamp (value, 0.0, 1.0); } };
}

template <auto field>
constexpr Row button (Id id, std::string_view name)
{
    return { .id = id,
             .name = name,
             .rest = 0.0,
             .isSwitch = true,
             .isSingleStore = true,
             .get = [] (const Channel& channel) -> double { return channel.knobs.*field != 0; },
             .set = [] (Channel& channel, double value)
             { channel.knobs.*field = static_cast<int8_t> (value >= 0.5); } };
}

template <BandSplit::Band band>
constexpr Row fxBand (Id id, std::string_view name)
{
    return { .id = id,
             .name = name,
             .rest = 1.0,
             .isSwitch = true,
             .get = [] (const Channel& channel) -> double { return channel.effects.isBandOn (band); },
             .set = [] (Channel& channel, double value) { channel.effects.setBand (band, value >= 0.5); } };
}

template <int slot>
constexpr Row fxSelect (std::string_view name)
{
    return { .id = ofSlot (Id::fxSelect1, slot),
             .name = name,
             .rest = 0.0,
             .get = [] (const Channel& channel) { return channel.effects.slot (slot).selector(); },
             .set = [] (Channel& channel, double value) { channel.effects.selectFx (slot, value); },
             .text = [] (const Channel& channel)
             { return std::string (FxType::name (channel.effects.slot (slot).selected())); } };
}

template <int slot>
constexpr Row fxStep (std::string_view name)
{
    return { .id = ofSlot (Id::fxStep1, slot),
             .name = name,
             .rest = 0.0,
             .get = [] (const Channel& channel)
             { return channel.effects.slot (slot).parameter (FxParameter::step); },
             .set = [] (Channel& channel, double value)
             { channel.effects.setFxParameter (slot, FxParameter::step, value); },
             .text = [] (const Channel& channel)
             { return channel.effects.fxParameterText (slot, FxParameter::step); } };
}

template <int slot>
constexpr Row fxOn (std::string_view name)
{
    return { .id = ofSlot (Id::fxOn1, slot),
             .name = name,
             .rest = 0.0,
             .isSwitch = true,
             .get = [] (const Channel& channel) -> double { return channel.effects.slot (slot).isOn(); },
             .set = [] (Channel& channel, double value)
             { channel.effects.setFxParameter (slot, FxParameter::bypass, value >= 0.5 ? 0.0 : 1.0); } };
}

inline constexpr Row table[] {
    knob<&StripKnobs::volume> (Id::volume, "Volume", 1.0),
    knob<&StripKnobs::gain> (Id::gain, "Gain", 0.5),
    knob<&StripKnobs::balance> (Id::balance, "Balance", 0.5),
    knob<&StripKnobs::eqLow> (Id::eqLow, "EQ Low", 0.5),
    knob<&StripKnobs::eqMid> (Id::eqMid, "EQ Mid", 0.5),
    knob<&StripKnobs::eqHigh> (Id::eqHigh, "EQ High", 0.5),
    button<&StripKnobs::killLow> (Id::killLow, "EQ Low Kill"),
    button<&StripKnobs::killMid> (Id::killMid, "EQ Mid Kill"),
    button<&StripKnobs::killHigh> (Id::killHigh, "EQ High Kill"),
    button<&StripKnobs::mute> (Id::mute, "Mute"),
    { .id = Id::filter,
      .name = "Filter",
      .rest = 0.5,
      .get = [] (const Channel& channel) { return channel.effects.filterValue(); },
      .set = [] (Channel& channel, double value) { channel.effects.setFilter (value); } },
    { .id = Id::fxDryWet,
      .name = "Dry/Wet",
      .rest = 0.0,
      .get = [] (const Channel& channel) { return channel.effects.dryWet(); },
      .set = [] (Channel& channel, double value) { channel.effects.setDryWet (value); },
      .text = [] (const Channel& channel) { return FxText::percent (channel.effects.dryWet()); } },
    { .id = Id::fxFrequency,
      .name = "FX Frequency",
      .rest = 0.5,
      .get = [] (const Channel& channel)
      { return channel.effects.slot (0).parameter (FxParameter::frequency); },
      .set = [] (Channel& channel, double value) { channel.effects.setFrequency (value); } },
    fxBand<BandSplit::low> (Id::fxLowBand, "FX Low Band"),
    fxBand<BandSplit::mid> (Id::fxMidBand, "FX Mid Band"),
    fxBand<BandSplit::high> (Id::fxHighBand, "FX High Band"),
    fxSelect<0> ("FX1 Select"),
    fxSelect<1> ("FX2 Select"),
    fxSelect<2> ("FX3 Select"),
    fxStep<0> ("FX1 Param"),
    fxStep<1> ("FX2 Param"),
    fxStep<2> ("FX3 Param"),
    fxOn<0> ("FX1 On/Off"),
    fxOn<1> ("FX2 On/Off"),
    fxOn<2> ("FX3 On/Off"),
    knob<&StripKnobs::volumeFactor> (Id::volumeFactor, "SmartKnob Volume", 1.0),
};

constexpr bool areInOrder()
{
    for (size_t i = 0; i < std::size (table); ++i)
        if (table[i].id != static_cast<Id> (i))
            return false;
    return std::size (table) == static_cast<size_t> (Id::count);
}
static_assert (areInOrder(), "a parameter's row stands at its number");
}

/** The row of a parameter. */
constexpr const ChannelParameterRow& row (ChannelParameter id) noexcept
{
    return Rows::table[static_cast<size_t> (id)];
}
}
