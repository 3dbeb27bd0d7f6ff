#include "analysis/beats/tempo/BeatFold.h"

#include <algorithm>
#include <cmath>
#include <numeric>

BeatFold::BeatFold (const OnsetFunction& onsets, const Pulse& pulse)
{
    std::array<double, numBins> sum {}, weight {};
    for (int i = 0; i < onsets.size(); ++i)
    {
        const auto beat = pulse.beatAt (onsets.positionOf (i));
        const auto place = (beat - std::floor (beat)) * numBins;
        const auto part = place - std::floor (place);
        const auto bin = static_cast<size_t> (place) % numBins;
        const auto next = (bin + 1) % numBins;
        const double value = onsets.positive[static_cast<size_t> (i)];
        sum[bin] += (1.0 - part) * value;
        weight[bin] += 1.0 - part;
        sum[next] += part * value;
        weight[next] += part;
    }
    for (size_t b = 0; b < numBins; ++b)
        sum[b] /= weight[b] + 1e-9;
    constexpr std::array<double, 5> kernel { 0.1, 0.2, 0.4, 0.2, 0.1 };
    for (size_t b = 0; b < numBins; ++b)
        for (size_t k = 0; k < kernel.size(); ++k)
            mean[b] += kernel[k] * sum[(b + k + numBins - kernel.size() / 2) % numBins];
}

double BeatFold::sharpness() const
{
    const auto total = std::accumulate (mean.begin(), mean.end(), 0.0);
    return total > 0.0 ? *std::max_element (mean.begin(), mean.end()) * numBins / total : 1.0;
}
