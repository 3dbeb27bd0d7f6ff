#pragma once

#include "support/AudioThread.h"

/** Left and right in one vector register; arithmetic works on both, also with a plain number. */
using Stereo = double __attribute__ ((vector_size (16)));

namespace StereoMath
{
/** Values below the threshold in magnitude, and NaN, become 0. */
PX_AUDIO_THREAD inline Stereo flushed (Stereo value, double threshold) noexcept
{
    // One comparison, which masks: the outcome of two would be taken apart into its values, ten times as long.
    using Bits = long long __attribute__ ((vector_size (16)));
    constexpr auto withoutSign = 0x7fff'ffff'ffff'ffff;
    const auto magnitude = reinterpret_cast<Stereo> (reinterpret_cast<Bits> (value) & withoutSign);
    return magnitude >= threshold ? value : Stereo {};
}

PX_AUDIO_THREAD inline Stereo load (const float* left, const float* right, int index) noexcept
{
    return Stereo { static_cast<double> (left[index]), static_cast<double> (right[index]) };
}

PX_AUDIO_THREAD inline void store (Stereo value, float* left, float* right, int index) noexcept
{
    left[index] = static_cast<float> (value[0]);
    right[index] = static_cast<float> (value[1]);
}
}
