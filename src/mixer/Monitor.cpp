#include "mixer/Monitor.h"

#include <algorithm>
#include <cmath>

double Monitor::overdriven (double sample) noexcept
{
    const auto size = std::abs (sample);
    return sample * (size + 2.4) / (sample * sample + 1.4 * size + 1.0);
}

void Monitor::process (const Settings& settings, float* const monitor[2], const float* const master[2],
                       int frames) noexcept
{
    const auto volume = settings.volume * settings.volume;
    const auto cueWeight = std::clamp (2.0 * (1.0 - settings.mix), 0.0, 1.0);
    const auto masterWeight = std::clamp (2.0 * settings.mix, 0.0, 1.0);
    for (int side = 0; side < 2; ++side)
    {
        const auto cue = static_cast<float> (volume * (settings.split ? 1.0 - side : cueWeight));
        const auto through = static_cast<float> (volume * (settings.split ? side : masterWeight));
        for (int i = 0; i < frames; ++i)
            monitor[side][i] = monitor[side][i] * cue + master[side][i] * through;
        if (settings.overdrive)
            for (int i = 0; i < frames; ++i)
                monitor[side][i] = static_cast<float> (overdriven (monitor[side][i]));
    }
}
