#include "fx/SweepEffect.h"
#include "Response.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

namespace
{
using Mode = SweepEffect::Mode;
constexpr double rate = 44100.0, turn = Response::turn;

/** An effect whose oscillator stands still. */
SweepEffect still (Mode mode, double centre, double atRate = rate)
{
    SweepEffect effect (mode);
    effect.lfoDepth = 0.0f;
    effect.centre = static_cast<float> (centre);
    Response::listenTo (effect, atRate);
    return effect;
}

struct Pair
{
    std::vector<float> left, right;
};

Pair process (SweepEffect& effect, std::vector<float> in, double bpm = 120.0)
{
    auto right = in;
    effect.process (in.data(), right.data(), static_cast<int> (in.size()), bpm);
    return { std::move (in), std::move (right) };
}

/** The given section's transfer function at a frequency. */
std::complex<double> section (bool highPass, double corner, double q, double hertz, double atRate)
{
    const auto w = turn * corner / atRate, s = std::sin (w), c = std::cos (w), sign = highPass ? -1.0 : 1.0;
    const auto b0 = (1.0 - sign * c) / (s / q + 2.0);
    const auto z = std::polar (1.0, -turn * hertz / atRate);
    return b0 * (1.0 + sign * 2.0 * z + z * z)
           / (1.0 + -2.0 * q * c / (s + q) * z + (q - s) / (s + q) * z * z);
}
}

TEST (SweepEffect, FiltersAnswerAsTheirSectionsSay)
{
    for (const auto atRate : { 44100.0, 96000.0 })
        for (const auto centre : { 0.0, 0.3, 0.6, 1.0 })
            for (const auto highPass : { false, true })
            {
                auto effect = still (highPass ? Mode::highPass : Mode::lowPass, centre, atRate);
                const auto response = process (effect, Response::impulse (65536)).left;
                const auto c = static_cast<double> (static_cast<float> (centre));
                const auto corner = std::exp2 (highPass ? c * 9.28 * 0.8 + 5.0 : c * 8.28 + 6.0);
                const auto amount = static_cast<double> (0.8f), q = 2.0 * amount * amount + 1.0;
                for (double hertz = 40.0; hertz < 18000.0; hertz *= 1.7)
                {
                    const auto wanted = std::norm (section (highPass, corner, q, hertz, atRate));
                    EXPECT_NEAR (std::abs (Response::at (response, hertz, atRate)), wanted,
                                 2e-4 + 1e-3 * wanted)
                        << highPass << " " << centre << " " << hertz;
                }
            }
}

TEST (SweepEffect, FilterFollowsItsOscillator)
{
    SweepEffect effect (Mode::lowPass);
    effect.setFxParameter (FxParameter::step, 0.0); // a quarter of a beat
    Response::listenTo (effect, rate);
    double quietest = 1.0, loudest = 0.0;
    for (int block = 0; block < 200; ++block)
    {
        const auto level = Signals::rms (process (effect, Signals::noise (128, 5)).left);
        quietest = std::min (quietest, level);
        loudest = std::max (loudest, level);
    }
    EXPECT_GT (loudest, 4.0 * quietest);
}

TEST (SweepEffect, DistortionKeepsItsLaw)
{
    for (const auto centre : { 0.0, 0.2, 0.36, 1.0 })
        for (const auto level : { 0.01f, 0.25f, -1.0f })
        {
            auto effect = still (Mode::distortion, centre);
            const auto out = process (effect, std::vector<float> (4000, level)).left.back();
            const auto c = static_cast<double> (static_cast<float> (centre)),
                       drive = std::pow (c, 4.0) * 1024.0;
            const auto y = level * std::abs (section (false, std::exp2 (0.5 * 4.28 + 10.0), 3.0, 0.0, rate));
            EXPECT_NEAR (out, y / (std::abs (y) * drive + 1.0) * (0.5 * drive + 0.5), 1e-5)
                << centre << " " << level;
        }
}

