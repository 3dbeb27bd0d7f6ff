#include "mixer/Meters.h"

#include "mixer/Peak.h"

#include <algorithm>

void Meters::update (const float* left, const float* right, int frames) noexcept
{
    constexpr float smallest = 1e-8f;
    const auto fall = static_cast<float> (frames * 1000.0 / (fallMs * rate));
    const float* const channels[] { left, right };
    for (size_t side = 0; side < levels.size(); ++side)
    {
        const auto next = std::max (levels[side] - fall, std::min (peakOf (channels[side], frames), 1.0f));
        levels[side] = next < smallest ? 0.0f : next;
    }
}
