#include "analysis/stretch/PhaseTurner.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr float leastPeak = 1.0e-7f; ///< magnitude in the transform, which does not scale

/** A Hamming window's side lobes d bins away lie below 0.055 / d of the peak's magnitude. */
constexpr float leakage = 0.055f * 0.055f;

constexpr float risenBy = 2.0f; ///< in power, from the frame before an onset to the frame after
constexpr float relaxStep = 0.03f, relaxed = 1.0e-5f;

/** Remembers the strongest peak and the one that masks its surroundings most, walking through a spectrum. */
struct Masker
{
    float farBin = 0.0f, nearBin = 0.0f;
    float farLeak = 0.0f, nearLeak = 0.0f; ///< times the distance's inverse square: the power that may leak

    /** @returns true if a peak is more than leakage of those before it */
    bool passes (int index, float power) noexcept
    {
        constexpr float ahead = 4.0f;
        const auto bin = static_cast<float> (index);
        const auto farDistance = bin - farBin, nearDistance = bin - nearBin;
        const auto isBelowFar = power * farDistance * farDistance < farLeak;
        const auto isBelowNear = power * nearDistance * nearDistance < nearLeak;
        if (isBelowFar | isBelowNear) // one guess for the processor, not two
            return false;
        const auto leak = power * leakage, later = std::abs (nearDistance) + ahead;
        if (leak * later * later >= nearLeak * ahead * ahead)
        {
            nearBin = bin;
            nearLeak = leak;
        }
        if (leak >= farLeak)
        {
            farBin = bin;
            farLeak = leak;
        }
        return true;
    }
};

using Lanes [[gnu::vector_size (16)]] = float;
using WholeLanes [[gnu::vector_size (16)]] = int;
using LanesAnywhere [[gnu::vector_size (16), gnu::aligned (4), gnu::may_alias]] = float;
constexpr int lanes = 4;
constexpr auto pi = std::numbers::pi_v<float>;

Lanes rounded (Lanes x) noexcept
{
    return __builtin_convertvector(
        __builtin_convertvector(x + (x < 0.0f ? -0.5f : 0.5f + Lanes {}), WholeLanes), Lanes);
}

Lanes magnitude (Lanes x) noexcept
{
    return x < 0.0f ? -x : x;
}

/** The angle of a point, within 0.00001; 0 for the origin. A minimax polynomial of the arc's tangent up to 1. */
Lanes angleOf (Lanes real, Lanes imaginary) noexcept
{
    const auto x = magnitude (real), y = magnitude (imaginary);
    const auto isSteep = y > x;
    const auto larger = isSteep ? y : x;
    const auto t = (isSteep ? x : y) / (larger > 0.0f ? larger : 1.0f + Lanes {}), s = t * t;
    auto angle = t
                 * (0.99997726f
                    + s
                          * (-0.33262347f
                             + s * (0.19354346f + s * (-0.11643287f + s * (0.05265332f - s * 0.01172120f)))));
    angle = isSteep ? 0.5f * pi - angle : angle;
    angle = real < 0.0f ? pi - angle : angle;
    return imaginary < 0.0f ? -angle : angle;
}

/** Cosine and sine within 0.000001, by the series of the half angle. */
void pointAt (Lanes angle, Lanes& cosine, Lanes& sine) noexcept
{
    const auto half = 0.5f * (angle - 2.0f * pi * rounded (angle * (0.5f / pi))), s = half * half;
    const auto c =
        1.0f
        - s * (0.5f - s * (4.1666668e-2f - s * (1.3888889e-3f - s * (2.4801587e-5f - s * 2.755732e-7f))));
    const auto n =
        half * (1.0f - s * (1.6666667e-1f - s * (8.3333338e-3f - s * (1.9841270e-4f - s * 2.7557319e-6f))));
    cosine = c * c - n * n;
    sine = 2.0f * c * n;
}

LanesAnywhere& lanesAt (std::vector<float>& values, int index) noexcept
{
    return *reinterpret_cast<LanesAnywhere*> (values.data() + index);
}
}

PhaseTurner::PhaseTurner (int frameLength, std::span<const float> leaders)
    : length (frameLength),
      half (frameLength / 2),
      weights (leaders.begin(), leaders.end()),
      cosine (static_cast<size_t> (half + 1 + 2 * lanes)),
      sine (static_cast<size_t> (half + 1 + 2 * lanes)),
      peaks (static_cast<size_t> (half + 1 + lanes)),
      turnCosine (static_cast<size_t> (half + lanes)),
      turnSine (static_cast<size_t> (half + lanes)),
      real (static_cast<size_t> (half + lanes)),
      imaginary (static_cast<size_t> (half + lanes)),
      expected (static_cast<size_t> (half + lanes)),
      surplus (static_cast<size_t> (half + lanes))
{
    reset();
}

