#include "mixer/Equaliser.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <numbers>

namespace
{
constexpr double frequencies[Equaliser::bandCount] { 100.0, 1000.0, 10000.0 };
constexpr double quality = 1.5, gainStepDb = 0.02;

constexpr int glideFrames = 32; ///< between two steps of a glide
constexpr double glideDbPerSecond = 7800.0, atOnce = 1e9;

/** What all histories together must exceed to count as sound, 400 dB below full scale, and what they can't exceed. */
constexpr double silence = 1e-20, runAway = 1e30;

bool isSilent (const float* samples, int frames) noexcept
{
    return std::all_of (samples, samples + frames, [] (float sample) { return sample == 0.0f; });
}

float stored (double result) noexcept
{
    const auto sample = static_cast<float> (result);
    return std::abs (sample) >= FLT_MIN ? sample : 0.0f;
}
}

Equaliser::Biquad Equaliser::design (Band band, double gainDb, double sampleRate) noexcept
{
    const auto a = std::pow (10.0, gainDb * 0.025);
    const auto w = 2.0 * std::numbers::pi * std::min (frequencies[band] / sampleRate, 0.45);
    const auto cosine = std::cos (w), alpha = std::sin (w) / (2.0 * quality);

    if (band == mid)
    {
        const auto a0 = 1.0 + alpha / a;
        return { (1.0 + alpha * a) / a0, -2.0 * cosine / a0, (1.0 - alpha * a) / a0, -2.0 * cosine / a0,
                 (1.0 - alpha / a) / a0 };
    }

    // The cookbook's two shelves are one with the sign of the cosine turned, and with it that of the odd terms.
    const auto sign = band == low ? 1.0 : -1.0;
    const auto c = sign * cosine;
    const auto root = 2.0 * std::sqrt (std::max (a, 0.0001)) * alpha;
    const auto a0 = (a + 1.0) + (a - 1.0) * c + root;
    return { a * ((a + 1.0) - (a - 1.0) * c + root) / a0, sign * 2.0 * a * ((a - 1.0) - (a + 1.0) * c) / a0,
             a * ((a + 1.0) - (a - 1.0) * c - root) / a0, sign * -2.0 * ((a - 1.0) + (a + 1.0) * c) / a0,
             ((a + 1.0) + (a - 1.0) * c - root) / a0 };
}

void Equaliser::setGains (const Gains& gainsDb, double sampleRate) noexcept
{
    targets = gainsDb;
    if (sampleRate == rate)
        return;
    rate = sampleRate;
    computedFor = targets;
    for (const auto band : { low, mid, high })
        filters[band] = design (band, targets[band], rate);
}

bool Equaliser::mustGlide() const noexcept
{
    const auto hasMoved = [this] (Band band)
    { return std::abs (targets[band] - computedFor[band]) >= gainStepDb; };
    return hasMoved (low) || hasMoved (mid) || hasMoved (high);
}

void Equaliser::glide (double furthestDb) noexcept
{
    for (const auto band : { low, mid, high })
        if (const auto way = targets[band] - computedFor[band]; std::abs (way) >= gainStepDb)
        {
            computedFor[band] = std::abs (way) <= furthestDb
                                    ? targets[band]
                                    : computedFor[band] + std::copysign (furthestDb, way);
            filters[band] = design (band, computedFor[band], rate);
        }
}

void Equaliser::process (float* left, float* right, int frames) noexcept
{
    if (atRest)
    {
        if (isSilent (left, frames) && isSilent (right, frames))
            return;
        glide (atOnce); // there is no history to throw off
        atRest = false;
    }
    for (int done = 0; done < frames;)
    {
        auto piece = frames - done;
        if (untilGlide == 0 && mustGlide())
        {
            glide (glideDbPerSecond * glideFrames / rate);
            untilGlide = glideFrames;
        }
        if (untilGlide > 0)
        {
            piece = std::min (piece, untilGlide);
            untilGlide -= piece;
        }
        run (left + done, right + done, piece);
        done += piece;
    }
    settle();
}

inline Equaliser::Pair Equaliser::filter (const Biquad& biquad, Pair in, History& ofInput,
                                          const History& ofOutput) noexcept
{
    // The newest output comes last: only its product and difference lie between two samples.
    const auto out = biquad.b0 * in + biquad.b1 * ofInput.last + biquad.b2 * ofInput.beforeLast
                     - biquad.a2 * ofOutput.beforeLast - biquad.a1 * ofOutput.last;
    ofInput = { in, ofInput.last };
    return out;
}

bool Equaliser::isFlat() const noexcept
{
    // At 0 dB a band's output is its input once what it rang before has died away.
    if (computedFor != Gains {})
        return false;
    auto difference = 0.0;
    for (const auto& history : histories)
        for (const auto& values :
             { history.last - histories[0].last, history.beforeLast - histories[0].beforeLast })
            difference += std::abs (values[0]) + std::abs (values[1]);
    return difference < silence;
}

void Equaliser::run (float* left, float* right, int frames) noexcept
{
    if (frames > 1 && isFlat())
    {
        const History passed { Pair { left[frames - 1], right[frames - 1] },
                               Pair { left[frames - 2], right[frames - 2] } };
        histories.fill (passed);
        return;
    }
    const auto bands = filters;
    auto [in, afterLow, afterMid, afterHigh] = histories;
    for (int i = 0; i < frames; ++i)
    {
        const auto lowOut = filter (bands[low], Pair { left[i], right[i] }, in, afterLow);
        const auto midOut = filter (bands[mid], lowOut, afterLow, afterMid);
        const auto out = filter (bands[high], midOut, afterMid, afterHigh);
        afterHigh = { out, afterHigh.last };
        left[i] = stored (out[0]);
        right[i] = stored (out[1]);
    }
    histories = { in, afterLow, afterMid, afterHigh };
}

void Equaliser::settle() noexcept
{
    // Left to themselves, histories would go on for ever just above the smallest number: each one that is taken as 0
    // kicks the filter anew. What is no number at all would never leave them.
    auto sum = 0.0;
    for (const auto& history : histories)
        for (const auto& values : { history.last, history.beforeLast })
            sum += std::abs (values[0]) + std::abs (values[1]);
    if (!(sum > silence && sum < runAway))
        reset();
}

void Equaliser::reset() noexcept
{
    histories = {};
    untilGlide = 0;
    atRest = true;
}
