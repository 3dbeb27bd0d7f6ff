#include "similarity/extract/RealTransform.h"

#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <numbers>
#include <vector>

namespace
{
std::mutex planning;

struct Free
{
    void operator() (float* array) const { fftwf_free (array); }
};
}

struct RealTransform::State
{
    explicit State (int length)
        : size (length),
          real (fftwf_alloc_real (static_cast<size_t> (size))),
          complex (fftwf_alloc_real (static_cast<size_t> (size) + 2)),
          window (static_cast<size_t> (size)),
          result (static_cast<size_t> (size) / 2 + 1)
    {
        auto sum = 0.0;
        for (int i = 0; i < size; ++i)
        {
            const auto value = 0.5 - 0.5 * std::cos (2.0 * std::numbers::pi * i / size);
            window[static_cast<size_t> (i)] = static_cast<float> (value);
            sum += value;
        }
        scale = static_cast<float> (4.0 / (sum * sum));
        const std::lock_guard guard (planning);
        // The program and a host's plug-ins may plan at the same time.
        fftwf_make_planner_thread_safe();
        auto* const bins = reinterpret_cast<fftwf_complex*> (complex.get());
        forward = fftwf_plan_dft_r2c_1d (size, real.get(), bins, FFTW_ESTIMATE);
        inverse = fftwf_plan_dft_c2r_1d (size, bins, real.get(), FFTW_ESTIMATE);
    }

    ~State()
    {
        const std::lock_guard guard (planning);
        fftwf_destroy_plan (forward);
        fftwf_destroy_plan (inverse);
    }

    State (const State&) = delete;
    State& operator= (const State&) = delete;

    const int size;
    const std::unique_ptr<float[], Free> real, complex;
    std::vector<float> window, result;
    float scale = 1.0f;
    fftwf_plan forward = nullptr, inverse = nullptr;
};

RealTransform::RealTransform (int size) : state (std::make_unique<State> (size)) {}
RealTransform::~RealTransform() = default;

std::span<const float> RealTransform::power (const float* in)
{
    auto& s = *state;
    const auto size = static_cast<size_t> (s.size);
    for (size_t i = 0; i < size; ++i)
        s.real[i] = in[i] * s.window[i];
    fftwf_execute (s.forward);
    for (size_t k = 0; k <= size / 2; ++k)
        s.result[k] =
            s.scale * (s.complex[2 * k] * s.complex[2 * k] + s.complex[2 * k + 1] * s.complex[2 * k + 1]);
    return s.result;
}

std::span<const float> RealTransform::autocorrelation (const float* in)
{
    auto& s = *state;
    const auto half = static_cast<size_t> (s.size) / 2;
    std::copy_n (in, half, s.real.get());
    std::fill_n (s.real.get() + half, half, 0.0f);
    fftwf_execute (s.forward);
    for (size_t k = 0; k <= half; ++k)
    {
        s.complex[2 * k] = s.complex[2 * k] * s.complex[2 * k] + s.complex[2 * k + 1] * s.complex[2 * k + 1];
        s.complex[2 * k + 1] = 0.0f;
    }
    fftwf_execute (s.inverse);
    return { s.real.get(), half };
}
