#include "analysis/beats/onset/FirFilter.h"

#include <cmath>
#include <numbers>
#include <numeric>

namespace zplOnsetTracking
{
CFIRFilter CFIRFilter::smoother (int numTaps)
{
    CFIRFilter made;
    for (int i = 1; i <= numTaps; ++i)
        made.taps.push_back (
            static_cast<float> (1.0 - std::cos (2.0 * std::numbers::pi * i / (numTaps + 1))));
    const auto sum = std::accumulate (made.taps.begin(), made.taps.end(), 0.0f);
    for (auto& tap : made.taps)
        tap /= sum;
    return made;
}

std::vector<float> CFIRFilter::process (std::span<const float> in) const
{
    const auto half = static_cast<int> (taps.size()) / 2;
    const auto size = static_cast<int> (in.size());
    std::vector<float> out (in.size(), 0.0f);
    for (int i = 0; i < size; ++i)
        for (int t = std::max (0, half - i); t < static_cast<int> (taps.size()) && i + t - half < size; ++t)
            out[static_cast<size_t> (i)] +=
                taps[static_cast<size_t> (t)] * in[static_cast<size_t> (i + t - half)];
    return out;
}
}
