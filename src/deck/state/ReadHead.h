#pragma once

#include <cstdint>
#include <limits>

/** A deck's read head: all that reading frames of the track changes.

    A plain value, so that the reader works on a copy in registers, a reading can be taken back, and the read-ahead map
    keeps one for each piece. Positions are frames of the file, rates frames of the file per output sample, signed.
    Audio thread, or a command under the callback lock. */
struct ReadHead
{
    double position = 0.0;
    double rate = 0.0;
    double linear = 0.0; ///< sum of rates, never looped
    double roll = 0.0;   ///< the place that would be read now if a rolling loop did not turn

    // The hand, which decays as frames are read
    double jog = 0.0;        ///< speed from the jog in scratch or at a stop
    double bend = 0.0;       ///< from the jog while playing, in ratio
    double nudgeAccel = 0.0; ///< rate added per sample while nudging at a stop

    // The old audio that a jump fades out
    double declickPosition = 0.0;
    double declickGain = 0.0;

    // The walk along the beat grid
    double nextBeatFrame = std::numeric_limits<double>::infinity(); ///< infinite past the last entry
    int32_t nextBeat = 0;       ///< the entry that the reading comes to next; found anew in each block
    int32_t framesSinceBar = 0; ///< output frames since the last even beat
    int32_t framesOfBar = 0;    ///< output frames between the two even beats before

    bool operator== (const ReadHead&) const noexcept = default;

    /** The factor of the old audio's gain from frame to frame, and the gain below which it is gone. */
    static constexpr double declickFade = 0.984, declickFloor = 0.001;

    /** Lets the audio of a position fade out while the reading goes on elsewhere. */
    void declickFrom (double where) noexcept
    {
        declickPosition = where;
        declickGain = 1.0;
    }
};
