#pragma once

#include "mixer/Channel.h"

#include <string>
#include <string_view>

/** The address of a knob or switch of a channel, for whoever moves many of them, puts them back, or shows them. */
enum class ChannelParameter
{
    volume,
    gain,
    balance,
    eqLow,
    eqMid,
    eqHigh,
    killLow,
    killMid,
    killHigh,
    mute,
    filter,
    fxDryWet,    ///< of all three slots
    fxFrequency, ///< of all three slots
    fxLowBand,
    fxMidBand,
    fxHighBand,
    fxSelect1,
    fxSelect2,
    fxSelect3,
    fxStep1, ///< time or rate in steps, room of the reverb; of the selected effect
    fxStep2,
    fxStep3,
    fxOn1,
    fxOn2,
    fxOn3,
    volumeFactor, ///< beside the fader, for a SmartKnob
    count
};

/** All there is to say of a channel's parameter. A row keeps no value: the channel does. */
struct ChannelParameterRow
{
    ChannelParameter id;
    std::string_view name;
    double rest;                ///< the value that puts it out of the way
    bool isSwitch = false;      ///< 0 or 1, and nothing between
    bool isSingleStore = false; ///< set() needs no lock

    /** Any thread. */
    double (*get) (const Channel&);

    /** @param value   limited to 0 to 1. Any thread for a single store, else the audio thread, or under the callback lock. */
    void (*set) (Channel&, double value);

    /** A display's text in place of the value with two decimals; null or empty for none. Not on the audio thread. */
    std::string (*text) (const Channel&) = nullptr;
};
