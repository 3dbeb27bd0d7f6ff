#include "analysis/signal/PlainFft.h"

#include "analysis/AnalysisError.h"

#include <bit>
#include <cmath>
#include <new>
#include <numbers>

namespace
{
/** As it stands in the books: std::complex's own operator also looks for infinities. */
std::complex<float> times (std::complex<float> a, std::complex<float> b) noexcept
{
    return { a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real() };
}
}

CzplfFFTGen::CzplfFFTGen (int transformSize) : size (transformSize) {}

int CzplfFFTGen::create (std::unique_ptr<CzplfFFT_If>& out, int size)
{
    if (size <= 0 || !std::has_single_bit (static_cast<unsigned> (size)))
        return AnalysisError::badArgument;
    std::unique_ptr<CzplfFFT_If> made (new CzplfFFTGen (size));
    const auto error = made->init();
    if (error == AnalysisError::none)
        out = std::move (made);
    return error;
}

int CzplfFFTGen::init()
try
{
    const auto half = static_cast<size_t> (size / 2);
    logSize = std::countr_zero (static_cast<unsigned> (size));
    turns.resize (half);
    reversed.resize (half);
    work.resize (half);
    for (size_t k = 0; k < half; ++k)
    {
        const auto angle = -2.0 * std::numbers::pi * static_cast<double> (k) / size;
        turns[k] = { static_cast<float> (std::cos (angle)), static_cast<float> (std::sin (angle)) };
        if (k > 0)
            reversed[k] = reversed[k / 2] / 2 + (k % 2 == 0 ? 0 : size / 4);
    }
    return AnalysisError::none;
}
catch (const std::bad_alloc&)
{
    return AnalysisError::noMemory;
}

CzplfFFTGen::Complex CzplfFFTGen::turn (int k, bool backwards) const noexcept
{
    const auto forwards = turns[static_cast<size_t> (k)];
    return backwards ? std::conj (forwards) : forwards;
}

void CzplfFFTGen::transformWork (bool backwards) noexcept
{
    const auto half = size / 2;
    for (int i = 0; i < half; ++i)
        if (const auto other = reversed[static_cast<size_t> (i)]; i < other)
            std::swap (work[static_cast<size_t> (i)], work[static_cast<size_t> (other)]);
    for (int span = 1; span < half; span *= 2)
        for (int first = 0; first < half; first += 2 * span)
        {
            auto* even = work.data() + first;
            auto* odd = even + span;
            for (int k = 0; k < span; ++k)
            {
                const auto turned = times (odd[k], turn (k * (half / span), backwards));
                odd[k] = even[k] - turned;
                even[k] += turned;
            }
        }
}

void CzplfFFTGen::forward (float* out, const float* in)
{
    if (size == 1)
    {
        out[0] = in[0];
        return;
    }
    const auto half = size / 2;
    for (int i = 0; i < half; ++i)
        work[static_cast<size_t> (i)] = { in[2 * i], in[2 * i + 1] };
    transformWork (false);
    out[0] = work[0].real() + work[0].imag();
    out[half] = work[0].real() - work[0].imag();
    for (int k = 1; k < half; ++k)
    {
        // The even samples went in as real parts, the odd ones as imaginary parts: by symmetry they come apart.
        const auto a = work[static_cast<size_t> (k)];
        const auto b = std::conj (work[static_cast<size_t> (half - k)]);
        const auto even = 0.5f * (a + b), difference = 0.5f * (a - b);
        const auto bin = even + times ({ difference.imag(), -difference.real() }, turn (k, false));
        out[k] = bin.real();
        out[size - k] = bin.imag();
    }
}

void CzplfFFTGen::inverse (float* out, const float* in)
{
    if (size == 1)
    {
        out[0] = in[0];
        return;
    }
    const auto half = size / 2;
    work[0] = { in[0] + in[half], in[0] - in[half] };
    for (int k = 1; k < half; ++k)
    {
        const Complex a { in[k], in[size - k] }, b { in[half - k], -in[half + k] };
        const auto odd = times (a - b, turn (k, true));
        work[static_cast<size_t> (k)] = (a + b) + Complex { -odd.imag(), odd.real() };
    }
    transformWork (true);
    for (int i = 0; i < half; ++i)
    {
        out[2 * i] = work[static_cast<size_t> (i)].real();
        out[2 * i + 1] = work[static_cast<size_t> (i)].imag();
    }
}
