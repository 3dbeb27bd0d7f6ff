#include "analysis/signal/spare/VectorTable.h"

#include "analysis/AnalysisError.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>

namespace
{
const auto& table = initVectorTable();

struct Row
{
    const char* name;
    std::function<void (float* out, const float* a, const float* b, int n)> run;
    std::function<double (double before, double a, double b)> expected;
};

const Row rows[] = {
    { "clear", [] (auto* out, auto*, auto*, int n) { table.clear (out, n); }, [] (auto...) { return 0.0; } },
    { "copy", [] (auto* out, auto* a, auto*, int n) { table.copy (out, a, n); },
      [] (auto, auto a, auto) { return a; } },
    { "add", table.add, [] (auto, auto a, auto b) { return a + b; } },
    { "subtract", table.subtract, [] (auto, auto a, auto b) { return a - b; } },
    { "multiply", table.multiply, [] (auto, auto a, auto b) { return a * b; } },
    { "constant", [] (auto* out, auto* a, auto*, int n) { table.multiplyByConstant (out, a, 3.0f, n); },
      [] (auto, auto a, auto) { return 3.0 * a; } },
    { "multiply, add", table.multiplyAndAdd, [] (auto before, auto a, auto b) { return before + a * b; } },
    { "square", [] (auto* out, auto* a, auto*, int n) { table.square (out, a, n); },
      [] (auto, auto a, auto) { return a * a; } },
    { "magnitude", table.magnitude, [] (auto, auto a, auto b) { return std::hypot (a, b); } },
    { "root",
      [] (auto* out, auto* a, auto* b, int n)
      { table.magnitude (out, a, b, n), table.square (out, out, n), table.squareRoot (out, out, n); },
      [] (auto, auto a, auto b) { return std::hypot (a, b); } },
    { "phase", table.phase, [] (auto, auto a, auto b) { return std::atan2 (b, a); } },
    { "polar",
      [] (auto* out, auto* a, auto* b, int n)
      {
          std::vector<float> other (80);
          table.fromMagnitudeAndPhase (out, other.data(), a, b, n);
      },
      [] (auto, auto a, auto b) { return a * std::cos (b); } },
    { "sum, maximum",
      [] (auto* out, auto* a, auto*, int n)
      {
          for (int i = 0; i < n; ++i) // of all values up to here
              out[i] = table.maximum (a, i + 1) >= a[i] ? table.sum (a, i + 1) - table.sum (a, i) : 99.0f;
      },
      [] (auto, auto a, auto) { return a; } },
};
}

TEST (VectorTable, EveryRoutineGivesTheScalarResultAtAnyLengthAndPlace)
{
    const auto a = Signals::noise (80, 1, 1.0), b = Signals::noise (80, 2, 1.0);
    for (const auto& row : rows)
        for (int n = 0; n <= 67; ++n)
            for (size_t shift = 0; shift < 8; ++shift)
            {
                constexpr auto untouched = 123.0f;
                std::vector<float> out (80, untouched);
                const auto *inA = a.data() + (shift + 3) % 8, *inB = b.data() + shift;
                row.run (out.data() + shift, inA, inB, n);
                for (size_t i = 0; i < out.size(); ++i)
                {
                    const auto at = static_cast<ptrdiff_t> (i) - static_cast<ptrdiff_t> (shift);
                    const auto inside = at >= 0 && at < n;
                    const auto expected =
                        inside ? row.expected (untouched, double (inA[at]), double (inB[at])) : untouched;
                    ASSERT_NEAR (out[i], expected, inside ? 1e-6 * std::abs (expected) + 2e-6 : 0.0)
                        << row.name << ' ' << n << ' ' << shift << ' ' << i;
                }
            }
}

TEST (VectorTable, BlocksAreAlignedAndTheProcessorIsKnown)
{
    for (const int n : { 0, 1, 17, 4099 })
    {
        auto* block = table.allocate (n);
        ASSERT_NE (block, nullptr);
        EXPECT_EQ (reinterpret_cast<uintptr_t> (block) % 64, 0u);
        table.free (block);
    }
    EXPECT_GE (getProcessorLevel(), 2);
    std::unique_ptr<CzplfFFT_If> transform;
    EXPECT_EQ (table.createTransform (transform, 1000), AnalysisError::badArgument);
    EXPECT_EQ (table.createTransform (transform, 1024), AnalysisError::none);
}
