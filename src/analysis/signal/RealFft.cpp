#include "analysis/signal/RealFft.h"

#include "analysis/AnalysisError.h"

#include <fftw3.h>

#include <bit>
#include <cstring>
#include <mutex>
#include <vector>

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

class CzplfFFTFftw : public CzplfFFT_If
{
public:
    explicit CzplfFFTFftw (int transformSize)
        : size (transformSize),
          scratch (static_cast<size_t> (transformSize))
    {
        // Planned by estimate, not by measurement: the same plan in each run, so the same bits in each rendering.
        // Unaligned, so that any array of the caller's will do.
        std::vector<float> target (scratch.size());
        const std::lock_guard guard (plannerLock());
        const auto plan = [&] (fftw_r2r_kind kind, unsigned flags)
        {
            return Plan (fftwf_plan_r2r_1d (size, scratch.data(), target.data(), kind,
                                            FFTW_ESTIMATE | FFTW_UNALIGNED | flags));
        };
        forwardPlan = plan (FFTW_R2HC, FFTW_PRESERVE_INPUT);
        inversePlan = plan (FFTW_HC2R, FFTW_DESTROY_INPUT);
    }

    bool isPlanned() const { return forwardPlan != nullptr && inversePlan != nullptr; }

    void forward (float* out, const float* in) override
    {
        // The plan preserves its input; the library's signature merely does not say so.
        fftwf_execute_r2r (forwardPlan.get(), const_cast<float*> (in), out);
    }

    void inverse (float* out, const float* in) override
    {
        std::memcpy (scratch.data(), in, scratch.size() * sizeof (float));
        fftwf_execute_r2r (inversePlan.get(), scratch.data(), out);
    }

    int getSize() const override { return size; }

private:
    const int size;
    std::vector<float> scratch;
    Plan forwardPlan, inversePlan;
};
}

int createFFT (std::unique_ptr<CzplfFFT_If>& out, int size)
{
    if (size <= 0 || !std::has_single_bit (static_cast<unsigned> (size)))
        return AnalysisError::badArgument;
    auto made = std::make_unique<CzplfFFTFftw> (size);
    if (!made->isPlanned())
        return AnalysisError::noMemory;
    out = std::move (made);
    return AnalysisError::none;
}