TEST (SweepEffect, CrusherRoundsAndHolds)
{
    for (const auto centre : { 0.0, 0.25, 1.0 })
    {
        auto effect = still (Mode::bitCrusher, centre);
        const auto in = Signals::noise (65'000, 9, 1.0);
        const auto out = process (effect, in).left;
        const auto step = 65536.0 / (0.25 * 2048.0 + 1.0), hold = centre * centre * 64.0 + 1.0;
        size_t changes = 0;
        for (size_t i = 0; i < out.size(); ++i)
        {
            ASSERT_NEAR (out[i] * step, std::round (out[i] * step), 1e-4);
            if (i > 0 && out[i] != out[i - 1])
            {
                ++changes;
                ASSERT_NEAR (out[i], in[i], 0.5001 / step);
            }
        }
        // Some neighbours round to the same value.
        EXPECT_NEAR (static_cast<double> (changes), static_cast<double> (in.size()) / hold,
                     0.02 * static_cast<double> (in.size()) / hold)
            << centre;
    }
}

TEST (SweepEffect, AutoPanDelaysTheFarSideAndTurnsItDown)
{
    struct Case
    {
        double centre, leftDelay, rightDelay, leftGain, rightGain;
    };
    constexpr auto far = 0.99 * 0.002 * rate;
    for (const auto& c : { Case { 0.5, 0.0, 0.0, 1.0, 1.0 }, Case { 1.0, far, 0.0, 1.0, 1.0 },
                           Case { 0.25, 0.0, 0.001 * rate, 1.0, 1.0 }, Case { 1.25, far, 0.0, 0.5, 1.0 },
                           Case { -0.5, 0.0, far, 1.0, 0.0 } })
    {
        auto effect = still (Mode::autoPan, c.centre);
        const auto out = process (effect, Response::impulse (512));
        const auto check = [&] (const std::vector<float>& side, double delay, double gain)
        {
            double sum = 0.0, moment = 0.0;
            for (size_t i = 0; i < side.size(); ++i)
            {
                sum += side[i];
                moment += static_cast<double> (i) * side[i];
            }
            EXPECT_NEAR (sum, gain, 1e-6) << c.centre;
            EXPECT_NEAR (moment, delay * sum, 1e-3) << c.centre;
        };
        check (out.left, c.leftDelay, c.leftGain);
        check (out.right, c.rightDelay, c.rightGain);
    }
}

TEST (SweepEffect, TransShutsAtTheStartOfItsTurnAndOpensInItsMiddle)
{
    for (const auto bpm : { 90.0, 140.0 })
    {
        SweepEffect effect (Mode::trans);
        effect.setFxParameter (FxParameter::step, 3.5 / 11.0); // a turn a beat
        Response::listenTo (effect, rate);
        const auto period = 60.0 / bpm * rate;
        const auto out =
            process (effect, std::vector<float> (static_cast<size_t> (4.0 * period), 1.0f), bpm).left;
        const auto gainAt = [&] (double turns) { return out[static_cast<size_t> (turns * period)]; };
        for (const auto start : { 0.0, 1.0, 2.0, 3.0 })
        {
            const auto late = (0.4 - 0.01) / 0.99;
            EXPECT_NEAR (gainAt (start + 0.15), 0.0, 0.02) << bpm;
            EXPECT_NEAR (gainAt (start + 0.4), std::pow (late, 4.0) * 13.5, 0.03) << bpm;
            EXPECT_NEAR (gainAt (start + 0.6), 1.0, 0.01) << bpm;
            EXPECT_NEAR (gainAt (start + 0.99), 1.0, 0.01) << bpm;
        }
        EXPECT_LT (Signals::largestStep (out), 0.011);
    }
}

TEST (SweepEffect, OscillatorsHaveTheirShapes)
{
    for (double phase = 0.0; phase < 1.0; phase += 0.001)
    {
        EXPECT_NEAR (Lfo::value (Lfo::Shape::sine, phase), std::sin (turn * phase), 1e-7);
        EXPECT_NEAR (Lfo::value (Lfo::Shape::triangle, phase), phase < 0.5 ? 2.0 * phase : 2.0 - 2.0 * phase,
                     1e-12);
        EXPECT_EQ (Lfo::value (Lfo::Shape::saw, phase), phase);
        EXPECT_EQ (Lfo::value (Lfo::Shape::square, phase), phase < 0.5 ? 0.0 : 1.0);
    }
}

TEST (SweepEffect, BypassFadesToTheUntouchedInput)
{
    for (const auto mode :
         { Mode::lowPass, Mode::highPass, Mode::autoPan, Mode::trans, Mode::bitCrusher, Mode::distortion })
    {
        SweepEffect effect (mode);
        const auto in = Signals::sine (100.0, rate, 4096);
        EXPECT_EQ (process (effect, in).left, in);
        effect.setFxParameter (FxParameter::dryWet, 1.0);
        effect.setFxParameter (FxParameter::bypass, 0.0);
        process (effect, in);
        effect.setFxParameter (FxParameter::bypass, 1.0);
        process (effect, in);
        EXPECT_EQ (process (effect, in).left, in) << static_cast<int> (mode);
    }
}
