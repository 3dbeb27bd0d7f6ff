#include "instruments/smartknob/SmartKnobs.h"

#include "mixer/ChannelParameters.h"

#include <algorithm>

namespace
{
/** The time of a curve at a knob's end. */
constexpr double curveLength = 4.0;

/** 0 for what is no number. */
double limited (double value) noexcept
{
    return value > 0.0 ? std::min (value, 1.0) : 0.0;
}
}

SmartKnobs::SmartKnobs (DeckWorld& w, Channels& c) : world (w), channels (c)
{
    for (auto& knob : knobs)
        knob = std::make_unique<Knob> (world.callbackLock);
}

//======================================================================================================================
// Hands

void SmartKnobs::setSmartKnobOn (int deck, int knob, bool on)
{
    if (!isKnob (deck, knob))
        return;
    const CallbackLock lock (world.callbackLock, "smart knob");
    const auto* player = world.deck (deck);
    const auto hasTrack = player != nullptr && player->track.loadedFrames > 0;
    if (isOn (deck, knob) == on || (on && !hasTrack))
        return;
    if (on)
    {
        captureSmartKnob (deck, knob);
        takeBackFromHand (deck);
    }
    else
    {
        restoreSmartKnob (deck, knob);
    }
    at (deck, knob).smartKnobOn = on;
    rowsOf (deck).isDue = true;
}

void SmartKnobs::setSmartKnobValue (int deck, int knob, double value) noexcept
{
    if (isKnob (deck, knob))
        at (deck, knob).smartKnobValue = limited (value);
}

bool SmartKnobs::isOn (int deck, int knob) const noexcept
{
    return isKnob (deck, knob) && at (deck, knob).smartKnobOn != 0;
}

double SmartKnobs::value (int deck, int knob) const noexcept
{
    return isKnob (deck, knob) ? at (deck, knob).smartKnobValue.get() : 0.0;
}

int SmartKnobs::holderOf (int deck, int row) const noexcept
{
    if (!isKnob (deck, 0) || row < 0 || row >= SmartKnobRows::count
        || rowsOf (deck).isWithHand[static_cast<size_t> (row)] != 0)
        return -1;
    for (int knob = knobsPerDeck - 1; knob >= 0; --knob)
        if (isOn (deck, knob) && bank (deck, knob).isEnabled (row))
            return knob;
    return -1;
}

bool SmartKnobs::holds (int deck, ChannelParameter parameter) const noexcept
{
    return holderOf (deck, SmartKnobRows::rowOf (parameter)) >= 0;
}

std::optional<double> SmartKnobs::drivenValue (int deck, int row) const noexcept
{
    if (holderOf (deck, row) < 0)
        return {};
    return rowsOf (deck).driven[static_cast<size_t> (row)].get();
}

void SmartKnobs::handMoved (int deck, ChannelParameter parameter) noexcept
{
    const auto row = SmartKnobRows::rowOf (parameter);
    if (row < 0 || !isAnyOn (deck))
        return;
    auto& own = rowsOf (deck);
    own.saved.capture (channelOf (deck), row);
    if (holderOf (deck, row) >= 0)
        own.isWithHand[static_cast<size_t> (row)] = 1;
    own.isDue = true; // an effect that a hand has chosen takes the step of a row that is still held
}

void SmartKnobs::handMoved (int deck, SmartKnobRow slotRow) noexcept
{
    const auto row = static_cast<int> (slotRow);
    if (holderOf (deck, row) >= 0)
        rowsOf (deck).isWithHand[static_cast<size_t> (row)] = 1;
}

void SmartKnobs::moveBeside (int deck, ChannelParameter parameter, double value) noexcept
{
    const auto row = SmartKnobRows::rowOf (parameter);
    if (holderOf (deck, row) >= 0)
        return;
    ChannelParameters::row (parameter).set (channelOf (deck), value);
    if (row >= 0 && isAnyOn (deck))
        rowsOf (deck).saved.capture (channelOf (deck), row);
}

void SmartKnobs::captureSmartKnob (int deck, int knob) noexcept
{
    if (!isOn (deck, 1 - knob))
        rowsOf (deck).saved.capture (channelOf (deck));
}

