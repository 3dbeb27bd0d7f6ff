#include "timecode/CDTracker.h"

#include "timecode/ControlDisc.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace
{
constexpr double frameSeconds = controlDisc::cyclesPerFrame / controlDisc::carrierHz;
constexpr double turn = 6.2831855;
constexpr int syncSymbol = 0x3f;
} // namespace

void CDTracker::setSampleRate (double newRate) noexcept
{
    sampleRate = newRate;
    samplePeriod = newRate > 0 ? 1 / newRate : 1;
    envelopeDecay = newRate > 0 ? static_cast<float> (10 / newRate) : 10.0f;
}

void CDTracker::loseFrame() noexcept
{
    frame = -4;
    awaitingSync = true;
}

void CDTracker::process (const float* left, const float* right, double* speedOut, double* positionOut,
                         int count) noexcept
{
    for (int i = 0; i < count; ++i)
    {
        const auto l = left[i], r = right[i] * -2;
        positionOut[i] = -1;
        ringLeft[static_cast<std::size_t> (ringIndex)] = l;
        ringRight[static_cast<std::size_t> (ringIndex)] = r;
        ringIndex = (ringIndex + 1) & 255;

        const auto height = std::abs (r);
        if (height > envelope && height > threshold)
            envelope = height;
        if (envelope > threshold)
            envelope -= envelopeDecay;
        if (envelope <= threshold)
        {
            envelope = 0;
            speed *= 0.2;
            if (std::abs (speed) < 0.001)
                speed = 0;
        }
        else if ((l >= 0) != (lastLeft >= 0))
            crossed (l, r, l >= 0, positionOut[i]);

        lastLeft = l;
        lastRight = r;
        sampleCount += 1;
        positionError = decodedPosition - position;
        speedOut[i] = speed + (positionError > 0 ? 0.001 : (positionError < 0 ? -0.001 : 0.0));
        position += samplePeriod * speedOut[i];
        decodedPosition += samplePeriod * speed;
    }
}

void CDTracker::crossed (float left, float right, bool rising, double& positionOut) noexcept
{
    // At a crossing of the left channel the right one stands at its peak: the carrier's amplitude.
    const auto amplitude = std::max (std::abs (right), std::abs (lastRight));
    if (amplitude < 0.05f)
        return loseFrame();
    const auto direction = (rising ? right < 0 : right >= 0) ? -1 : 1;
    const auto step = static_cast<double> (left - lastLeft);
    const auto fraction = step != 0 ? std::clamp (left / step, 0.0, 1.0) : 0.0;
    const auto time = sampleCount - fraction;
    std::shift_right (crossingTimes.begin(), crossingTimes.end(), 1);
    crossingTimes[0] = time;
    const auto period = time - crossingTimes[2];
    if (period * samplePeriod >= 0)
        speed = 2 / ((time - crossingTimes[4]) * samplePeriod * direction * controlDisc::carrierHz);

    if (rising != (direction > 0))
        return;
    const auto start = std::fmod (time - period, 256.0);
    if (std::abs (speed) <= 0.25 || std::abs (speed) >= 1.5 || start <= 0)
        return loseFrame();
    readCycle (start, period, amplitude, direction, positionOut);
}

void CDTracker::readCycle (double start, double period, float amplitude, int direction,
                           double& positionOut) noexcept
{
    const auto first = static_cast<int> (start);
    const auto residualAt = [this] (int index) -> float&
    { return ringResidual[static_cast<std::size_t> (index & 255)]; };
    if (period >= 2)
    {
        const auto samples = static_cast<int> (period);
        auto phase = 1 - (start - first) / period;
        for (int k = 0; k < samples; ++k)
        {
            phase -= std::floor (phase);
            residualAt (first + k) =
                static_cast<float> (std::sin (turn * phase) * (-static_cast<float> (direction) * amplitude))
                + ringLeft[static_cast<std::size_t> ((first + k) & 255)];
            phase += 1 / period;
        }
        for (const auto outside : { first - 2, first - 1, first + samples, first + samples + 1 })
            residualAt (outside) = 0;
    }

    int symbol = 0;
    const auto slot = period / 6;
    for (int i = 0; i < 6; ++i)
    {
        const auto at = start + slot / 2 + i * slot;
        const auto index = static_cast<int> (at);
        const auto part = static_cast<float> (at - index);
        const auto height = std::abs ((1 - part) * residualAt (index) + part * residualAt (index + 1));
        const auto bit = height > amplitude / 6 ? 1 : 0;
        symbol = direction > 0 ? symbol << 1 | bit : symbol >> 1 | bit << 5;
    }
    takeSymbol (symbol, direction, positionOut);
}

void CDTracker::takeSymbol (int symbol, int direction, double& positionOut) noexcept
{
    if (awaitingSync)
    {
        if (symbol != syncSymbol)
            return loseFrame();
        awaitingSync = false;
        bitCount = shiftRegister = 0;
        return;
    }
    const auto nibble = symbol >> 1 & 15;
    const auto isOdd = (std::popcount (static_cast<unsigned> (nibble)) & 1) != 0;
    if ((symbol & 32) != 0 || (symbol & 1) != (isOdd ? 0 : 1))
        return loseFrame();
    shiftRegister = direction > 0 ? shiftRegister << 4 | nibble : shiftRegister >> 4 | nibble << 16;
    bitCount += 4;
    if (bitCount != 20)
        return;

    const auto number = shiftRegister & 0xfffff;
    if (number == frame + direction)
    {
        decodedPosition = (number + (direction > 0 ? 1.0 : 1.0 / 6)) * frameSeconds;
        positionError = decodedPosition - position;
        if (std::abs (positionError) > 0.005)
            positionOut = position = decodedPosition;
    }
    previousFrame = frame;
    frame = number;
    awaitingSync = true;
}
