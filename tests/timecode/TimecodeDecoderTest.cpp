#include "timecode/TimecodeDecoder.h"

#include "ControlSignal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{
constexpr double tau = 2 * std::numbers::pi;

struct Decoded
{
    std::vector<double> speed, position; // -1 unknown
    ControlWiring wiring;

    /** Share of frames from a time on whose place is known to some milliseconds. */
    double knownShare (const ControlSignal& signal, double from, double tolerance = 0.001) const
    {
        std::size_t known = 0;
        for (auto i = signal.at (from); i < signal.size(); ++i)
            known += position[i] >= 0 && std::abs (position[i] - signal.place[i]) < tolerance ? 1 : 0;
        return static_cast<double> (known) / static_cast<double> (signal.size() - signal.at (from));
    }

    double worstSpeedError (const ControlSignal& signal, double from, double truth) const
    {
        auto worst = 0.0;
        for (auto i = signal.at (from); i < signal.size(); ++i)
            worst = std::max (worst, std::abs (speed[i] - truth));
        return worst;
    }
};

Decoded decode (const ControlSignal& signal, const ControlMedium& medium)
{
    const auto decoder = std::make_unique<TimecodeDecoder>();
    decoder->prepare (medium, codeOf (medium), signal.rate);
    Decoded result;
    for (std::size_t i = 0; i < signal.size(); ++i)
    {
        decoder->process (signal.left[i], signal.right[i]);
        result.speed.push_back (decoder->speed());
        result.position.push_back (decoder->position().value_or (-1));
    }
    result.wiring = decoder->wiring();
    return result;
}

auto steadily (double speed)
{
    return [speed] (double) { return std::optional (speed); };
}

const ControlMedium& own()
{
    return *findControlMedium ("cd");
}
const ControlMedium& record()
{
    return *findControlMedium ("serato_2a");
}
}

TEST (TimecodeDecoder, EveryMediumIsReadBothWaysAndAtTheTurntablesSpeeds)
{
    for (const auto& medium : controlMedia())
        for (const auto speed : { 1.0, -1.0, 0.5, 1.4 })
        {
            const auto signal = play (medium, 40, 1, steadily (speed));
            const auto found = decode (signal, medium);
            EXPECT_LT (found.worstSpeedError (signal, 0.3, speed), 0.005) << medium.id << " at " << speed;
            EXPECT_GT (found.knownShare (signal, 0.2), 0.999) << medium.id << " at " << speed;
        }
}

TEST (TimecodeDecoder, AllSampleRatesAgree)
{
    for (const auto rate : { 44100.0, 48000.0, 96000.0, 192000.0 })
    {
        const auto signal = play (record(), 40, 0.6, steadily (1), rate);
        const auto found = decode (signal, record());
        EXPECT_LT (found.worstSpeedError (signal, 0.3, 1), 0.004) << rate;
        EXPECT_GT (found.knownShare (signal, 0.2), 0.999) << rate;
    }
}

TEST (TimecodeDecoder, FaultyCablesAndCartridgesAreReadAllTheSame)
{
    struct Fault
    {
        const char* name;
        std::function<void (float&, float&, double)> apply;
    };
    const std::vector<Fault> faults {
        { "40 dB too low",
          [] (float& l, float& r, double)
          {
              l *= 0.01f;
              r *= 0.01f;
          } },
        { "right 6 dB down", [] (float&, float& r, double) { r *= 0.5f; } },
        { "DC",
          [] (float& l, float& r, double)
          {
              l += 0.05f;
              r += 0.05f;
          } },
        { "crosstalk of -12 dB",
          [] (float& l, float& r, double)
          {
              const auto a = l;
              l += 0.25f * r;
              r += 0.25f * a;
          } },
        { "exchanged", [] (float& l, float& r, double) { std::swap (l, r); } },
        { "inverted",
          [] (float& l, float& r, double)
          {
              l = -l;
              r = -r;
          } },
        { "left inverted", [] (float& l, float&, double) { l = -l; } },
        { "hum",
          [] (float& l, float& r, double t)
          {
              const auto h = static_cast<float> (0.025 * std::sin (tau * 50 * t));
              l += h;
              r += h;
          } },
    };
    for (const auto* medium : { &own(), &record() })
        for (const auto& fault : faults)
        {
            auto signal = play (*medium, 60, 3, steadily (1));
            change (signal, fault.apply);
            addNoise (signal, 0.00002f);
            const auto found = decode (signal, *medium);
            EXPECT_GT (found.knownShare (signal, 2), 0.99) << medium->id << ", " << fault.name;
            EXPECT_LT (found.worstSpeedError (signal, 2, 1), 0.02) << medium->id << ", " << fault.name;
        }
}