void PhaseTurner::reset() noexcept
{
    std::fill (cosine.begin(), cosine.end(), 1.0f);
    std::fill (sine.begin(), sine.end(), 0.0f);
    isNone = true;
}

void PhaseTurner::addPower (StretchSpectra& frame, int channel) const noexcept
{
    if (channel >= static_cast<int> (weights.size()))
        return;
    const auto* const __restrict x = frame.bins[static_cast<size_t> (channel)].data();
    auto* const __restrict power = frame.power.data();
    const auto weight = weights[static_cast<size_t> (channel)];
    if (channel == 0)
        std::fill (frame.power.begin(), frame.power.end(), 0.0f);
    power[0] += weight * x[0] * x[0];
    power[half] += weight * x[half] * x[half];
    for (int k = 1; k < half; ++k)
        power[k] += weight * (x[k] * x[k] + x[length - k] * x[length - k]);
}

double PhaseTurner::totalPower (const StretchSpectra& frame) const noexcept
{
    // From bin 0 to half - 1, and what lies behind the last bin is zero.
    Lanes sum {};
    for (int k = 0; k < half; k += lanes)
        sum += Lanes (*reinterpret_cast<const LanesAnywhere*> (frame.power.data() + k));
    const auto all = static_cast<double> ((sum[0] + sum[1]) + (sum[2] + sum[3]));
    return 2.0 * all - static_cast<double> (frame.power[0])
           + static_cast<double> (frame.power[static_cast<size_t> (half)]);
}

void PhaseTurner::findPeaks (const StretchSpectra& frame) noexcept
{
    const auto* const power = frame.power.data();
    auto* const bins = peaks.data();
    const auto floor = leastPeak * leastPeak + Lanes {};
    auto at = [power] (int k) -> Lanes { return *reinterpret_cast<const LanesAnywhere*> (power + k); };

    // Without a branch for each bin, which noise would make the processor guess wrong.
    int maxima = 0;
    for (int k = 2; k < half - 1; k += lanes)
    {
        const auto here = at (k);
        const WholeLanes isPeak = (here > at (k - 1)) & (here >= at (k + 1)) & (here > at (k - 2))
                                  & (here >= at (k + 2)) & (here > floor);
        for (int lane = 0; lane < lanes; ++lane)
        {
            bins[maxima] = k + lane;
            maxima -= isPeak[lane];
        }
    }
    while (maxima > 0 && bins[maxima - 1] >= half)
        --maxima;

    int candidates = 0;
    Masker upward;
    for (int i = 0; i < maxima; ++i)
    {
        const auto bin = bins[i];
        bins[candidates] = bin;
        candidates += upward.passes (bin, power[bin]) ? 1 : 0;
    }

    // The same downward; what passes is moved to the end, then back to the start.
    Masker downward;
    auto kept = candidates;
    for (int i = candidates; --i >= 0;)
        if (const auto bin = peaks[static_cast<size_t> (i)]; downward.passes (bin, power[bin]))
            peaks[static_cast<size_t> (--kept)] = bin;
    peakCount = candidates - kept;
    std::copy_n (peaks.begin() + kept, peakCount, peaks.begin());
}

void PhaseTurner::propagate (const StretchSpectra& frame, const StretchSpectra& before, int hopIn,
                             int hopOut) noexcept
{
    turnOn (frame, before, hopIn, hopOut - hopIn);
}

void PhaseTurner::takeTurns (const PhaseTurner& other) noexcept
{
    std::copy (other.cosine.begin(), other.cosine.end(), cosine.begin());
    std::copy (other.sine.begin(), other.sine.end(), sine.begin());
    isNone = other.isNone;
}

