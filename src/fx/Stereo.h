#pragma once

#include "support/AudioThread.h"

/** Left and right in one vector register; arithmetic works on both, also with a plain number. */
using Stereo = double __attribute__ ((vector_size (16)));

namespace StereoMath
{
/** Values below the threshold in magnitude, and NaN, become 0. */
PX_AUDIO_THREAD inline Stereo flushed (Stereo value, double threshold) noexcept
{
    using Bits = long long __attribute__ ((vector_size (16)));
    const Bits keep = (value >= threshold) | (value <= -threshold);
    return reinterpret_cast<Stereo> (reinterpret_cast<Bits> (value) & keep);
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