TEST (TimecodeDecoder, AScratchKeepsThePlaceAndTheDirection)
{
    const auto hand = [] (double t)
    { return std::optional (t < 0.5 ? 1.0 : 2.5 * std::sin (tau * 2 * (t - 0.5)) + (t > 2.5 ? 1 : 0)); };
    for (const auto* medium : { &own(), &record() })
    {
        const auto signal = play (*medium, 100, 3, hand);
        const auto found = decode (signal, *medium);
        EXPECT_GT (found.knownShare (signal, 0.3, 0.002), 0.96) << medium->id;
        std::size_t wrongWay = 0;
        for (auto i = signal.at (0.6); i < signal.size(); ++i)
        {
            const auto truth = *hand (static_cast<double> (i) / signal.rate - 0.0016);
            wrongWay += std::abs (truth) > 0.1 && truth * found.speed[i] <= 0 ? 1 : 0;
            EXPECT_LT (std::abs (found.speed[i]), 1.3 * 3.5) << medium->id;
        }
        EXPECT_LT (wrongWay, signal.size() / 100) << medium->id;
    }
}

TEST (TimecodeDecoder, ALiftedNeedleStopsWithinSixtyMillisecondsWhateverTheCableHums)
{
    for (const auto* medium : { &own(), &record() })
    {
        auto signal =
            play (*medium, 30, 2, [] (double t) { return t < 1 ? std::optional (1.0) : std::nullopt; });
        change (signal,
                [] (float& left, float& right, double t)
                {
                    const auto hum = static_cast<float> (0.5 * 0.05 * std::sin (tau * 50 * t)) + 0.05f;
                    left += hum;
                    right += hum;
                });
        addNoise (signal, 0.004f);
        const auto found = decode (signal, *medium);
        EXPECT_EQ (found.worstSpeedError (signal, 1.06, 0), 0.0) << medium->id;
        EXPECT_EQ (found.position.back(), -1) << medium->id;
    }
}

TEST (TimecodeDecoder, ANeedleDropIsFoundAgainAndADropoutIsBridged)
{
    for (const auto* medium : { &own(), &record() })
    {
        auto signal = play (*medium, 30, 2, steadily (1));
        const auto elsewhere = play (*medium, 300, 2, steadily (1));
        for (auto i = signal.at (0.7); i < signal.size(); ++i) // up for 300 ms, then at 301 s
        {
            const bool up = i < signal.at (1);
            signal.left[i] = up ? 0 : elsewhere.left[i];
            signal.right[i] = up ? 0 : elsewhere.right[i];
            signal.place[i] = up ? ControlSignal::needleUp : elsewhere.place[i];
        }
        for (auto i = signal.at (0.4); i < signal.at (0.44); ++i)
            signal.left[i] = signal.right[i] = 0;
        const auto found = decode (signal, *medium);
        EXPECT_GT (found.position[signal.at (0.415)], 0)
            << medium->id << ": the place goes on while no hand can have moved it far";
        EXPECT_LT (found.position[signal.at (0.435)], 0) << medium->id << ": and is not guessed after that";
        EXPECT_NEAR (found.position[signal.at (0.55)], signal.place[signal.at (0.55)], 0.001) << medium->id;
        EXPECT_GT (found.knownShare (signal, 1.06), 0.999) << medium->id;
        EXPECT_NEAR (found.speed[signal.at (1.02)], 1, 0.02) << medium->id;
    }
}

