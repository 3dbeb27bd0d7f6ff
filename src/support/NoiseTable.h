#pragma once

#include "support/AudioThread.h"
#include "support/RandGeneratorLCG.h"

#include <array>
#include <cstdint>

/** 256 tiny random values. One is added to every signal that would otherwise decay into subnormal numbers. */
class NoiseTable
{
public:
    void fill (RandGeneratorLCG& random) noexcept
    {
        for (auto& value : values)
            value = random.nextDouble() * 1e-14;
        index = 0;
    }

    PX_AUDIO_THREAD double next() noexcept { return values[index++]; }

private:
    std::array<double, 256> values {};
    uint8_t index = 0;
};
