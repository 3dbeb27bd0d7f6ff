#include "analysis/stretch/PhaseTurner.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr float leastPeak = 1.0e-7f; ///< magnitude in the transform, which does not scale

/** A Hamming window's side lobes d bins away lie below 0.055 / d of the peak's magnitude. */
constexpr float leakage = 0.055f * 0.055f;

constexpr float risenBy = 4.0f; ///< in power, from the frame before an onset to the frame after
constexpr float relaxStep = 0.03f, relaxed = 1.0e-5f;

/** Remembers the strongest peak and the one that masks its surroundings most, walking through a spectrum. */
struct Masker
{
    int farBin = 0, nearBin = 0;
    float farPower = 0.0f, nearPower = 0.0f;

    static float mask (float power, int distance) noexcept
    {
        return power * leakage / static_cast<float> (distance * distance);
    }

    /** @returns true if a peak is more than leakage of those before it */
    bool passes (int bin, float power) noexcept
    {
        constexpr int ahead = 4;
        const auto farDistance = std::abs (bin - farBin), nearDistance = std::abs (bin - nearBin);
        if (power < mask (farPower, std::max (1, farDistance))
            || power < mask (nearPower, std::max (1, nearDistance)))
            return false;
        if (mask (power, ahead) >= mask (nearPower, nearDistance + ahead))
        {
            nearBin = bin;
            nearPower = power;
        }
        if (power >= farPower)
        {
            farBin = bin;
            farPower = power;
        }
        return true;
    }
};
}

PhaseTurner::PhaseTurner (int frameLength, std::span<const float> leaders)
    : length (frameLength),
      half (frameLength / 2),
      weights (leaders.begin(), leaders.end()),
      cosine (static_cast<size_t> (half + 1)),
      sine (static_cast<size_t> (half + 1)),
      peaks (static_cast<size_t> (half + 1)),
      turnCosine (static_cast<size_t> (half + 1)),
      turnSine (static_cast<size_t> (half + 1))
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

void PhaseTurner::findPeaks (const StretchSpectra& frame) noexcept
{
    const auto* const power = frame.power.data();
    int candidates = 0;
    Masker upward;
    for (int k = 1; k < half; ++k)
        if (power[k] > power[k - 1] && power[k] >= power[k + 1] && power[k] > leastPeak * leastPeak
            && upward.passes (k, power[k]))
            peaks[static_cast<size_t> (candidates++)] = k;

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
    if (hopOut == hopIn || peakCount == 0)
        return;

    constexpr auto pi = std::numbers::pi_v<float>;
    const auto step = 2.0f * pi / static_cast<float> (length);
    const auto difference = hopOut - hopIn;
    const auto share = static_cast<float> (difference) / static_cast<float> (hopIn);
    const auto mask = length - 1;

    for (int i = 0; i < peakCount; ++i)
    {
        const auto k = static_cast<size_t> (peaks[static_cast<size_t> (i)]);
        const auto mirrored = static_cast<size_t> (length) - k;
        float real = 0.0f, imaginary = 0.0f;
        for (size_t c = 0; c < weights.size(); ++c)
        {
            const auto *now = frame.bins[c].data(), *then = before.bins[c].data();
            real += weights[c] * (now[k] * then[k] + now[mirrored] * then[mirrored]);
            imaginary += weights[c] * (now[mirrored] * then[k] - now[k] * then[mirrored]);
        }
        // Whole turns are taken off in whole numbers, so that high bins are as exact as low ones.
        const auto bin = static_cast<int> (k);
        auto deviation = std::atan2 (imaginary, real) - step * static_cast<float> ((bin * hopIn) & mask);
        deviation -= 2.0f * pi * std::round (deviation / (2.0f * pi));
        const auto angle = step * static_cast<float> ((bin * difference) & mask) + share * deviation;
        const auto c = std::cos (angle), s = std::sin (angle);
        const auto oldCosine = cosine[k], oldSine = sine[k];
        const auto unit = 1.5f - 0.5f * (oldCosine * oldCosine + oldSine * oldSine);
        turnCosine[static_cast<size_t> (i)] = unit * (oldCosine * c - oldSine * s);
        turnSine[static_cast<size_t> (i)] = unit * (oldCosine * s + oldSine * c);
    }

    int from = 0;
    for (int i = 0; i < peakCount; ++i)
    {
        const auto index = static_cast<size_t> (i);
        const auto to = i + 1 < peakCount ? (peaks[index] + peaks[index + 1] + 1) / 2 : half + 1;
        std::fill (cosine.begin() + from, cosine.begin() + to, turnCosine[index]);
        std::fill (sine.begin() + from, sine.begin() + to, turnSine[index]);
        from = to;
    }
    isNone = false;
}

void PhaseTurner::resetRisen (const StretchSpectra& before, const StretchSpectra& after) noexcept
{
    if (isNone)
        return;
    const auto *then = before.power.data(), *now = after.power.data();
    for (int k = 1; k < half; ++k)
    {
        if (now[k] > risenBy * std::max (then[k], std::max (then[k - 1], then[k + 1])))
        {
            cosine[static_cast<size_t> (k)] = 1.0f;
            sine[static_cast<size_t> (k)] = 0.0f;
        }
    }
}

void PhaseTurner::relax() noexcept
{
    if (isNone)
        return;
    auto farthest = 0.0f;
    for (size_t k = 0; k < cosine.size(); ++k)
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
