#pragma once

#include <bit>
#include <cstdint>

/** Logarithms of whole spectra, where a thousandth of a decibel is more than enough. */
namespace FastLog
{
/** Base-2 logarithm of a positive, normal float: the exponent's bits plus a polynomial in the mantissa (a least-squares
    fit through the first terms of the artanh series). Off by less than 2e-4. Plain enough to become vector code. */
inline float log2 (float x) noexcept
{
    const auto bits = std::bit_cast<int32_t> (x);
    // The mantissa is taken between 0.75 and 1.5, so that the series' argument stays small on both sides.
    const auto shifted = bits - 0x3f400000;
    const auto exponent = shifted >> 23;
    const auto m = std::bit_cast<float> (bits - exponent * 0x800000);
    const auto t = (m - 1.0f) / (m + 1.0f);
    const auto t2 = t * t;
    return static_cast<float> (exponent) + t * (2.8853901f + t2 * (0.9617967f + t2 * 0.5770780f));
}

/** 20 log10 (x). */
inline float decibels (float x) noexcept
{
    return 6.0205999f * log2 (x);
}
}
