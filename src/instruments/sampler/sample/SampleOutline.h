#pragma once

#include "support/Relaxed.h"

#include <array>
#include <cstdint>

/** The picture of a sample: its greatest and smallest values in columns of equal width, full scale 100. Written by the import
    thread, read by views. */
struct SampleOutline
{
    static constexpr int columns = 200;

    /** Draws the picture of so many frames; none is an empty one. */
    void take (const float* left, const float* right, int32_t frames) noexcept;

    std::array<Relaxed<int8_t>, columns> highest {}, lowest {};
    Relaxed<uint32_t> version; ///< another with each picture
};
