#include "analysis/signal/spare/FftSplit.h"

#include "analysis/AnalysisError.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace
{
constexpr double rate = 44100.0;

struct Bands
{
    std::vector<float> low, high;
};

/** In pieces of any length; every 5000 frames the crossover goes on by `stepHz`. */
Bands split (CFFTSplit& splitter, const std::vector<float>& in, double crossover = 0.0, double stepHz = 0.0)
{
    Bands bands { in, in };
    std::mt19937 random (2);
    size_t nextChange = 5000;
    for (size_t done = 0; done < in.size();)
    {
        const auto frames = std::min<size_t> (random() % 900, in.size() - done);
        splitter.process (in.data() + done, static_cast<int> (frames), bands.low.data() + done,
                          bands.high.data() + done);
        done += frames;
        if (stepHz != 0.0 && done >= nextChange)
        {
            nextChange += 5000;
            EXPECT_EQ (splitter.setCrossover (crossover += stepHz), AnalysisError::none);
        }
    }
    return bands;
}
}

TEST (FftSplit, EachSineGoesToItsSideAndBothTogetherAreTheInputDelayed)
{
    for (const int size : { 256, 4096 })
        for (const auto crossover : { 2000.0, 8000.0 })
            for (const auto side : { -1.0, 1.0 })
            {
                std::unique_ptr<CFFTSplit> splitter;
                ASSERT_EQ (CFFTSplit::create (splitter, size, rate, crossover), AnalysisError::none);
                const auto in = Signals::sine (crossover + side * 5.1 * rate / size, rate, 30000);
                const auto [low, high] = split (*splitter, in);
                const auto settled = static_cast<size_t> (2 * size);
                const auto& quiet = side < 0.0 ? high : low;
                EXPECT_LT (20.0 * std::log10 (Signals::rms (std::span (quiet).subspan (settled)) / 0.35),
                           -79.0)
                    << size << ' ' << crossover << ' ' << side;
                const auto delay = static_cast<size_t> (splitter->latency());
                for (size_t i = delay; i < in.size(); ++i)
                    ASSERT_NEAR (low[i] + high[i], in[i - delay], 1e-6) << i;
            }
}

TEST (FftSplit, AMovingCrossoverMakesNoStep)
{
    std::unique_ptr<CFFTSplit> splitter;
    ASSERT_EQ (CFFTSplit::create (splitter, 1024, rate, 400.0), AnalysisError::none);
    const auto in = Signals::sine (1000.0, rate, 60000);
    const auto bands = split (*splitter, in, 400.0, 300.0);
    EXPECT_GT (Signals::rms (std::span (bands.low).last (5000)), 0.35);
    for (const auto* band : { &bands.low, &bands.high })
        EXPECT_LT (Signals::largestStep (std::span (*band).subspan (2000)), 1.01 * Signals::largestStep (in));
}

TEST (FftSplit, BadArgumentsAreRefused)
{
    std::unique_ptr<CFFTSplit> splitter;
    EXPECT_EQ (CFFTSplit::create (splitter, 1000, rate, 2000.0), AnalysisError::badArgument);
    EXPECT_EQ (CFFTSplit::create (splitter, 64, 0.0, 2000.0), AnalysisError::badSampleRate);
    EXPECT_EQ (CFFTSplit::create (splitter, 64, rate, 30000.0), AnalysisError::badArgument);
    EXPECT_EQ (splitter, nullptr);
    ASSERT_EQ (CFFTSplit::create (splitter, 64, rate, 2000.0), AnalysisError::none);
    EXPECT_EQ (splitter->setCrossover (std::nan ("")), AnalysisError::badArgument);
}
