#pragma once

/** A value that goes into a line of the reverb, or a vector of such values, rounded to multiples of 2^-52, so that a tail stops
    there and never reaches the subnormal numbers. That grid is what adding and subtracting 1.0 leaves in double
    precision; in single precision a loop with a feedback of 0.98 would hang on the coarser one at -80 dB for ever. */
template <typename Value>
inline Value flushed (Value value) noexcept
{
    constexpr auto grain = 0x1p-29f; // a float near it has steps of 2^-52
    return value + grain - grain;
}
