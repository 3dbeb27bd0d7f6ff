#include "mixer/Meters.h"

#include "mixer/Peak.h"

#include <algorithm>

void Meters::update (const float* left, const float* right, int frames, float gain) noexcept
{
    constexpr float smallest = 1e-8f;
    const auto blockMs = frames * 1000.0 / rate;
    const auto fall = static_cast<float> (blockMs / fallMs);
    const float* const channels[] { left, right };
    for (size_t side = 0; side < levels.size(); ++side)
    {
        const auto peak = peakOf (channels[side], frames) * gain;
        const auto next = std::max (levels[side] - fall, std::min (peak, 1.0f));
        levels[side] = next < smallest ? 0.0f : next;
        clipMs[side] = peak >= 1.0f ? static_cast<float> (clipHoldMs)
                                    : std::max (0.0f, clipMs[side] - static_cast<float> (blockMs));
    }
}
