#include "analysis/signal/Fft.h"

#include "analysis/AnalysisError.h"

#include <bit>
#include <cmath>
#include <new>

int CFFT::create (std::unique_ptr<CFFT>& out, int size, const float* window)
{
    if (size <= 0 || !std::has_single_bit (static_cast<unsigned> (size)))
        return AnalysisError::badArgument;
    std::unique_ptr<CFFT> made (new CFFT (size));
    const auto error = made->init (window);
    if (error == AnalysisError::none)
        out = std::move (made);
    return error;
}

int CFFT::init (const float* window)
try
{
    std::vector<float> next;
    if (window != nullptr)
        next.assign (window, window + size);
    if (transform == nullptr)
        if (const auto error = createFFT (transform, size); error != AnalysisError::none)
            return error;
    factors = std::move (next);
    return AnalysisError::none;
}
catch (const std::bad_alloc&)
{
    return AnalysisError::noMemory;
}

void CFFT::forward (float* data)
{
    applyWindow (data);
    transform->forward (data, data);
}

void CFFT::inverse (float* data)
{
    transform->inverse (data, data);
}

void CFFT::applyWindow (float* data) const
{
    // Nothing but plain arrays that do not overlap becomes vector code.
    const auto loop = [] (float* __restrict values, const float* __restrict factor, int count)
    {
        for (int i = 0; i < count; ++i)
            values[i] *= factor[i];
    };
    loop (data, factors.data(), static_cast<int> (factors.size()));
}

template <class OfBin>
void CFFT::eachBin (float* data, OfBin ofBin) const
{
    data[0] = ofBin (data[0], 0.0f);
    const auto loop = [ofBin] (float* __restrict real, const float* __restrict imaginary, int pairs)
    {
        for (int k = 1; k <= pairs; ++k)
            real[k] = ofBin (real[k], imaginary[-k]);
    };
    loop (data, data + size, (size - 1) / 2);
    if (size > 1)
        data[size / 2] = ofBin (data[size / 2], 0.0f);
}

void CFFT::magnitude (float* data) const
{
    eachBin (data,
             [] (float real, float imaginary) { return std::sqrt (real * real + imaginary * imaginary); });
}

void CFFT::power (float* data) const
{
    eachBin (data, [] (float real, float imaginary) { return real * real + imaginary * imaginary; });
}

void CFFT::phase (float* data) const
{
    eachBin (data, [] (float real, float imaginary) { return std::atan2 (imaginary, real); });
}
