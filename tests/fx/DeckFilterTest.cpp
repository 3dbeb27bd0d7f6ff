#include "fx/DeckFilter.h"
#include "Response.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

namespace
{
constexpr double rate = 44100.0;

/** Levels of low and high tones behind the filter, as gains. */
struct Gains
{
    double at50, at1000, at12000;
};

Gains gainsAt (double knob)
{
    const auto gain = [knob] (double hertz)
    {
        DeckFilter filter;
        filter.setSampleRate (rate);
        filter.set (knob);
        auto left = Signals::sine (hertz, rate, 44100, 0.1), right = left;
        filter.process (left.data(), right.data(), 44100, 120.0);
        EXPECT_EQ (left, right);
        return Signals::rms (std::span (left).last (22050)) / (0.1 / std::sqrt (2.0));
    };
    return { gain (50.0), gain (1000.0), gain (12000.0) };
}
}

TEST (DeckFilter, TheMiddleLeavesEveryBit)
{
    DeckFilter filter;
    const auto in = Signals::noise (4096, 1, 1.0);
    for (const auto knob : { 0.5, 0.4991, 0.5009 })
    {
        auto left = in, right = in;
        filter.set (knob);
        filter.process (left.data(), right.data(), 4096, 120.0);
        EXPECT_EQ (left, in) << knob;
    }
}

TEST (DeckFilter, TurnedLeftItClosesFromAboveTurnedRightFromBelow)
{
    double last = 3.0; // open, the resonance still lifts the top
    for (const auto knob : { 0.498, 0.4, 0.3, 0.2, 0.1 })
    {
        const auto gains = gainsAt (knob);
        EXPECT_NEAR (Response::decibels (gains.at50), 0.0, 6.0) << knob;
        EXPECT_LT (gains.at12000, last) << knob;
        last = gains.at12000;
    }
    EXPECT_LT (Response::decibels (last), -50.0);
    EXPECT_LT (Response::decibels (gainsAt (0.0).at1000), -20.0);

    last = 2.0;
    for (const auto knob : { 0.502, 0.6, 0.7, 0.8 })
    {
        const auto gains = gainsAt (knob);
        EXPECT_NEAR (Response::decibels (gains.at12000), 0.0, 3.0) << knob;
        EXPECT_LT (gains.at50, last) << knob;
        last = gains.at50;
    }
    EXPECT_LT (Response::decibels (last), -50.0);
    EXPECT_LT (Response::decibels (gainsAt (1.0).at1000), -40.0);
}

TEST (LadderFilter, KindsPassWhatTheyAreNamedFor)
{
    using Type = LadderFilter::Type;
    struct Case
    {
        Type type;
        bool lowPasses, highPasses;
    };
    for (const auto& c : { Case { Type::lowPass, true, false }, Case { Type::highPass, false, true },
                           Case { Type::band, false, false }, Case { Type::notch, true, true } })
    {
        LadderFilter filter (c.type);
        filter.setWord (0.8);
        filter.setResonance (0.0);
        filter.setOn (true);
        auto settle = std::vector<float> (22050), other = settle;
        filter.process (settle.data(), other.data(), 22050);
        auto response = Response::impulse (16384), right = response;
        filter.process (response.data(), right.data(), 16384);
        EXPECT_EQ (std::abs (Response::at (response, 20.0, rate)) > 0.5, c.lowPasses)
            << static_cast<int> (c.type);
        EXPECT_EQ (std::abs (Response::at (response, 20000.0, rate)) > 0.5, c.highPasses)
            << static_cast<int> (c.type);
    }
}
