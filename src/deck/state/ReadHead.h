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

    // The old audio that a jump fades out, along FadeCurve
    double declickPosition = 0.0;
    int32_t declickLeft = 0; ///< output frames for which it is still heard

    bool operator== (const ReadHead&) const noexcept = default;

    /** More output frames than any fade has: the reader limits it to the length of one at the engine's rate. */
    static constexpr int32_t wholeFade = std::numeric_limits<int32_t>::max();

    /** Lets the audio of a position fade out while the reading goes on elsewhere. */
    void declickFrom (double where) noexcept
    {
        declickPosition = where;
        declickLeft = wholeFade;
    }
};
