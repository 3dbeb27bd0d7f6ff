#include "analysis/stretch/StretchFactors.h"

#include <cmath>

namespace
{
struct HopRow
{
    float upToRatio;
    int shift, shiftHighQuality; ///< of the frame length
};

constexpr HopRow hopRows[] = {
    { 1.5f, 2, 3 }, { 2.2f, 3, 3 }, { 3.2f, 4, 4 }, { 4.2f, 5, 5 }, { 10.0f, 6, 6 }
};

struct FrameRow
{
    double belowRate;
    int length;
};

constexpr FrameRow frameRows[] = {
    { 32000.0, 2048 }, { 64000.0, 4096 }, { 128000.0, 8192 }, { 256000.0, 16384 }
};
constexpr int longestFrame = 32768;

/** Factors are floats: a pair of reciprocals multiplies to one within a few of their roundings. */
constexpr double unityTolerance = 1.0e-6;
}

std::optional<StretchFactors> StretchFactors::of (float stretch, float pitch, int frameLength,
                                                  bool highQuality) noexcept
{
    const auto product = stretch * pitch;
    const auto inRange =
        stretch > 0.0f && product >= static_cast<float> (least) && product <= static_cast<float> (greatest)
        && pitch >= static_cast<float> (1.0 / greatestPitch) && pitch <= static_cast<float> (greatestPitch);
    if (!inRange)
        return std::nullopt;

    StretchFactors factors { stretch, pitch };
    factors.ratio = factors.stretch * factors.pitch;
    if (std::abs (factors.ratio - 1.0) < unityTolerance)
    {
        factors.ratio = 1.0;
        factors.pitch = 1.0 / factors.stretch;
    }
    for (const auto& row : hopRows)
    {
        factors.hopIn = frameLength >> (highQuality ? row.shiftHighQuality : row.shift);
        if (product <= row.upToRatio)
            break;
    }
    factors.hopOut = 2 * static_cast<int> (factors.hopIn * factors.ratio / 2.0);
    return factors;
}

StretchFactors StretchFactors::unity (int frameLength) noexcept
{
    return of (1.0f, 1.0f, frameLength).value_or (StretchFactors {});
}

int stretchFrameLength (double sampleRate) noexcept
{
    for (const auto& row : frameRows)
        if (sampleRate < row.belowRate)
            return row.length;
    return longestFrame;
}
