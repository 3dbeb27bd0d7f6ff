#pragma once

#include "mixer/ChannelParameter.h"

#include <array>
#include <optional>
#include <string_view>

/** The parameters of a deck that a knob can drive, in the order of the preset files. */
enum class SmartKnobRow
{
    eqLow,
    eqMid,
    eqHigh,
    filter,
    fx1Select,
    fx2Select,
    fx3Select,
    dryWet,
    fx1On,
    fx2On,
    fx3On,
    fxFrequency,
    fx1Param,
    fx2Param,
    fx3Param,
    volume,
    pluginOn,
    pluginDryWet,
    pluginParam1,
    pluginParam2,
    count
};

namespace SmartKnobRows
{
inline constexpr int count = static_cast<int> (SmartKnobRow::count);

/** Rows that belong to the channel; the four of the plug-in slot follow. */
inline constexpr int channelCount = static_cast<int> (SmartKnobRow::pluginOn);

struct Row
{
    std::string_view name;                     ///< in tables
    std::optional<ChannelParameter> parameter; ///< none for a row of the plug-in slot
    bool isOnFlag = false;                     ///< on above 0.5, off at it and below
};

inline constexpr std::array<Row, count> table {
    Row { "EQ Low", ChannelParameter::eqLow },
    Row { "EQ Mid", ChannelParameter::eqMid },
    Row { "EQ High", ChannelParameter::eqHigh },
    Row { "Filter", ChannelParameter::filter },
    Row { "FX1 Select", ChannelParameter::fxSelect1 },
    Row { "FX2 Select", ChannelParameter::fxSelect2 },
    Row { "FX3 Select", ChannelParameter::fxSelect3 },
    Row { "Dry/Wet", ChannelParameter::fxDryWet },
    Row { "FX1 On/Off", ChannelParameter::fxOn1, true },
    Row { "FX2 On/Off", ChannelParameter::fxOn2, true },
    Row { "FX3 On/Off", ChannelParameter::fxOn3, true },
    Row { "FX Frequency", ChannelParameter::fxFrequency },
    Row { "FX1 Param", ChannelParameter::fxStep1 },
    Row { "FX2 Param", ChannelParameter::fxStep2 },
    Row { "FX3 Param", ChannelParameter::fxStep3 },
    Row { "Volume", ChannelParameter::volumeFactor },
    Row { "VST On/Off", {} },
    Row { "VST Dry/Wet", {} },
    Row { "VST Param 1", {} },
    Row { "VST Param 2", {} },
};

constexpr const Row& row (int index) noexcept
{
    return table[static_cast<size_t> (index)];
}

/** The row that drives a parameter of the channel. @returns -1 for a parameter that no knob drives */
constexpr int rowOf (ChannelParameter parameter) noexcept
{
    for (int i = 0; i < channelCount; ++i)
        if (row (i).parameter == parameter)
            return i;
    return -1;
}
}
