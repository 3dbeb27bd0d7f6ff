#include "analysis/signal/spare/VectorTable.h"

#include "analysis/AnalysisError.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>

namespace
{
constexpr float untouched = 123.0f;

struct Row
{
    const char* name;
    std::function<void (float* out, const float* a, const float* b, int n)> run;
    std::function<double (double before, double a, double b)> expected;
};

const auto& table = initVectorTable();

const Row rows[] = {
    { "clear", [] (float* out, auto*, auto*, int n) { table.clear (out, n); },
      [] (double, double, double) { return 0.0; } },
    { "copy", [] (float* out, auto* a, auto*, int n) { table.copy (out, a, n); },
      [] (double, double a, double) { return a; } },
    { "add", table.add, [] (double, double a, double b) { return a + b; } },
    { "subtract", table.subtract, [] (double, double a, double b) { return a - b; } },
    { "multiply", table.multiply, [] (double, double a, double b) { return a * b; } },
    { "multiplyByConstant",
      [] (float* out, auto* a, auto*, int n) { table.multiplyByConstant (out, a, 3.0f, n); },
      [] (double, double a, double) { return 3.0 * a; } },
    { "multiplyAndAdd", table.multiplyAndAdd,
      [] (double before, double a, double b) { return before + a * b; } },
    { "square", [] (float* out, auto* a, auto*, int n) { table.square (out, a, n); },
      [] (double, double a, double) { return a * a; } },
    { "squareRoot",
      [] (float* out, auto* a, auto*, int n)
      {
          table.square (out, a, n);
          table.squareRoot (out, out, n);
      },
      [] (double, double a, double) { return std::abs (a); } },
    { "magnitude", table.magnitude, [] (double, double a, double b) { return std::hypot (a, b); } },
    { "phase", table.phase, [] (double, double a, double b) { return std::atan2 (b, a); } },
};
}

TEST (VectorTable, EveryRoutineGivesTheScalarResultAtAnyLengthAndPlace)
{
    const auto a = Signals::noise (80, 1, 1.0), b = Signals::noise (80, 2, 1.0);
    for (const auto& row : rows)
        for (int n = 0; n <= 67; ++n)
            for (size_t shift = 0; shift < 8; ++shift)
            {
                std::vector<float> out (80, untouched);
                const auto* inA = a.data() + (shift + 3) % 8;
                const auto* inB = b.data() + shift;
                row.run (out.data() + shift, inA, inB, n);
                for (size_t i = 0; i < out.size(); ++i)
                {
                    const auto at = static_cast<ptrdiff_t> (i) - static_cast<ptrdiff_t> (shift);
                    const auto inside = at >= 0 && at < n;
                    const auto expected = inside ? row.expected (untouched, inA[at], inB[at]) : untouched;
                    ASSERT_NEAR (out[i], expected, inside ? 2e-7 * std::abs (expected) + 1e-7 : 0.0)
                        << row.name << ' ' << n << ' ' << shift << ' ' << i;
                }
            }
}

TEST (VectorTable, MaximumSumAndPolarFormsHoldAtAnyLength)
{
    const auto signal = Signals::noise (80, 3, 1.0), other = Signals::noise (80, 4, 1.0);
    for (int n = 0; n <= 67; ++n)
        for (int shift = 0; shift < 8; ++shift)
        {
            const auto* in = signal.data() + shift;
            double sum = 0.0;
            auto most = -std::numeric_limits<float>::infinity();
            for (int i = 0; i < n; ++i)
            {
                sum += in[i];
                most = std::max (most, in[i]);
            }
            ASSERT_EQ (table.maximum (in, n), most) << n << ' ' << shift;
            ASSERT_NEAR (table.sum (in, n), sum, 1e-5) << n << ' ' << shift;

            // There and back, in place.
            std::vector<float> first (80), second (80);
            table.magnitude (first.data(), in, other.data(), n);
            table.phase (second.data(), in, other.data(), n);
            table.fromMagnitudeAndPhase (first.data(), second.data(), first.data(), second.data(), n);
            for (int i = 0; i < n; ++i)
            {
                ASSERT_NEAR (first[static_cast<size_t> (i)], in[i], 1e-6);
                ASSERT_NEAR (second[static_cast<size_t> (i)], other[static_cast<size_t> (i)], 1e-6);
            }
        }
}

TEST (VectorTable, BlocksAreAlignedAndTheProcessorIsKnown)
{
    for (const int n : { 0, 1, 3, 16, 17, 4099 })
    {
        auto* block = table.allocate (n);
        ASSERT_NE (block, nullptr);
        EXPECT_EQ (reinterpret_cast<uintptr_t> (block) % 64, 0u);
        table.clear (block, n);
        table.free (block);
    }
    table.free (nullptr);
    EXPECT_EQ (&table, &initVectorTable());
#ifdef __SSE3__
    EXPECT_EQ (getProcessorLevel(), 4);
#elif defined(__SSE2__)
    EXPECT_GE (getProcessorLevel(), 2);
#endif
    std::unique_ptr<CzplfFFT_If> transform;
    EXPECT_EQ (table.createTransform (transform, 1000), AnalysisError::badArgument);
    EXPECT_EQ (table.createTransform (transform, 1024), AnalysisError::none);
}
