#pragma once

#include "support/Relaxed.h"

#include <cstdint>

/** The ways a deck's reading goes round. */
enum LoopMode : int8_t
{
    noLoop,
    beatLoop,  ///< of the loop size, from Loops::start
    manualLoop ///< from Loops::in to Loops::out
};

/** The loops of a deck's track. Positions are frames of the file. Written under the callback lock, read anywhere. */
struct Loops
{
    Relaxed<int8_t> mode { noLoop };
    Relaxed<int8_t> rolling; ///< leaving it, the deck goes on where the track would have been
    Relaxed<double> start;   ///< of the beat loop
    Relaxed<double> in, out; ///< of the manual loop
    Relaxed<int8_t> inSet, outSet;

    bool operator== (const Loops&) const noexcept = default;
};

/** The sizes of beat loop and loop move, by index: see loopBeats(). They stay with the deck when its track goes. */
struct LoopSizes
{
    Relaxed<int8_t> loop { 7 }, move { 5 };

    bool operator== (const LoopSizes&) const noexcept = default;
};
