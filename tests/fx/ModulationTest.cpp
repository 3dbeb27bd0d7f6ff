#include "Response.h"
#include "fx/modulation/ModulationFx.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace
{
using Flanger = fx_dsp::simple_flanger<float, 128>;
using Phaser = fx_dsp::simple_phaser;
constexpr double pi = std::numbers::pi, frozen = 1e-9;

/** The answer of a channel whose oscillator stands still to an impulse. */
template <class Channel>
std::vector<float> impulseResponse (double rate, double turns, double depth, double sign, double wet)
{
    Channel left, right;
    auto response = Response::impulse (8192);
    std::vector<float> other (8192);
    for (auto* channel : { &left, &right })
    {
        channel->setSampleRate (rate);
        channel->turnLfo (turns);
        channel->setFeedback (depth, sign);
        channel->setDryWet (wet);
        channel->setBypass (false);
        channel->settle();
        channel->reset();
    }
    Channel::processPair (left, right, response.data(), other.data(), 8192);
    return response;
}

struct Echo
{
    double frames, level; ///< centre of gravity and sum of the samples around the expected place
};

Echo echoNear (const std::vector<float>& response, double expected)
{
    double sum = 0.0, moment = 0.0;
    for (auto i = static_cast<size_t> (expected) - 2; i < static_cast<size_t> (expected) + 4; ++i)
    {
        sum += response[i];
        moment += static_cast<double> (i) * response[i];
    }
    return { moment / sum, sum };
}

template <class Effect>
void switchOn (Effect& effect, double wet)
{
    effect.setFxParameter (FxParameter::dryWet, wet);
    effect.setFxParameter (FxParameter::frequency, 0.0);
    effect.setFxParameter (FxParameter::bypass, 0.0);
    effect.reset();
}
}

TEST (Flanger, EchoStandsWhereTheOscillatorPointsAndReturnsWithTheSignOfTheFeedback)
{
    for (const auto rate : { 44100.0, 48000.0, 192000.0 })
        for (const auto turns : { 0.0, 0.1, 0.25, 0.6, 0.75 })
            for (const auto sign : { 1.0, -1.0 })
            {
                const auto response = impulseResponse<Flanger> (rate, turns, 0.7, sign, 1.0);
                const auto delay = rate * (0.0025 + 0.0015 * std::sin (2.0 * pi * turns));
                const auto first = echoNear (response, delay), second = echoNear (response, 2.0 * delay);
                EXPECT_NEAR (first.frames, delay, 0.01) << rate << " " << turns;
                EXPECT_NEAR (first.level, 1.0, 1e-3);
                EXPECT_NEAR (second.frames, 2.0 * delay, 0.02) << rate << " " << turns;
                EXPECT_NEAR (second.level, sign * 0.7, 1e-3);
            }
}

TEST (Phaser, ThreeNotchesStandAroundTheFrequencyThatTheOscillatorPointsAt)
{
    for (const auto rate : { 8000.0, 44100.0, 96000.0 })
        for (const auto turns : { 0.0, 0.2, 0.25, 0.75, 0.9 })
        {
            const auto response = impulseResponse<Phaser> (rate, turns, 0.0, 1.0, 0.5);
            const auto middle = 1000.0 * std::pow (2.6, 0.5 + 0.5 * std::sin (2.0 * pi * turns));
            // The frequencies at which six stages turn the phase by so many half turns: notches at odd numbers, peaks at even ones.
            const auto at = [&] (double halfTurns) {
                return rate / pi
                       * std::atan (std::tan (halfTurns * pi / 12.0) * std::tan (pi * middle / rate));
            };
            for (const auto notch : { 1.0, 3.0, 5.0 })
                EXPECT_LT (std::abs (Response::at (response, at (notch), rate)), 0.01)
                    << rate << " " << turns << " " << notch;
            for (const auto peak : { 2.0, 4.0 })
                EXPECT_NEAR (std::abs (Response::at (response, at (peak), rate)), 1.0, 0.01)
                    << rate << " " << turns;
        }
}

