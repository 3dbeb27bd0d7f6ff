#include "analysis/beats/onset/OnsetFunction.h"

#include <algorithm>
#include <cmath>

namespace
{
/** Long against a beat, short against a song's parts. */
constexpr double localSeconds = 4.0;

/** A flux that never moves by more than this fraction of a decibel is silence's, not music's. */
constexpr double leastSpread = 0.05;

/** Means over a window around each value; beyond its ends the function counts as 0. */
void localMeans (const std::vector<double>& in, int half, std::vector<double>& out)
{
    const auto size = static_cast<int> (in.size());
    out.resize (in.size());
    auto sum = 0.0;
    for (int i = 0; i < std::min (half, size); ++i)
        sum += in[static_cast<size_t> (i)];
    for (int i = 0; i < size; ++i)
    {
        if (i + half < size)
            sum += in[static_cast<size_t> (i + half)];
        if (i - half - 1 >= 0)
            sum -= in[static_cast<size_t> (i - half - 1)];
        out[static_cast<size_t> (i)] = sum / (2 * half + 1);
    }
}
}

OnsetFunction OnsetFunction::make (const COnsetTrackingIntern& stage, int firstFrame, int endFrame)
{
    OnsetFunction made;
    made.frameRate = stage.frameRate();
    // In music the flux is largest when an attack has come this far into the window (a click on its own is seen a
    // little earlier); what is left of the difference is taken out by the attack curve.
    made.origin = static_cast<double> (firstFrame) * COnsetTrackingIntern::hop + 0.625 * stage.frameLength();
    const auto size = static_cast<size_t> (std::max (0, endFrame - firstFrame));
    made.bands.resize (size);
    made.sum.assign (size, 0.0f);
    made.positive.resize (size);
    const auto half = static_cast<int> (localSeconds * made.frameRate / 2);
    std::vector<double> value (size), square (size), mean;
    for (size_t b = 0; b < COnsetTrackingIntern::numBands; ++b)
    {
        const auto flux = stage.flux (static_cast<int> (b)).subspan (static_cast<size_t> (firstFrame), size);
        std::transform (flux.begin(), flux.end(), value.begin(), [] (float f) { return std::sqrt (f); });
        localMeans (value, half, mean);
        for (size_t i = 0; i < size; ++i)
        {
            value[i] -= mean[i];
            square[i] = value[i] * value[i];
        }
        localMeans (square, half, mean);
        for (size_t i = 0; i < size; ++i)
        {
            const auto scaled =
                static_cast<float> (value[i] / (std::sqrt (std::max (0.0, mean[i])) + leastSpread));
            made.bands[i][b] = scaled;
            made.sum[i] += scaled;
        }
    }
    std::transform (made.sum.begin(), made.sum.end(), made.positive.begin(),
                    [] (float x) { return std::max (0.0f, x); });
    return made;
}
