#pragma once

#include "analysis/beats/bar/Chroma.h"

#include <array>
#include <span>
#include <vector>

/** The change of the sounding notes from one beat to the next. */
class HarmonicChange
{
public:
    /** @param profiles      of CChroma
        @param origin        position that profile 0 stands for, in frames of the signal
        @param profileStep   frames of the signal from profile to profile */
    HarmonicChange (std::span<const CChroma::Profile> profiles, double origin, double profileStep);

    /** The difference of the mean profiles of the `span` frames of the signal before a position and after it. */
    double at (double position, double span) const;

private:
    void sumUpTo (double position, CChroma::Profile&) const;

    double first = 0.0, step = 1.0;
    std::vector<CChroma::Profile> sums; ///< of all profiles before each
};