TEST (TimecodeDecoder, ASlowHandIsFollowedThroughItsTurns)
{
    const auto hand = [] (double t)
    { return std::optional (t < 1 ? 1 : (t < 1.3 ? (1.3 - t) / 0.3 : 0.08 * std::sin (tau * (t - 1.3)))); };
    for (const auto* medium : { &own(), &record() })
    {
        const auto signal = play (*medium, 60, 5.3, hand);
        const auto found = decode (signal, *medium);
        std::size_t still = 0;
        for (auto i = signal.at (1.5); i < signal.size(); ++i)
            still += std::abs (*hand (static_cast<double> (i) / signal.rate)) > 0.045 && found.speed[i] == 0
                         ? 1
                         : 0;
        EXPECT_LT (still, signal.size() / 100) << medium->id;
    }
}

TEST (TimecodeDecoder, ADropoutInNoiseLosesNeitherPlaceNorWay)
{
    for (const auto* medium : { &own(), &record() })
    {
        auto signal = play (*medium, 30, 1.5, steadily (1));
        for (auto i = signal.at (0.7); i < signal.at (0.75); ++i)
            signal.left[i] = signal.right[i] = 0;
        addNoise (signal, 0.02f);
        const auto decoder = std::make_unique<TimecodeDecoder>();
        decoder->prepare (*medium, codeOf (*medium), signal.rate);
        auto before = 0.0;
        for (std::size_t i = 0; i < signal.size(); ++i)
        {
            decoder->process (signal.left[i], signal.right[i]);
            before = i == signal.at (0.6) ? decoder->travelled() : before;
            const auto place = decoder->position();
            ASSERT_TRUE (!place.has_value() || std::abs (*place - signal.place[i]) < 0.02)
                << medium->id << " at " << i;
        }
        EXPECT_TRUE (decoder->isLocked()) << medium->id;
        EXPECT_NEAR (decoder->travelled() - before, 0.9, 0.004) << medium->id;
    }
}

TEST (TimecodeDecoder, AStoppedRecordStandsStillInRumbleAndNoise)
{
    auto signal =
        play (record(), 30, 3,
              [] (double t) { return std::optional (t < 1 ? 1.0 : std::max (0.0, 1 - 3 * (t - 1))); });
    std::uint32_t state = 1;
    std::array<float, 2> low {}, lower {};
    change (signal,
            [&] (float& left, float& right, double)
            {
                for (std::size_t channel = 0; channel < 2; ++channel)
                {
                    state = state * 1664525 + 1013904223; // Numerical Recipes' generator
                    const auto noise = static_cast<float> (state >> 8) / 8388608.0f - 1;
                    low[channel] += 0.003f * (noise - low[channel]);
                    lower[channel] += 0.003f * (low[channel] - lower[channel]);
                    (channel == 0 ? left : right) += 3 * lower[channel];
                }
            });
    addNoise (signal, 0.005f);
    EXPECT_EQ (decode (signal, record()).worstSpeedError (signal, 1.5, 0), 0.0);
}

TEST (TimecodeDecoder, WhatIsNoNumberIsRest)
{
    auto signal = play (own(), 50, 1.5, steadily (1));
    for (auto i = signal.at (0.5); i < signal.at (1); ++i)
        signal.left[i] = signal.right[i] = std::numeric_limits<float>::quiet_NaN();
    const auto found = decode (signal, own());
    for (auto i = signal.at (0.57); i < signal.at (1); ++i)
        ASSERT_EQ (found.speed[i], 0.0) << i;
    EXPECT_GT (found.knownShare (signal, 1.06), 0.999);
}

TEST (TimecodeDecoder, GarbageGivesFiniteNumbersAndIsForgotten)
{
    auto signal = play (record(), 50, 1.5, steadily (1));
    for (auto i = signal.at (0.3); i < signal.at (0.8); ++i)
    {
        const std::array garbage { std::numeric_limits<float>::quiet_NaN(),
                                   std::numeric_limits<float>::infinity(), 1e30f, -1.0f, 1.0f };
        signal.left[i] = garbage[i % 5];
        signal.right[i] = garbage[(i / 3) % 5];
    }
    const auto found = decode (signal, record());
    for (std::size_t i = 0; i < signal.size(); ++i)
        ASSERT_TRUE (std::isfinite (found.speed[i]) && std::abs (found.speed[i]) <= 10
                     && std::isfinite (found.position[i]))
            << i;
    EXPECT_GT (found.knownShare (signal, 1.2), 0.99);
}
