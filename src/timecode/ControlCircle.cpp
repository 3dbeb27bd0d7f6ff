#include "timecode/ControlCircle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr float tau = 2 * std::numbers::pi_v<float>;
constexpr float learningSeconds = 0.4f;
constexpr int fewestFrames = 200;

constexpr float clipFrom = 0.985f, mostClipped = 0.05f;
constexpr float discStretch = 2; // its right channel is half as loud
constexpr float humLeft = 0.15f; // share of the hum that may come through

/** Power of the disc's primary channel against its carrier's: bursts stand in 0.55 of the slots. */
constexpr float burstPower = 1.14f;
} // namespace

void ControlCircle::prepare (const ControlMedium& medium, double sampleRate, int framesInTick) noexcept
{
    rate = static_cast<float> (sampleRate);
    frames = framesInTick;
    perFrame = 1 / static_cast<float> (frames);
    disc = medium.isOwnDisc();
    primaryIsLeft = medium.primaryIsLeft;
    secondarySign = medium.reversedPhase ? 1.0f : -1.0f;
    hum.prepare (sampleRate, framesInTick);
    for (int i = 0; i < TickLanes::size; ++i)
        inTick[i] = i < frames ? 1.0f : 0.0f;
    reset();
}

void ControlCircle::reset() noexcept
{
    hum.reset();
    lead = 0;
    highPassX = highPassY = {};
    slowX = slowY = slowEnergy = 0;
    rumbleX = rumbleY = rumbleXSquare = rumbleYSquare = 0;
    rumbleTicks = 0;
    squares = otherSquares = products = 0;
    framesLearnt = 0;
    clippedShare = 0;
    shear = amplitude = 0;
    stretch = disc ? discStretch : 1.0f;
}

void ControlCircle::HighPass::process (TickLanes& lanes, float mean, float share, float perFrame) noexcept
{
    const auto slowBefore = slow, slowerBefore = slower;
    slow += share * (mean - slow);
    slower += share * (mean - 0.5f * (slow + slowBefore) - slower);
    const auto before = slowBefore + slowerBefore, climb = (slow + slower - before) * perFrame;
    for (int i = 0; i < TickLanes::size; ++i)
        lanes[i] -= before + climb * static_cast<float> (i + 1);
}

float ControlCircle::cornerHz (float meanX, float meanY, float hz, float energy) noexcept
{
    // The bits themselves reach below 60 Hz: only what exceeds them lifts the corner.
    const auto share = tau * 60 / rate * static_cast<float> (frames);
    slowX += share * (meanX - slowX);
    slowY += share * (meanY - slowY);
    slowEnergy += 20 / rate * static_cast<float> (frames) * (slowX * slowX + slowY * slowY - slowEnergy);
    const auto lift = std::min (1.0f, slowEnergy / std::max (0.02f * energy, 1e-12f));
    return std::clamp ((0.01f + 0.1f * lift) * hz, 2.0f, 120.0f);
}

void ControlCircle::learnRumble() noexcept
{
    // A second pole takes off what the first leaves of the carrier.
    const auto share = tau * 60 / rate * static_cast<float> (frames);
    rumbleX += share * (slowX - rumbleX);
    rumbleY += share * (slowY - rumbleY);
    rumbleTicks = std::min (rumbleTicks + 1, static_cast<int> (0.5f * rate * perFrame));
    const auto leak = 1 / static_cast<float> (rumbleTicks);
    rumbleXSquare += leak * (rumbleX * rumbleX - rumbleXSquare);
    rumbleYSquare += leak * (rumbleY * rumbleY - rumbleYSquare);
}

float ControlCircle::rumble() const noexcept
{
    const bool isKnown = static_cast<float> (rumbleTicks) > 0.05f * rate * perFrame;
    const auto humX = humLeft * hum.levelX(), humY = stretch * humLeft * hum.levelY();
    return isKnown ? std::sqrt (rumbleXSquare + stretch * stretch * rumbleYSquare + humX * humX + humY * humY)
                   : -1;
}

bool ControlCircle::isClipped() const noexcept
{
    return disc && clippedShare > mostClipped;
}

void ControlCircle::removeBursts (Points& points) const noexcept
{
    // A set slot adds half of sin 3a = sin a (4 cos^2 a - 1): the circle tells if it was set.
    const auto scale = 1 / amplitude, leaked = shear * stretch;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        const auto cosine = points.y[i] * scale, squaredCosine = cosine * cosine;
        const auto primary = points.primary[i];
        const auto sineIfSet = primary / (0.5f + 2 * squaredCosine);
        const auto errorIfClear = std::abs (primary * primary + squaredCosine - 1);
        const auto errorIfSet = std::abs (sineIfSet * sineIfSet + squaredCosine - 1);
        const auto sine = errorIfClear > errorIfSet ? sineIfSet * amplitude : points.x[i];
        points.y[i] += leaked * (points.x[i] - sine); // the burst's share of the other channel
        points.x[i] = sine;
    }
}

