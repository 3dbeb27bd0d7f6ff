#include "fx/modulation/SimplePhaser.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace fx_dsp
{
void simple_phaser::setSampleRate (double hertz) noexcept
{
    takeSampleRate (hertz);
    setSweep (lowestHertz, highestHertz);
    reset();
}

void simple_phaser::setSweep (double lowest, double highest) noexcept
{
    lowestHertz = lowest;
    highestHertz = highest;
    const auto limit = 0.45 * sampleRate();
    const auto from = std::clamp (lowest, 1.0, limit), to = std::clamp (highest, 1.0, limit);
    for (int i = 0; i <= sweepPoints + 1; ++i)
    {
        // The swing goes through the frequencies by equal ratios; the coefficient is the bilinear first-order
        // all-pass's, which turns the phase by 90 degrees at its frequency.
        const auto hertz = from * std::pow (to / from, std::min (1.0, static_cast<double> (i) / sweepPoints));
        const auto tangent = std::tan (std::numbers::pi * hertz / sampleRate());
        sweep[static_cast<size_t> (i)] = static_cast<float> ((tangent - 1.0) / (tangent + 1.0));
    }
}

void simple_phaser::reset() noexcept
{
    chain.past.fill (0.0f);
    untilCoefficient = 0;
}

float simple_phaser::sweepCoefficient() const noexcept
{
    const auto place = (0.5f + 0.5f * table.at (phase)) * sweepPoints;
    const auto index = std::clamp (static_cast<int> (place), 0, sweepPoints);
    const auto* at = &sweep[static_cast<size_t> (index)];
    return at[0] + (at[1] - at[0]) * (place - static_cast<float> (index));
}

// A stage is y = (x - yOld) * c + xOld. What it needs of the last sample is gathered first, so that a sample has one
// multiplication and one addition per stage to wait for.
inline float simple_phaser::Chain::next (float input, float feedback) noexcept
{
    std::array<float, stages> carried;
    for (size_t stage = 0; stage < stages; ++stage)
        carried[stage] = past[stage] - past[stage + 1] * coefficient;
    past[0] = input + past[stages] * feedback;
    for (size_t stage = 0; stage < stages; ++stage)
        past[stage + 1] = past[stage] * coefficient + carried[stage];
    return past[stages];
}

void simple_phaser::processPair (simple_phaser& left, simple_phaser& right, float* leftSamples,
                                 float* rightSamples, int count) noexcept
{
    for (int done = 0; done < count;)
    {
        // Both channels are always given the same counts, so their counters agree.
        if (left.untilCoefficient == 0)
            for (auto* channel : { &left, &right })
            {
                channel->chain.coefficient = channel->sweepCoefficient();
                channel->untilCoefficient = coefficientFrames;
            }
        const auto frames = std::min (left.untilCoefficient, count - done);
        Piece leftIn, rightIn, leftGains, rightGains;
        left.takeIn (leftSamples + done, frames, leftIn);
        right.takeIn (rightSamples + done, frames, rightIn);
        left.takeFeedback (frames, leftGains);
        right.takeFeedback (frames, rightGains);

        auto leftChain = left.chain, rightChain = right.chain;
        for (size_t i = 0; i < static_cast<size_t> (frames); ++i)
        {
            leftIn[i] = leftChain.next (leftIn[i], leftGains[i]);
            rightIn[i] = rightChain.next (rightIn[i], rightGains[i]);
        }
        left.chain = leftChain;
        right.chain = rightChain;

        left.mix (leftSamples + done, leftIn, frames);
        right.mix (rightSamples + done, rightIn, frames);
        for (auto* channel : { &left, &right })
        {
            channel->skip (frames);
            channel->untilCoefficient -= frames;
        }
        done += frames;
    }
}
}
