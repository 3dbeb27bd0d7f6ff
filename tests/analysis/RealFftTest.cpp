#include "analysis/AnalysisError.h"
#include "analysis/signal/Fft.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <thread>
#include <vector>

namespace
{
/** The transform by its definition, in the half-complex packing. */
std::vector<double> byDefinition (const std::vector<float>& in)
{
    const auto size = in.size();
    std::vector<double> out (size);
    for (size_t k = 0; 2 * k <= size; ++k)
    {
        double real = 0.0, imaginary = 0.0;
        for (size_t n = 0; n < size; ++n)
        {
            const auto angle =
                2.0 * std::numbers::pi * static_cast<double> (k * n % size) / static_cast<double> (size);
            real += in[n] * std::cos (angle);
            imaginary -= in[n] * std::sin (angle);
        }
        out[k] = real;
        if (k > 0 && 2 * k < size)
            out[size - k] = imaginary;
    }
    return out;
}

}

TEST (RealFft, AgreesWithTheDefinitionAndComesBackTimesItsSize)
{
    for (const int size : { 1, 2, 4, 8, 16, 64, 512, 4096 })
    {
        std::unique_ptr<CzplfFFT_If> fft;
        ASSERT_EQ (createFFT (fft, size), AnalysisError::none);
        ASSERT_EQ (fft->getSize(), size);
        const auto in = Signals::noise (size, 9, 1.0);
        auto data = in;
        std::vector<float> bins (in.size());
        fft->forward (bins.data(), in.data());
        fft->forward (data.data(), data.data());
        ASSERT_EQ (data, bins) << "in place";
        const auto expected = byDefinition (in);
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_NEAR (bins[i], expected[i], 1e-6 * std::sqrt (size) * std::log2 (size + 1))
                << size << ' ' << i;
        fft->inverse (data.data(), data.data());
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_NEAR (data[i] / static_cast<float> (size), in[i], 1e-6) << size << ' ' << i;
    }
}

TEST (RealFft, SizesThatAreNoPowerOfTwoAreRefused)
{
    for (const int size : { 0, -8, 3, 1000 })
    {
        std::unique_ptr<CzplfFFT_If> fft;
        std::unique_ptr<CFFT> inPlace;
        EXPECT_EQ (createFFT (fft, size), AnalysisError::badArgument);
        EXPECT_EQ (CFFT::create (inPlace, size), AnalysisError::badArgument);
        EXPECT_TRUE (fft == nullptr && inPlace == nullptr);
    }
}

TEST (RealFft, PlansAreMadeOnSeveralThreadsAtOnce)
{
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back (
            []
            {
                for (int size = 2; size <= 8192; size *= 2)
                {
                    std::unique_ptr<CzplfFFT_If> fft;
                    ASSERT_EQ (createFFT (fft, size), AnalysisError::none);
                    std::vector<float> in (static_cast<size_t> (size), 1.0f), out (in);
                    fft->forward (out.data(), in.data());
                    ASSERT_EQ (out[0], static_cast<float> (size));
                }
            });
}

TEST (RealFft, InPlaceItGivesLevelAndAngleOfItsBins)
{
    for (const int size : { 1, 2, 8, 1024 })
    {
        std::vector<float> window (static_cast<size_t> (size));
        for (size_t i = 0; i < window.size(); ++i)
            window[i] = 0.5f + static_cast<float> (i % 3);
        std::unique_ptr<CFFT> fft;
        ASSERT_EQ (CFFT::create (fft, size, window.data()), AnalysisError::none);
        auto signal = Signals::noise (size, 11, 1.0);
        auto magnitudes = signal, powers = signal, phases = signal, back = signal;
        fft->applyWindow (signal.data());
        const auto bins = byDefinition (signal);
        for (auto* data : { &magnitudes, &powers, &phases, &back })
            fft->forward (data->data());
        fft->magnitude (magnitudes.data());
        fft->power (powers.data());
        fft->phase (phases.data());
        fft->inverse (back.data());
        for (size_t k = 0; 2 * k <= signal.size(); ++k)
        {
            const auto isReal = k == 0 || 2 * k == signal.size();
            const std::complex<double> bin (bins[k], isReal ? 0.0 : bins[signal.size() - k]);
            const auto tolerance = 3e-6 * std::sqrt (size);
            ASSERT_NEAR (magnitudes[k], std::abs (bin), tolerance) << size << ' ' << k;
            ASSERT_NEAR (powers[k], std::norm (bin), tolerance * (1.0 + 3.0 * std::abs (bin)));
            ASSERT_NEAR (std::abs (std::polar (1.0, static_cast<double> (phases[k])) - bin / std::abs (bin)),
                         0.0, 1e-5 + 3.0 * tolerance / std::abs (bin));
        }
        for (size_t i = 0; i < signal.size(); ++i)
            ASSERT_NEAR (back[i] / static_cast<float> (size), signal[i], 2e-6);
    }
}