TEST (Phaser, SignOfTheFeedbackTurnsPeaksIntoHollows)
{
    // Wet alone at the sweep's middle, where the chain turns the phase by three half turns and the feedback by one
    // sample more.
    const auto middle = 1000.0 * std::sqrt (2.6);
    const auto sample = std::polar (1.0, -2.0 * pi * middle / 48000.0);
    for (const auto sign : { 1.0, -1.0 })
    {
        const auto response = impulseResponse<Phaser> (48000.0, 0.0, 0.5, sign, 1.0);
        EXPECT_NEAR (std::abs (Response::at (response, middle, 48000.0)),
                     1.0 / std::abs (1.0 + 0.5 * sign * sample), 0.01);
    }
}

TEST (ModulationFx, StereoPhaseTurnsTheRightChannelAndTinyMovesAreIgnored)
{
    for (const auto turns : { 0.0, 0.25, 0.5, 0.75, 1.0 })
    {
        FlangerFx effect;
        effect.setSampleRate (48000.0);
        effect.setFxParameter (FxParameter::feedback, turns);
        effect.setFxParameter (FxParameter::feedback, turns + 0.00009);
        switchOn (effect, 1.0);
        auto left = Response::impulse (1024), right = left;
        effect.process (left.data(), right.data(), 1024, frozen);
        EXPECT_NEAR (echoNear (left, 120.0).frames, 120.0, 0.01);
        const auto expected = 120.0 + 72.0 * std::sin (2.0 * pi * turns);
        EXPECT_NEAR (echoNear (right, expected).frames, expected, 0.01) << turns;
    }
}

template <class Effect>
class BothModulations : public testing::Test
{
};
using Both = testing::Types<FlangerFx, PhaserFx>;
TYPED_TEST_SUITE (BothModulations, Both);

TYPED_TEST (BothModulations, SwingRepeatsAfterTheStepsBeatsAtTheDecksTempo)
{
    struct Case
    {
        double bpm, step, beats;
        const char* text; ///< in bars
    };
    for (const auto& [bpm, step, beats, text] :
         { Case { 120.0, 0.0, 0.25, "1/16" }, { 60.0, 0.15, 0.5, "1/8" }, { 150.0, 0.3, 1.0, "1/4" } })
    {
        const auto period = static_cast<size_t> (std::lround (48000.0 * beats * 60.0 / bpm));
        TypeParam effect;
        effect.setSampleRate (48000.0);
        effect.setFxParameter (FxParameter::step, step);
        EXPECT_EQ (effect.parameterText (FxParameter::step), text);
        switchOn (effect, 1.0);
        // A tone whose period divides the swing's, so that sound and swing repeat together.
        auto left = Signals::sine (1440.0, 48000.0, 48000), right = left;
        for (int done = 0; done < 48000; done += 96)
            effect.process (left.data() + done, right.data() + done, 96, bpm);
        const auto difference = [&] (size_t shift)
        {
            double largest = 0.0;
            for (size_t i = 4800; i + shift < left.size(); ++i)
                largest = std::max<double> (largest, std::fabs (left[i] - left[i + shift]));
            return largest;
        };
        // The phaser looks at the oscillator every 32 samples, the flanger at every one.
        EXPECT_LT (difference (period), 0.03) << bpm << " " << beats;
        EXPECT_GT (difference (period / 2), 0.2) << bpm << " " << beats;
    }
}

TEST (Flanger, JumpOfTheStereoPhaseGlidesIntoPlaceWithoutAStep)
{
    FlangerFx jumping, settled;
    for (auto* effect : { &jumping, &settled })
    {
        effect->setSampleRate (48000.0);
        switchOn (*effect, 1.0);
    }
    settled.setFxParameter (FxParameter::feedback, 0.25);
    settled.reset();
    auto left = Signals::sine (480.0, 48000.0, 48000), right = left;
    auto otherLeft = left, otherRight = right;
    settled.process (otherLeft.data(), otherRight.data(), 48000, frozen);
    jumping.process (left.data(), right.data(), 20000, frozen);
    jumping.setFxParameter (FxParameter::feedback, 0.25);
    jumping.process (left.data() + 20000, right.data() + 20000, 28000, frozen);

    const auto all = std::span<const float> (right);
    EXPECT_LT (Signals::largestStep (all.subspan (19000, 8000)),
               1.2 * Signals::largestStep (all.subspan (10000, 9000)));
    for (size_t i = 24000; i < 48000; ++i)
        ASSERT_NEAR (right[i], otherRight[i], 1e-4) << i;
}
