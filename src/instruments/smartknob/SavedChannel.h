#pragma once

#include "instruments/smartknob/SmartKnobRow.h"
#include "mixer/Channel.h"

#include <array>

/** The values of a channel that knobs may move, as they were before: those of all rows, and since a knob may move one step
    of a slot after the other while it goes through the effects, the steps of all effects of each slot. Under the callback
    lock. */
class SavedChannel
{
public:
    void capture (const Channel&) noexcept;

    /** Takes over one parameter that a hand has moved since. @param row   of the channel's */
    void capture (const Channel&, int row) noexcept;

    /** Puts all of it back. */
    void restore (Channel&) const noexcept;

private:
    static constexpr size_t slotCount = EffectRack::slotCount;

    std::array<double, SmartKnobRows::channelCount> values {};
    std::array<std::array<double, FxType::count>, slotCount> steps {};
};
