#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

/** The positions of beats: maps a number of beats, whole or not, to frames of the signal. */
class Pulse
{
public:
    /** An even pulse. */
    Pulse (double first, double periodFrames) : start (first), period (periodFrames) {}

    /** A pulse that follows the music.
        @param positions   of beats 0 upwards, at least two, rising; it goes on evenly at both ends */
    explicit Pulse (std::vector<double> positions) : beats (std::move (positions)) {}

    bool isEven() const { return beats.empty(); }

    double at (double beat) const
    {
        if (isEven())
            return start + beat * period;
        const auto i = segment (static_cast<double> (beat));
        return beats[i] + (beat - static_cast<double> (i)) * (beats[i + 1] - beats[i]);
    }

    /** Length of the beat at a number, in frames. */
    double periodAt (double beat) const
    {
        if (isEven())
            return period;
        const auto i = segment (beat);
        return beats[i + 1] - beats[i];
    }

    /** The number of the beat, whole or not, that falls on a position. */
    double beatAt (double position) const
    {
        if (isEven())
            return (position - start) / period;
        const auto after = std::upper_bound (beats.begin() + 1, beats.end() - 1, position);
        const auto i = static_cast<size_t> (after - beats.begin()) - 1;
        return static_cast<double> (i) + (position - beats[i]) / (beats[i + 1] - beats[i]);
    }

    /** The same pulse with its beats counted from another place. */
    Pulse movedBy (double beatsLater, double framesLater) const
    {
        if (isEven())
            return { start + beatsLater * period + framesLater, period };
        std::vector<double> moved;
        const auto count = static_cast<int> (beats.size());
        for (int k = 0; k < count; ++k)
            moved.push_back (at (k + beatsLater) + framesLater);
        return Pulse (std::move (moved));
    }

private:
    size_t segment (double beat) const
    {
        return static_cast<size_t> (
            std::clamp (std::floor (beat), 0.0, static_cast<double> (beats.size() - 2)));
    }

    double start = 0.0, period = 1.0;
    std::vector<double> beats;
};