void ControlCircle::restoreClipped (const TickLanes& clipped, Points& points) const noexcept
{
    // Of a clipped sample only the sign is left: the cosine says the rest.
    const auto square = amplitude * amplitude;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        const auto sine = std::sqrt (std::max (0.0f, square - points.y[i] * points.y[i]));
        points.x[i] = clipped[i] == 0 ? points.x[i] : (points.primary[i] < 0 ? -sine : sine);
    }
}

void ControlCircle::process (const TickLanes& left, const TickLanes& right, float hz, float energy,
                             bool canLearn, bool isEven, Points& points) noexcept
{
    TickLanes x, rawY, clipped;
    const auto &first = primaryIsLeft ? left : right, &second = primaryIsLeft ? right : left;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        x[i] = first[i];
        clipped[i] = std::abs (first[i]) > clipFrom ? 1.0f : 0.0f;
        rawY[i] = secondarySign * second[i];
    }
    auto meanX = x.sum() * perFrame, meanY = rawY.sum() * perFrame;
    hum.process (x, rawY, meanX, meanY, isEven && hz > HumFilter::slowestHz);
    const auto corner = cornerHz (meanX, meanY, hz, energy);
    const auto share = std::min (0.5f, tau * corner / rate * static_cast<float> (frames));
    const auto ratio = corner / std::max (corner, hz);
    lead = (2 / tau) * ratio * (1 - ratio * ratio / 3); // the arc tangent of two poles
    highPassX.process (x, meanX, share, perFrame);
    highPassY.process (rawY, meanY, share, perFrame);

    const auto scale = amplitude > 0 ? 1 / amplitude : 0;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        x[i] *= inTick[i];
        rawY[i] *= inTick[i];
        points.x[i] = x[i];
        points.y[i] = (rawY[i] - shear * x[i]) * stretch;
        points.primary[i] = x[i] * scale;
    }
    if (disc && amplitude > 0)
    {
        removeBursts (points);
        if (clipped.sum() > 0)
            restoreClipped (clipped, points);
    }
    for (int i = 0; i < TickLanes::size; ++i)
        points.squared[i] = points.x[i] * points.x[i] + points.y[i] * points.y[i];
    if (canLearn && hz > 100)
    {
        clippedShare += (clipped.sum() - static_cast<float> (frames) * clippedShare) / (0.05f * rate);
        learn (x, rawY, points);
    }
    if (canLearn && hz > 180)
        learnRumble();
    adapt (energy);
}

void ControlCircle::learn (const TickLanes& x, const TickLanes& rawY, const Points& points) noexcept
{
    framesLearnt = std::min (framesLearnt + frames, static_cast<int> (learningSeconds * rate));
    const auto weight = 1 / static_cast<float> (std::max (framesLearnt, fewestFrames));
    // With the bursts in: where they are mistaken, a lean of the circle would strengthen itself.
    TickLanes square, otherSquare, product;
    const auto unstretch = 1 / stretch;
    for (int i = 0; i < TickLanes::size; ++i)
    {
        const auto other = points.y[i] * unstretch;
        square[i] = x[i] * x[i];
        otherSquare[i] = other * other;
        product[i] = rawY[i] * x[i];
    }
    const auto count = static_cast<float> (frames);
    squares += weight * (square.sum() - count * squares);
    otherSquares += weight * (otherSquare.sum() - count * otherSquares);
    products += weight * (product.sum() - count * products);
}

void ControlCircle::adapt (float energy) noexcept
{
    if (framesLearnt <= fewestFrames)
    {
        amplitude = std::sqrt (energy);
        return;
    }
    if (isClipped())
    {
        // The other channel, half as loud, says what the clipped one was.
        shear = 0;
        stretch = discStretch;
        amplitude = stretch * std::sqrt (2 * otherSquares);
        return;
    }
    const auto carrierSquares = disc ? squares / burstPower : squares;
    shear = products / std::max (carrierSquares, 1e-20f);
    stretch = std::clamp (std::sqrt (carrierSquares / std::max (otherSquares, 1e-20f)), 0.1f, 10.0f);
    amplitude = std::sqrt (2 * carrierSquares);
}
