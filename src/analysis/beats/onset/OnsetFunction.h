#pragma once

#include "analysis/beats/onset/OnsetTracking.h"

#include <array>
#include <span>
#include <vector>

/** The onset functions of a stretch of signal, made comparable: each band's flux, compressed, without its local mean
    and in units of its local spread, so that quiet parts and quiet bands have their say. */
struct OnsetFunction
{
    using Bands = std::array<float, COnsetTrackingIntern::numBands>;

    /** @param firstFrame, endFrame   frames of the onset stage */
    static OnsetFunction make (const COnsetTrackingIntern&, int firstFrame, int endFrame);

    double frameRate = 0.0; ///< values per second
    double origin = 0.0;    ///< position of the attack that value 0 tells of, in frames of the signal
    std::vector<Bands> bands;
    std::vector<float> sum;      ///< of the bands
    std::vector<float> positive; ///< the sum where it is above 0, else 0

    int size() const { return static_cast<int> (sum.size()); }

    /** Position in frames of the signal of a value, and the other way round. */
    double positionOf (double index) const { return origin + index * COnsetTrackingIntern::hop; }
    double indexOf (double position) const { return (position - origin) / COnsetTrackingIntern::hop; }
};
