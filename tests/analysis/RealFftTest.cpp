#include "analysis/signal/RealFft.h"

#include "analysis/AnalysisError.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
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
    for (const int size : { 1, 2, 4, 8, 64, 512, 4096 })
    {
        std::unique_ptr<CzplfFFT_If> fft;
        ASSERT_EQ (createFFT (fft, size), AnalysisError::none);
        ASSERT_EQ (fft->getSize(), size);
        const auto in = Signals::noise (size, 9, 1.0);
        std::vector<float> bins (in.size()), back (in.size());
        fft->forward (bins.data(), in.data());
        const auto expected = byDefinition (in);
        const auto tolerance = 1e-6 * std::sqrt (size) * std::log2 (size + 1);
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_NEAR (bins[i], expected[i], tolerance) << size << ' ' << i;
        fft->inverse (back.data(), bins.data());
        for (size_t i = 0; i < in.size(); ++i)
            ASSERT_NEAR (back[i] / static_cast<float> (size), in[i], 1e-6) << size << ' ' << i;
    }
}

TEST (RealFft, SizesThatAreNoPowerOfTwoAreRefused)
{
    for (const int size : { 0, -1, -8, 3, 1000, 513 })
    {
        std::unique_ptr<CzplfFFT_If> fft;
        EXPECT_EQ (createFFT (fft, size), AnalysisError::badArgument);
        EXPECT_EQ (fft, nullptr);
    }
}