void PhaseTurner::turnOn (const StretchSpectra& frame, const StretchSpectra& before, int hopIn,
                          double samples) noexcept
{
    if (samples == 0.0 || peakCount == 0)
        return;

    const auto step = 2.0f * pi / static_cast<float> (length);
    const auto share = static_cast<float> (samples) / static_cast<float> (hopIn);
    const auto whole = static_cast<int> (std::floor (samples));
    const auto fractionStep = step * static_cast<float> (samples - whole);
    const auto mask = length - 1;

    for (int i = 0; i < peakCount; ++i)
    {
        const auto index = static_cast<size_t> (i);
        const auto k = static_cast<size_t> (peaks[index]);
        const auto mirrored = static_cast<size_t> (length) - k;
        float realSum = 0.0f, imaginarySum = 0.0f;
        for (size_t c = 0; c < weights.size(); ++c)
        {
            const auto *now = frame.bins[c].data(), *then = before.bins[c].data();
            realSum += weights[c] * (now[k] * then[k] + now[mirrored] * then[mirrored]);
            imaginarySum += weights[c] * (now[mirrored] * then[k] - now[k] * then[mirrored]);
        }
        real[index] = realSum;
        imaginary[index] = imaginarySum;
        // Whole turns are taken off in whole numbers, so that high bins are as exact as low ones.
        expected[index] = step * static_cast<float> ((peaks[index] * hopIn) & mask);
        surplus[index] = step * static_cast<float> ((peaks[index] * whole) & mask)
                         + fractionStep * static_cast<float> (peaks[index]);
        turnCosine[index] = cosine[k];
        turnSine[index] = sine[k];
    }
    for (int i = 0; i < peakCount; i += lanes)
    {
        auto deviation = angleOf (lanesAt (real, i), lanesAt (imaginary, i)) - lanesAt (expected, i);
        deviation -= 2.0f * pi * rounded (deviation * (0.5f / pi));
        Lanes c, s;
        pointAt (lanesAt (surplus, i) + share * deviation, c, s);
        const Lanes oldCosine = lanesAt (turnCosine, i), oldSine = lanesAt (turnSine, i);
        const auto unit = 1.5f - 0.5f * (oldCosine * oldCosine + oldSine * oldSine);
        const auto newCosine = unit * (oldCosine * c - oldSine * s),
                   newSine = unit * (oldCosine * s + oldSine * c);
        // A NaN of the input must not stay.
        const auto isNumber = magnitude (newCosine) + magnitude (newSine) < 2.0f;
        lanesAt (turnCosine, i) = isNumber ? newCosine : 1.0f + Lanes {};
        lanesAt (turnSine, i) = isNumber ? newSine : Lanes {};
    }

    int from = 0;
    for (int i = 0; i < peakCount; ++i)
    {
        const auto index = static_cast<size_t> (i);
        const auto to = i + 1 < peakCount ? (peaks[index] + peaks[index + 1] + 1) / 2 : half + 1;
        // In whole lanes: what goes over the end of a region is overwritten by the next one. Most are not longer than two.
        const auto c = turnCosine[index] + Lanes {}, sn = turnSine[index] + Lanes {};
        lanesAt (cosine, from) = lanesAt (cosine, from + lanes) = c;
        lanesAt (sine, from) = lanesAt (sine, from + lanes) = sn;
        for (int k = from + 2 * lanes; k < to; k += lanes)
        {
            lanesAt (cosine, k) = c;
            lanesAt (sine, k) = sn;
        }
        from = to;
    }
    isNone = false;
}

void PhaseTurner::resetRisen (const StretchSpectra& before, const StretchSpectra& after) noexcept
{
    if (isNone)
        return;
    auto at = [] (const StretchSpectra& of, int k) -> Lanes
    { return *reinterpret_cast<const LanesAnywhere*> (of.power.data() + k); };
    auto larger = [] (Lanes a, Lanes b) { return a > b ? a : b; };
    for (int k = 1; k < half; k += lanes)
    {
        const auto then = larger (at (before, k), larger (at (before, k - 1), at (before, k + 1)));
        const auto hasRisen = at (after, k) > risenBy * then;
        lanesAt (cosine, k) = hasRisen ? 1.0f + Lanes {} : Lanes (lanesAt (cosine, k));
        lanesAt (sine, k) = hasRisen ? Lanes {} : Lanes (lanesAt (sine, k));
    }
}

void PhaseTurner::relax() noexcept
{
    if (isNone)
        return;
    auto farthest = 0.0f;
    for (size_t k = 0; k <= static_cast<size_t> (half); ++k)
    {
        // A bin that is turned half round has no nearer side; the sine's sign gives it one.
        const auto c = cosine[k] + relaxStep,
                   s = sine[k] + std::copysign (1.0e-3f * std::max (0.0f, -c), sine[k]);
        const auto unit = 1.0f / std::sqrt (c * c + s * s);
        cosine[k] = c * unit;
        sine[k] = s * unit;
        farthest = std::max (farthest, std::abs (sine[k]) + 1.0f - cosine[k]);
    }
    if (farthest < relaxed)
        reset();
}

void PhaseTurner::turn (float* __restrict out, const float* __restrict in, int lastBin) const noexcept
{
    const auto end = std::min (lastBin + 1, half);
    if (isNone)
    {
        std::copy_n (in, length, out);
    }
    else
    {
        out[0] = in[0];
        out[half] = in[half];
        const auto* const __restrict c = cosine.data(), * const __restrict s = sine.data();
        for (int k = 1; k < end; ++k)
        {
            const auto real = in[k], imaginary = in[length - k];
            out[k] = real * c[k] - imaginary * s[k];
            out[length - k] = real * s[k] + imaginary * c[k];
        }
    }
    if (lastBin < half)
        std::fill (out + end, out + length - end + 1, 0.0f);
}
