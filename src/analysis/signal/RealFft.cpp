#include "analysis/signal/RealFft.h"

#include "analysis/AnalysisError.h"

#include <fftw3.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <mutex>
#include <numbers>

namespace
{
/** The plans of one size. FFTW plans and destroys in global tables, so they are made once and kept. */
struct Plans
{
    fftwf_plan forward = nullptr, inverse = nullptr;
};

/** Plans of complex transforms, for arrays that are aligned as fftwf_alloc_real() aligns. The tables of FFTW may be in use
    by a host and its other plug-ins too: they are told to lock.
    @param size   a power of two
    @returns null plans without memory */
Plans plansFor (int size, fftwf_complex* in, fftwf_complex* out)
{
    static std::mutex lock;
    static std::array<Plans, 32> kept;
    const std::lock_guard guard (lock);
    [[maybe_unused]] static const auto isShared = (fftwf_make_planner_thread_safe(), true);
    auto& plans = kept[static_cast<size_t> (std::countr_zero (static_cast<unsigned> (size)))];
    // Planned by estimate, not by measurement: the same plan in each run, so the same bits in each rendering.
    constexpr auto flags = FFTW_ESTIMATE | FFTW_PRESERVE_INPUT;
    if (plans.forward == nullptr)
        plans.forward = fftwf_plan_dft_1d (size, in, out, FFTW_FORWARD, flags);
    if (plans.inverse == nullptr)
        plans.inverse = fftwf_plan_dft_1d (size, out, in, FFTW_BACKWARD, flags);
    return plans;
}

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

/** A transform of one value. */
class Identity : public CzplfFFT_If
{
public:
    void forward (float* out, const float* in) override { out[0] = in[0]; }
    void inverse (float* out, const float* in) override { out[0] = in[0]; }
    int init() override { return AnalysisError::none; }
    int getSize() const override { return 1; }
};

/** Over the library's complex transform of half the size, which takes even values as real and odd ones as imaginary
    parts; the two spectra that are mixed in its result are separated by their symmetry. The library does that in its own
    real transform too, but takes twice as long for it as for the complex transform. */
class CzplfFFTFftw : public CzplfFFT_If
{
public:
    explicit CzplfFFTFftw (int transformSize)
        : size (transformSize),
          half (transformSize / 2),
          values (makeArray (size)),
          bins (makeArray (size)),
          real (makeArray (half)),
          imaginary (makeArray (half)),
          cosine (makeArray (half / 2 + 1)),
          sine (makeArray (half / 2 + 1))
    {
    }

    int init() override
    {
        for (const auto* array : { &values, &bins, &real, &imaginary, &cosine, &sine })
            if (*array == nullptr)
                return AnalysisError::noMemory;
        for (int k = 0; k <= half / 2; ++k)
        {
            const auto angle = 2.0 * std::numbers::pi * k / size;
            cosine[static_cast<size_t> (k)] = static_cast<float> (std::cos (angle));
            sine[static_cast<size_t> (k)] = static_cast<float> (std::sin (angle));
        }
        plans = plansFor (half, asComplex (values.get()), asComplex (bins.get()));
        return plans.forward != nullptr && plans.inverse != nullptr ? AnalysisError::none
                                                                    : AnalysisError::noMemory;
    }

    void forward (float* out, const float* in) override
    {
        fftwf_execute_dft (plans.forward, asComplex (aligned (in)), asComplex (bins.get()));
        unpack (out);
    }

    void inverse (float* out, const float* in) override
    {
        pack (in);
        auto* const to = isAligned (out) ? out : values.get();
        fftwf_execute_dft (plans.inverse, asComplex (bins.get()), asComplex (to));
        if (to != out)
            std::memcpy (out, to, bytes());
    }

    int getSize() const override { return size; }

private:
    static fftwf_complex* asComplex (float* array) { return reinterpret_cast<fftwf_complex*> (array); }

    /** True for an array that the plans may work on in place of `values`. */
    bool isAligned (const float* array) const
    {
        return fftwf_alignment_of (const_cast<float*> (array)) == fftwf_alignment_of (values.get());
    }

    /** The values, copied only where they don't lie as the plans want them. The transform leaves them as they are. */
    float* aligned (const float* in)
    {
        if (isAligned (in))
            return const_cast<float*> (in);
        std::memcpy (values.get(), in, bytes());
        return values.get();
    }

