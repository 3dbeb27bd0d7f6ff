#include "analysis/signal/Fft.h"

#include "analysis/AnalysisError.h"

#include <algorithm>
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
    work.resize (static_cast<size_t> (size));
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
    std::copy_n (data, size, work.begin());
    transform->forward (data, work.data());
}

void CFFT::inverse (float* data)
{
    std::copy_n (data, size, work.begin());
    transform->inverse (data, work.data());
}

void CFFT::applyWindow (float* data) const
{
    for (size_t i = 0; i < factors.size(); ++i)
        data[i] *= factors[i];
}

template <class OfBin>
void CFFT::eachBin (float* data, OfBin ofBin) const
{
    data[0] = ofBin (data[0], 0.0f);
    for (int k = 1; 2 * k < size; ++k)
        data[k] = ofBin (data[k], data[size - k]);
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
