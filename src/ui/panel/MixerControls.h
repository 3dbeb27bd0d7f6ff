#pragma once

#include "support/language/Translate.h"
#include "ui/panel/ControlSpec.h"

/** The controls of a deck's channel, wherever the mixer shows them. */
namespace MixerControls
{
using Kind = ControlSpec::Kind;
using Lit = ControlSpec::Lit;
using Words = ControlSpec::Words;

// clang-format off
inline constexpr ControlSpec
    gain   { Kind::knob,  "_gainSlider",   "GAIN_",    N_ ("GAIN"),   N_ ("Gain"), Lit::plain, "", true, Words::decibels },
    high   { Kind::knob,  "_eqHighSlider", "EQ_HIGH_", "",       N_ ("High band of the equaliser"), Lit::plain, "", true },
    mid    { Kind::knob,  "_eqMidSlider",  "EQ_MID_",  "",       N_ ("Mid band of the equaliser"), Lit::plain, "", true },
    low    { Kind::knob,  "_eqLowSlider",  "EQ_LOW_",  "",       N_ ("Low band of the equaliser"), Lit::plain, "", true },
    filter { Kind::knob,  "_filterSlider", "FILTER_",  N_ ("FILTER"), N_ ("Filter: low-pass to the left, high-pass to the right"), Lit::plain, "", true },
    volume { Kind::fader, "_volumeSlider", "VOLUME_",  "fader_128", N_ ("Volume") },
    pfl    { Kind::sign,  "_pflButton",    "PFL_",     "pfl_40", N_ ("PFL: sends this channel to the headphones before its fader") },
    killHigh { Kind::text, "_killHighButton", "EQ_HIGH_KILL_", "H", N_ ("Kills the high band: lit, it is cut out of the sound"), Lit::notice },
    killMid  { Kind::text, "_killMidButton",  "EQ_MID_KILL_",  "M", N_ ("Kills the mid band: lit, it is cut out of the sound"), Lit::notice },
    killLow  { Kind::text, "_killLowButton",  "EQ_LOW_KILL_",  "L", N_ ("Kills the low band: lit, it is cut out of the sound"), Lit::notice },
    assignLeft  { Kind::text, "_assignLeftButton",  "CROSSFADER_ASSIGN_LEFT_",  "L", N_ ("Assigns the channel to the left side of the crossfader"), Lit::deck },
    assignRight { Kind::text, "_assignRightButton", "CROSSFADER_ASSIGN_RIGHT_", "R", N_ ("Assigns the channel to the right side of the crossfader"), Lit::deck };
// clang-format on
}