    size_t bytes() const { return static_cast<size_t> (size) * sizeof (float); }

    /** Makes the spectrum of all values from that of the pairs. */
    void unpack (float* out)
    {
        const auto* const packed = bins.get();
        auto *const re = real.get(), *const im = imaginary.get();
        for (int k = 0; k < half; ++k)
        {
            re[k] = packed[2 * k];
            im[k] = packed[2 * k + 1];
        }
        out[0] = re[0] + im[0];
        out[half] = re[0] - im[0];
        const auto *const c = cosine.get(), *const s = sine.get();
        const auto pairs = (half - 1) / 2;
        const auto loop = [=, this] (float* __restrict fromStart, float* __restrict toHalf,
                                     float* __restrict fromHalf, float* __restrict toEnd)
        {
            for (int k = 1; k <= pairs; ++k)
            {
                const auto sumRe = 0.5f * (re[k] + re[half - k]), sumIm = 0.5f * (im[k] + im[half - k]);
                const auto differenceRe = 0.5f * (re[k] - re[half - k]);
                const auto differenceIm = 0.5f * (im[k] - im[half - k]);
                const auto turnedRe = c[k] * sumIm - s[k] * differenceRe;
                const auto turnedIm = -c[k] * differenceRe - s[k] * sumIm;
                fromStart[k] = sumRe + turnedRe;
                toHalf[pairs - k] = sumRe - turnedRe;
                fromHalf[k] = turnedIm - differenceIm;
                toEnd[pairs - k] = turnedIm + differenceIm;
            }
        };
        // Four parts of one array that do not overlap; as separate pointers they let the loop become vector code.
        loop (out, out + half - pairs, out + half, out + size - pairs);
        if (half > 1)
        {
            out[half / 2] = re[half / 2];
            out[size - half / 2] = -im[half / 2];
        }
    }

    /** Undoes unpack(), times two. */
    void pack (const float* in)
    {
        auto *const re = real.get(), *const im = imaginary.get();
        re[0] = in[0] + in[half];
        im[0] = in[0] - in[half];
        const auto *const c = cosine.get(), *const s = sine.get();
        const auto pairs = (half - 1) / 2;
        const auto loop = [=, this] (float* __restrict reFromStart, float* __restrict reToHalf,
                                     float* __restrict imFromStart, float* __restrict imToHalf)
        {
            for (int k = 1; k <= pairs; ++k)
            {
                const auto sumRe = in[k] + in[half - k], sumIm = in[size - k] + in[half + k];
                const auto differenceRe = in[k] - in[half - k], differenceIm = in[size - k] - in[half + k];
                const auto turnedRe = c[k] * differenceRe - s[k] * sumIm;
                const auto turnedIm = c[k] * sumIm + s[k] * differenceRe;
                reFromStart[k] = sumRe - turnedIm;
                reToHalf[pairs - k] = sumRe + turnedIm;
                imFromStart[k] = differenceIm + turnedRe;
                imToHalf[pairs - k] = turnedRe - differenceIm;
            }
        };
        loop (re, re + half - pairs, im, im + half - pairs);
        if (half > 1)
        {
            re[half / 2] = 2.0f * in[half / 2];
            im[half / 2] = -2.0f * in[size - half / 2];
        }
        auto* const packed = bins.get();
        for (int k = 0; k < half; ++k)
        {
            packed[2 * k] = re[k];
            packed[2 * k + 1] = im[k];
        }
    }

    const int size, half;
    Array values, bins;    ///< of the library's transform, real and imaginary parts in turn
    Array real, imaginary; ///< of the bins
    Array cosine, sine;    ///< of the first quarter of a turn
    Plans plans;
};
}

int createFFT (std::unique_ptr<CzplfFFT_If>& out, int size)
{
    if (size <= 0 || !std::has_single_bit (static_cast<unsigned> (size)))
        return AnalysisError::badArgument;
    std::unique_ptr<CzplfFFT_If> made;
    if (size == 1)
        made = std::make_unique<Identity>();
    else
        made = std::make_unique<CzplfFFTFftw> (size);
    const auto error = made->init();
    if (error == AnalysisError::none)
        out = std::move (made);
    return error;
}
