#include "Response.h"
#include "fx/DelayEffect.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
constexpr std::array stepBeats { 0.125, 0.25, 0.5, 0.75, 1.0, 1.5, 4.0 };

std::vector<float> process (DelayEffect& effect, std::vector<float> left, double bpm)
{
    auto right = left;
    for (size_t done = 0; done < left.size(); done += 100)
        effect.process (left.data() + done, right.data() + done,
                        static_cast<int> (std::min<size_t> (100, left.size() - done)), bpm);
    EXPECT_EQ (left, right);
    return left;
}
}

TEST (Delay, EchoesFallOnTheirSampleAndFadeByTheFeedback)
{
    for (const auto rate : { 8000.0, 44100.0, 96000.0 })
        for (const auto bpm : { 90.0, 128.0, 173.31 })
            for (size_t step = 0; step < stepBeats.size(); ++step)
            {
                DelayEffect effect;
                effect.setFxParameter (FxParameter::step, (static_cast<double> (step) + 0.01) / 7.0);
                effect.setFxParameter (FxParameter::feedback, 0.5);
                Response::listenTo (effect, rate);

                const auto frames = static_cast<size_t> (std::lround (stepBeats[step] * 60.0 / bpm * rate));
                const auto out = process (effect, Response::impulse (static_cast<int> (4 * frames)), bpm);
                const auto reaches = frames < 262'144 ? 1.0f : 0.0f;
                for (size_t i = 0; i < out.size(); ++i)
                    ASSERT_FLOAT_EQ (out[i],
                                     i == 0 || i % frames != 0
                                         ? 0.0f
                                         : reaches * std::pow (0.45f, static_cast<float> (i / frames) - 1.0f))
                        << rate << " " << bpm << " " << step << " " << i;
            }
}

TEST (Delay, ANewTimeIsTakenUpWithoutAClick)
{
    DelayEffect effect;
    effect.setFxParameter (FxParameter::feedback, 0.0);
    Response::listenTo (effect, 44100.0);
    const auto in = Signals::sine (220.0, 44100.0, 44100);
    process (effect, in, 120.0);
    for (const auto bpm : { 121.0, 60.0, 180.0, 0.001, 120.0, 1e9, 120.0 })
        EXPECT_LT (Signals::largestStep (process (effect, in, bpm)), 0.5 * 0.0314 + 1.5 / 499.0) << bpm;
}

TEST (Delay, ListensWhileBypassedAndForgetsWhenReset)
{
    DelayEffect effect;
    Response::listenTo (effect, 44100.0);
    effect.setFxParameter (FxParameter::bypass, 1.0);
    effect.reset();
    const auto in = Signals::noise (11025, 3);
    EXPECT_EQ (process (effect, in, 120.0), in);
    effect.setFxParameter (FxParameter::bypass, 0.0);
    const std::vector<float> silence (11025);
    const auto echo = process (effect, silence, 120.0);
    for (size_t i = 256; i < echo.size(); ++i)
        ASSERT_FLOAT_EQ (echo[i], in[i]) << i;
    effect.reset();
    EXPECT_EQ (process (effect, silence, 120.0), silence);
}
