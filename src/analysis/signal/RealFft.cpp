#include "analysis/signal/RealFft.h"

#include "analysis/AnalysisError.h"

#include <fftw3.h>

#include <bit>
#include <cstring>
#include <mutex>

namespace
{
/** FFTW plans and destroys plans in global tables; only execution is free of them. */
std::mutex& plannerLock()
{
    static std::mutex lock;
    return lock;
}

struct PlanDeleter
{
    void operator() (fftwf_plan plan) const
    {
        const std::lock_guard guard (plannerLock());
        fftwf_destroy_plan (plan);
    }
};

using Plan = std::unique_ptr<fftwf_plan_s, PlanDeleter>;

struct ArrayDeleter
{
    void operator() (float* array) const { fftwf_free (array); }
};

/** Aligned for the widest vector instructions that the library uses. */
using Array = std::unique_ptr<float[], ArrayDeleter>;

Array makeArray (int floats)
{
    return Array (fftwf_alloc_real (static_cast<size_t> (floats)));
}

/** Over the library's real-to-complex transform between arrays of its own: on these it is three times as fast as its
    half-complex one on any array, and repacking costs little of that. */
class CzplfFFTFftw : public CzplfFFT_If
{
public:
    explicit CzplfFFTFftw (int transformSize)
        : size (transformSize),
          real (makeArray (transformSize)),
          complex (makeArray (transformSize + 2))
    {
    }

    int init() override
    {
        if (real == nullptr || complex == nullptr)
            return AnalysisError::noMemory;
        // Planned by estimate, not by measurement: the same plan in each run, so the same bits in each rendering.
        const std::lock_guard guard (plannerLock());
        forwardPlan.reset (fftwf_plan_dft_r2c_1d (size, real.get(), bins(), FFTW_ESTIMATE));
        inversePlan.reset (fftwf_plan_dft_c2r_1d (size, bins(), real.get(), FFTW_ESTIMATE));
        return forwardPlan != nullptr && inversePlan != nullptr ? AnalysisError::none
                                                                : AnalysisError::noMemory;
    }

    void forward (float* out, const float* in) override
    {
        std::memcpy (real.get(), in, bytes());
        fftwf_execute (forwardPlan.get());
        const auto* packed = complex.get(); // real and imaginary parts in turn
        out[0] = packed[0];
        for (int k = 1; 2 * k < size; ++k)
        {
            out[k] = packed[2 * k];
            out[size - k] = packed[2 * k + 1];
        }
        if (size > 1)
            out[size / 2] = packed[size];
    }

    void inverse (float* out, const float* in) override
    {
        auto* packed = complex.get();
        packed[0] = in[0];
        packed[1] = 0.0f;
        for (int k = 1; 2 * k < size; ++k)
        {
            packed[2 * k] = in[k];
            packed[2 * k + 1] = in[size - k];
        }
        if (size > 1)
        {
            packed[size] = in[size / 2];
            packed[size + 1] = 0.0f;
        }
        fftwf_execute (inversePlan.get());
        std::memcpy (out, real.get(), bytes());
    }

    int getSize() const override { return size; }

private:
    size_t bytes() const { return static_cast<size_t> (size) * sizeof (float); }
    fftwf_complex* bins() { return reinterpret_cast<fftwf_complex*> (complex.get()); }

    const int size;
    Array real, complex;
    Plan forwardPlan, inversePlan;
};
}

int createFFT (std::unique_ptr<CzplfFFT_If>& out, int size)
{
    if (size <= 0 || !std::has_single_bit (static_cast<unsigned> (size)))
        return AnalysisError::badArgument;
    auto made = std::make_unique<CzplfFFTFftw> (size);
    const auto error = made->init();
    if (error == AnalysisError::none)
        out = std::move (made);
    return error;
}
