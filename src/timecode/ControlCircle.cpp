#include "timecode/ControlCircle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr float tau = 2 * std::numbers::pi_v<float>;
constexpr float learningSeconds = 0.4f;
constexpr int fewestFrames = 200;

/** Power of the disc's primary channel against its carrier's: bursts stand in 0.55 of the slots. */
constexpr float burstPower = 1.14f;
} // namespace

void ControlCircle::prepare (const ControlMedium& medium, double sampleRate) noexcept
{
    rate = static_cast<float> (sampleRate);
    disc = medium.isOwnDisc();
    primaryIsLeft = medium.primaryIsLeft;
    secondarySign = medium.reversedPhase ? 1.0f : -1.0f;
    reset();
}

void ControlCircle::reset() noexcept
{
    highPassX = highPassY = {};
    slowX = slowY = slowEnergy = 0;
    squares = cleanSquares = otherSquares = products = 0;
    framesLearnt = 0;
    shear = amplitude = 0;
    stretch = disc ? 2.0f : 1.0f; // its right channel is half as loud
}

float ControlCircle::cornerHz (float x, float y, float hz, float energy) noexcept
{
    // The bits themselves reach below 60 Hz: only what exceeds them lifts the corner.
    const auto share = tau * 60 / rate;
    slowX += share * (x - slowX);
    slowY += share * (y - slowY);
    slowEnergy += 20 / rate * (slowX * slowX + slowY * slowY - slowEnergy);
    const auto lift = std::min (1.0f, slowEnergy / std::max (0.02f * energy, 1e-12f));
    return std::clamp ((0.01f + 0.1f * lift) * hz, 2.0f, 120.0f);
}

ControlCircle::Point ControlCircle::process (float left, float right, float hz, float energy,
                                             bool canLearn) noexcept
{
    auto x = primaryIsLeft ? left : right;
    auto rawY = secondarySign * (primaryIsLeft ? right : left);
    const auto share = std::min (0.5f, tau * cornerHz (x, rawY, hz, energy) / rate);
    x = highPassX.process (x, share);
    rawY = highPassY.process (rawY, share);

    Point point { x, (rawY - shear * x) * stretch, 0 };
    if (amplitude > 0)
        point.primary = x / amplitude;
    if (disc && amplitude > 0)
    {
        // A set slot adds half of sin 3a = sin a (4 cos^2 a - 1): the circle tells if it was set.
        const auto cosine = point.y / amplitude, squaredCosine = cosine * cosine;
        const auto sineIfSet = point.primary / (0.5f + 2 * squaredCosine);
        const auto errorIfClear = std::abs (point.primary * point.primary + squaredCosine - 1);
        if (errorIfClear > std::abs (sineIfSet * sineIfSet + squaredCosine - 1))
            point.x = sineIfSet * amplitude;
    }

    if (canLearn && hz > 100)
    {
        framesLearnt = std::min (framesLearnt + 1, static_cast<int> (learningSeconds * rate));
        const auto weight = 1.0f / static_cast<float> (std::max (framesLearnt, fewestFrames));
        const auto unstretched = point.y / stretch;
        // Before the circle is round, bursts are mistaken more than they mislead.
        const auto cleaned = static_cast<float> (framesLearnt) > 0.15f * rate ? point.x : x;
        squares += weight * (x * x - squares);
        cleanSquares += weight * (x * cleaned - cleanSquares);
        otherSquares += weight * (unstretched * unstretched - otherSquares);
        products += weight * (rawY * cleaned - products);
    }
    return point;
}

void ControlCircle::adapt (float energy) noexcept
{
    if (framesLearnt <= fewestFrames)
    {
        amplitude = std::sqrt (energy);
        return;
    }
    const auto carrierSquares = disc ? squares / burstPower : squares;
    shear = products / std::max (cleanSquares, 1e-20f);
    stretch = std::clamp (std::sqrt (carrierSquares / std::max (otherSquares, 1e-20f)), 0.1f, 10.0f);
    amplitude = std::sqrt (2 * carrierSquares);
}
