#pragma once

#include "support/Relaxed.h"

#include <cstdint>

/** Stands in for the crossfader of a deck. */
enum class MixOverride : int8_t
{
    none,
    punch, ///< full level
    cut    ///< silence
};

/** The knobs and buttons of a channel strip as the hands left them. Knobs and faders go from 0 to 1, buttons are 0 or 1;
    a new one stands at rest. Written under the callback lock or by single stores, read by any thread. */
struct StripKnobs
{
    Relaxed<double> volume { 1.0 }, gain { 0.5 }, balance { 0.5 };
    Relaxed<double> volumeFactor { 1.0 }; ///< what a SmartKnob leaves of the volume
    Relaxed<double> eqLow { 0.5 }, eqMid { 0.5 }, eqHigh { 0.5 };
    Relaxed<int8_t> killLow, killMid, killHigh;
    Relaxed<int8_t> mute;
    Relaxed<MixOverride> mixOverride { MixOverride::none };
};
