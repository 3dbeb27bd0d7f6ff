#pragma once

#include "analysis/beats/onset/OnsetFunction.h"
#include "analysis/beats/onset/Pulse.h"

#include <array>

/** The onset function laid over one beat of a pulse, as the mean over all beats, a little smoothed. */
class BeatFold
{
public:
    /** Divides into halves, thirds and quarters of a beat. */
    static constexpr size_t numBins = 48;

    BeatFold (const OnsetFunction&, const Pulse&);

    /** The same of a part of the function: values from the first up to, not including, the end. */
    BeatFold (const OnsetFunction&, const Pulse&, int first, int end);

    /** @param bin   counted around, so any number will do */
    double at (size_t bin) const { return mean[bin % numBins]; }

    /** The fold's peak over its mean: the better a pulse fits, the higher; 1 for a pulse that fits nowhere. */
    double sharpness() const;

    /** Likeness to another fold: the correlation over their bins, -1 to 1; 0 if one is flat. */
    double likeness (const BeatFold&) const;

private:
    std::array<double, numBins> mean {};
};

/** The likeness of the folds of a song's stretches of 12 seconds to that of the whole, on average: 1 where the onsets keep their
    places in the beat, near 0 where a pulse slips through them. */
double steadyShape (const OnsetFunction&, const Pulse&);
