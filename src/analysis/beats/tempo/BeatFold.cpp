#include "analysis/beats/tempo/BeatFold.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

BeatFold::BeatFold (const OnsetFunction& onsets, const Pulse& pulse)
    : BeatFold (onsets, pulse, 0, onsets.size())
{
}

BeatFold::BeatFold (const OnsetFunction& onsets, const Pulse& pulse, int first, int end)
{
    std::array<double, numBins> sum {}, weight {};
    for (int i = first; i < end; ++i)
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

double BeatFold::likeness (const BeatFold& other) const
{
    const auto meanOf = [] (const auto& bins)
    { return std::accumulate (bins.begin(), bins.end(), 0.0) / static_cast<double> (numBins); };
    const auto ownMean = meanOf (mean), otherMean = meanOf (other.mean);
    auto product = 0.0, ownPower = 0.0, otherPower = 0.0;
    for (size_t b = 0; b < numBins; ++b)
    {
        const auto x = mean[b] - ownMean, y = other.mean[b] - otherMean;
        product += x * y;
        ownPower += x * x;
        otherPower += y * y;
    }
    const auto power = std::sqrt (ownPower * otherPower);
    return power > 0.0 ? product / power : 0.0;
}

double steadyShape (const OnsetFunction& onsets, const Pulse& pulse)
{
    constexpr auto stretchSeconds = 12.0;
    const auto stretches =
        std::max (1, static_cast<int> (onsets.size() / (stretchSeconds * onsets.frameRate)));
    const BeatFold whole (onsets, pulse);
    auto sum = 0.0;
    for (int i = 0; i < stretches; ++i)
    {
        const auto first = static_cast<int> (static_cast<int64_t> (onsets.size()) * i / stretches);
        const auto end = static_cast<int> (static_cast<int64_t> (onsets.size()) * (i + 1) / stretches);
        sum += BeatFold (onsets, pulse, first, end).likeness (whole);
    }
    return sum / stretches;
}