void SmartKnobs::restoreSmartKnob (int deck, int knob) noexcept
{
    if (!isOn (deck, 1 - knob))
        rowsOf (deck).saved.restore (channelOf (deck));
}

void SmartKnobs::takeBackFromHand (int deck) noexcept
{
    for (auto& each : rowsOf (deck).isWithHand)
        each = 0;
}

//======================================================================================================================
// Contents

std::string SmartKnobs::name (int deck, int knob) const
{
    const std::scoped_lock lock (loading);
    return isKnob (deck, knob) ? at (deck, knob).name : std::string();
}

SmartKnobPreset SmartKnobs::preset (int deck, int knob) const
{
    SmartKnobPreset copy;
    if (!isKnob (deck, knob))
        return copy;
    copy.name = name (deck, knob);
    const auto& source = bank (deck, knob);
    for (int row = 0; row < SmartKnobRows::count; ++row)
        copy.rows.push_back ({ source.copy (row), source.isVisible (row), source.isEnabled (row) });
    return copy;
}

void SmartKnobs::loadSmartKnobPreset (int deck, int knob, const SmartKnobPreset& preset, int rowLimit)
{
    if (!isKnob (deck, knob))
        return;
    const std::scoped_lock loads (loading);
    auto& own = at (deck, knob);
    const auto count = std::min ({ static_cast<int> (preset.rows.size()), rowLimit, SmartKnobRows::count });
    std::vector<Envelope> curves;
    for (int row = 0; row < count; ++row)
    {
        own.bank.setEnabled (row, false); // until the channel is back and the new curve there
        curves.push_back (preset.rows[static_cast<size_t> (row)].envelope);
    }
    own.bank.replace (0, std::move (curves));
    if (isOn (deck, knob))
    {
        const CallbackLock lock (world.callbackLock, "smart knob preset");
        restoreSmartKnob (deck, knob);
        takeBackFromHand (deck);
    }
    for (int row = 0; row < count; ++row)
    {
        own.bank.setVisible (row, preset.rows[static_cast<size_t> (row)].visible);
        own.bank.setEnabled (row, preset.rows[static_cast<size_t> (row)].enabled);
    }
    own.name = preset.name;
    own.loads += 1;
}

uint32_t SmartKnobs::revision (int deck, int knob) const noexcept
{
    return isKnob (deck, knob) ? at (deck, knob).loads + bank (deck, knob).revision() : 0;
}

//======================================================================================================================
// The block

bool SmartKnobs::hasMoved (int deck) noexcept
{
    auto moved = rowsOf (deck).isDue.get();
    rowsOf (deck).isDue = false;
    for (int knob = 0; knob < knobsPerDeck; ++knob)
    {
        auto& own = at (deck, knob);
        const double value = own.smartKnobValue;
        const auto revision = own.bank.revision();
        moved = moved || value != own.followedValue || revision != own.followedRevision;
        own.followedValue = value;
        own.followedRevision = revision;
    }
    return moved;
}

void SmartKnobs::drive (int deck, int row, double value) noexcept
{
    const auto& target = SmartKnobRows::row (row);
    const auto wanted = target.isOnFlag ? (value > 0.5 ? 1.0 : 0.0) : value;
    rowsOf (deck).driven[static_cast<size_t> (row)] = wanted;
    if (!target.parameter)
        return; // the slot's stage asks for it
    const auto& parameter = ChannelParameters::row (*target.parameter);
    if (auto& channel = channelOf (deck); parameter.get (channel) != wanted)
        parameter.set (channel, wanted);
}

void SmartKnobs::run (int deck) noexcept
{
    if (!hasMoved (deck) || !isAnyOn (deck))
        return;
    for (int row = 0; row < SmartKnobRows::count; ++row)
        if (const auto holder = holderOf (deck, row); holder >= 0)
        {
            const auto& knob = at (deck, holder);
            drive (deck, row, limited (knob.bank.audible (row).evaluate (knob.followedValue * curveLength)));
        }
}
