#include "instruments/smartknob/SavedChannel.h"

#include "mixer/ChannelParameters.h"

namespace
{
/** The slot whose step a row moves. @returns -1 for another row */
int slotOfStep (int row) noexcept
{
    const auto slot = row - static_cast<int> (SmartKnobRow::fx1Param);
    return slot >= 0 && slot < EffectRack::slotCount ? slot : -1;
}

const ChannelParameterRow& parameterOf (int row) noexcept
{
    return ChannelParameters::row (*SmartKnobRows::row (row).parameter);
}
}

void SavedChannel::capture (const Channel& channel) noexcept
{
    for (int row = 0; row < SmartKnobRows::channelCount; ++row)
        capture (channel, row);
    for (size_t slot = 0; slot < slotCount; ++slot)
        for (int effect = 0; effect < FxType::count; ++effect)
            steps[slot][static_cast<size_t> (effect)] =
                channel.effects.slot (static_cast<int> (slot)).step (effect);
}

void SavedChannel::capture (const Channel& channel, int row) noexcept
{
    const auto value = parameterOf (row).get (channel);
    values[static_cast<size_t> (row)] = value;
    if (const auto slot = slotOfStep (row); slot >= 0)
        steps[static_cast<size_t> (slot)][static_cast<size_t> (channel.effects.slot (slot).selected())] =
            value;
}

void SavedChannel::restore (Channel& channel) const noexcept
{
    for (int row = 0; row < SmartKnobRows::channelCount; ++row)
        if (const auto& parameter = parameterOf (row);
            slotOfStep (row) < 0 && parameter.get (channel) != values[static_cast<size_t> (row)])
            parameter.set (channel, values[static_cast<size_t> (row)]);
    for (size_t slot = 0; slot < slotCount; ++slot)
        for (int effect = 0; effect < FxType::count; ++effect)
            channel.effects.setStep (static_cast<int> (slot), effect,
                                     steps[slot][static_cast<size_t> (effect)]);
}
