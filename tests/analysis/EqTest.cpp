#include "analysis/signal/Eq.h"

#include "analysis/AnalysisError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <vector>

using zParamEQ::BandType;

namespace
{
constexpr double rate = 48000.0;

/** The cookbook's analogue prototypes, which the filters follow through the bilinear transform. */
double prototypeGain (BandType type, double frequency, double centre, double db, double q)
{
    const auto warp = [] (double hz) { return std::tan (std::numbers::pi * hz / rate); };
    const std::complex<double> s (0.0, warp (frequency) / warp (centre));
    const auto a = std::pow (10.0, db / 40.0), root = std::sqrt (a) / q;
    switch (type)
    {
    case BandType::peak:
        return std::abs ((s * s + s * (a / q) + 1.0) / (s * s + s / (a * q) + 1.0));
    case BandType::lowShelf:
        return std::abs (a * (s * s + root * s + a) / (a * s * s + root * s + 1.0));
    case BandType::highShelf:
        return std::abs (a * (a * s * s + root * s + 1.0) / (s * s + root * s + a));
    case BandType::lowPass:
        return std::abs (1.0 / (s * s + s / q + 1.0));
    case BandType::highPass:
        return std::abs (s * s / (s * s + s / q + 1.0));
    }
    return 0.0;
}

/** From the spectrum of an impulse that has died away. */
double measuredGain (const std::vector<float>& response, double frequency)
{
    std::complex<double> sum;
    for (size_t i = 0; i < response.size(); ++i)
        sum += static_cast<double> (response[i])
               * std::polar (1.0, -2.0 * std::numbers::pi * frequency / rate * static_cast<double> (i));
    return std::abs (sum);
}
}

TEST (Eq, ResponsesFollowTheFormulaAloneAndInSeries)
{
    for (const auto type :
         { BandType::peak, BandType::lowShelf, BandType::highShelf, BandType::lowPass, BandType::highPass })
        for (const auto centre : { 200.0, 1000.0, 10000.0 })
            for (const auto db : { -30.0, 0.0, 10.0 })
                for (const auto q : { 0.5, 1.5, 4.0 })
                {
                    std::unique_ptr<CEqIf> eq;
                    ASSERT_EQ (CEQ::create (eq, 2), AnalysisError::none);
                    EXPECT_EQ (eq->setSampleRate (rate), 0);
                    EXPECT_EQ (eq->setType (0, type) + eq->setFrequency (0, centre) + eq->setGain (0, db)
                                   + eq->setQuality (0, q),
                               0);
                    EXPECT_EQ (eq->setFrequency (1, 3000.0) + eq->setGain (1, 6.0), 0);
                    eq->update();
                    std::vector<float> response (16384);
                    response[0] = 1.0f;
                    eq->process (response.data(), response.data(), 1000);
                    eq->process (response.data() + 1000, response.data() + 1000, 15384);

                    // A band alone gives the same as that band in the row.
                    zParamEQ::CParametricEq alone, other;
                    for (auto* one : { &alone, &other })
                        one->setSampleRate (rate);
                    alone.setType (type), alone.setFrequency (centre), alone.setGain (db),
                        alone.setQuality (q);
                    other.setFrequency (3000.0), other.setGain (6.0);
                    std::vector<float> again (1000);
                    again[0] = 1.0f;
                    for (auto* one : { &alone, &other })
                    {
                        one->update();
                        one->process (again.data(), again.data(), 1000);
                    }
                    for (size_t i = 0; i < again.size(); ++i)
                        ASSERT_NEAR (again[i], response[i], 1e-6 * std::pow (10.0, std::abs (db) / 20.0));
                    for (const auto frequency : { 30.0, 210.0, 950.0, 4000.0, 12000.0, 20000.0 })
                    {
                        const auto expected = prototypeGain (type, frequency, centre, db, q)
                                              * prototypeGain (BandType::peak, frequency, 3000.0, 6.0,
                                                               std::numbers::sqrt2 / 2.0);
                        ASSERT_NEAR (measuredGain (response, frequency), expected, 1e-4 * expected + 2e-6)
                            << static_cast<int> (type) << ' ' << centre << ' ' << db << ' ' << q << ' '
                            << frequency;
                    }
                }
}

TEST (Eq, NonsenseIsRefusedAndLeavesWhatWas)
{
    std::unique_ptr<CEqIf> eq;
    EXPECT_EQ (CEQ::create (eq, 0), AnalysisError::badArgument);
    ASSERT_EQ (CEQ::create (eq, 1), AnalysisError::none);
    ASSERT_EQ (eq->setFrequency (0, 500.0) + eq->setGain (0, 12.0) + eq->setQuality (0, 2.0), 0);
    for (const auto bad : { std::nan (""), std::numeric_limits<double>::infinity(), -1000.0 })
        for (const auto error : { eq->setFrequency (0, bad), eq->setGain (0, bad), eq->setQuality (0, bad),
                                  eq->setSampleRate (bad), eq->setFrequency (1, 500.0),
                                  eq->setType (0, static_cast<BandType> (77)), eq->setGain (-1, 0.0) })
            EXPECT_EQ (error, AnalysisError::badArgument);
    EXPECT_EQ (eq->getFrequency (0), 500.0);
    EXPECT_EQ (eq->getGain (0), 12.0);
    EXPECT_EQ (eq->getQuality (0), 2.0);

    // A band above half the rate is held below it: loud, but stable.
    ASSERT_EQ (eq->setFrequency (0, 90000.0), 0);
    eq->update();
    std::vector<float> noise (4000, 1.0f);
    eq->process (noise.data(), noise.data(), 4000);
    EXPECT_NEAR (noise.back(), 1.0f, 1e-3);
}
