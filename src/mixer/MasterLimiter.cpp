#include "mixer/MasterLimiter.h"

#include "support/OnePole.h"

#include <algorithm>
#include <cmath>

void MasterLimiter::setRate (double sampleRate) noexcept
{
    if (sampleRate == rate)
        return;
    rate = sampleRate;
    attack = OnePole::coefficient (0.0001, sampleRate);
    release = OnePole::coefficient (0.099, sampleRate);
}

void MasterLimiter::process (float* left, float* right, int frames, double volume, NoiseTable& noise) noexcept
{
    auto envelope = limiterEnvelope;
    for (int i = 0; i < frames; ++i)
    {
        const auto l = left[i] * volume, r = right[i] * volume;
        const auto level = std::max (std::abs (l), std::abs (r)) + noise.next();
        envelope = OnePole::approached (envelope, level, envelope < level ? attack : release);
        const auto gain = envelope > 1.0 ? 1.0 / envelope : 1.0;
        left[i] = static_cast<float> (l * gain);
        right[i] = static_cast<float> (r * gain);
    }
    // One sample that is no number must not silence the rest of the night.
    limiterEnvelope = std::isfinite (envelope) ? envelope : 1.0;
}
