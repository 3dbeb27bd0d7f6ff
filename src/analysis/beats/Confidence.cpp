#include "analysis/beats/Confidence.h"

#include <algorithm>
#include <cmath>

namespace
{
/** A logistic regression of "usable for mixing" over the tuning songs of docs/accuracy.md, rounded. The phase tells most: of the
    grids that are wrong most are right in tempo or related to it, and stand on a place that is hardly better than another. */
constexpr double fitWeight = 5.4, marginWeight = 1.0, phaseWeight = 3.9, slipWeight = -1.0;

/** A grid that says 50 is right in three of four such songs: with fewer doubts too many wrong ones pass. */
constexpr double bias = -8.5;

/** Beyond these a sign tells no more. */
constexpr double mostPhase = 1.0, leastSlip = 0.005;

/** Only a hand is surer. */
constexpr int most = 99;
}

int GridSigns::confidence() const
{
    const auto slip = std::log (std::max (0.0, 1.0 - constancy) + leastSlip);
    const auto logit = fitWeight * tempoFit + marginWeight * tempoMargin
                       + phaseWeight * std::min (phaseMargin, mostPhase) + slipWeight * slip + bias;
    return std::min (most, static_cast<int> (std::lround (100.0 / (1.0 + std::exp (-logit)))));
}
