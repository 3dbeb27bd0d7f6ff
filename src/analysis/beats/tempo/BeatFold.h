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

    /** @param bin   counted around, so any number will do */
    double at (size_t bin) const { return mean[bin % numBins]; }

    /** The fold's peak over its mean: the better a pulse fits, the higher; 1 for a pulse that fits nowhere. */
    double sharpness() const;

private:
    std::array<double, numBins> mean {};
};
