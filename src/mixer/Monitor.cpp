#include "mixer/Monitor.h"

#include <algorithm>
#include <cmath>

double Monitor::overdriven (double sample) noexcept
{
    const auto size = std::abs (sample);
    return sample * (size + 2.4) / (sample * sample + 1.4 * size + 1.0);
}

void Monitor::setRate (double sampleRate, int cueDelay) noexcept
{
    delay.setFrames (cueDelay);
    for (auto& side : sides)
        for (auto* ramp : { &side.cue, &side.master, &side.overdrive })
            ramp->setSampleRate (sampleRate);
}

void Monitor::setTargets (const Settings& settings) noexcept
{
    const auto volume = settings.volume * settings.volume;
    const auto cueWeight = std::clamp (2.0 * (1.0 - settings.mix), 0.0, 1.0);
    const auto masterWeight = std::clamp (2.0 * settings.mix, 0.0, 1.0);
    for (size_t side = 0; side < sides.size(); ++side)
    {
        auto& [cue, master, overdrive] = sides[side];
        const auto splitWeight = static_cast<double> (side); // of the master: the right side's
        cue.setTarget (volume * (settings.split ? 1.0 - splitWeight : cueWeight));
        master.setTarget (volume * (settings.split ? splitWeight : masterWeight));
        overdrive.setTarget (settings.overdrive ? 1.0 : 0.0);
        if (isNew)
            for (auto* ramp : { &cue, &master, &overdrive })
                ramp->settle();
    }
    isNew = false;
}

void Monitor::mix (Side& side, float* monitor, const float* master, int frames) noexcept
{
    if (side.cue.isMoving() || side.master.isMoving())
        for (int i = 0; i < frames; ++i)
            monitor[i] = monitor[i] * static_cast<float> (side.cue.next())
                         + master[i] * static_cast<float> (side.master.next());
    else
        for (int i = 0; i < frames; ++i)
            monitor[i] = monitor[i] * static_cast<float> (side.cue.value())
                         + master[i] * static_cast<float> (side.master.value());

    if (!side.overdrive.isAt (0.0))
        for (int i = 0; i < frames; ++i)
            monitor[i] = CrossFade::mixed (monitor[i], static_cast<float> (overdriven (monitor[i])),
                                           static_cast<float> (side.overdrive.next()));
}

void Monitor::process (const Settings& settings, float* const monitor[2], const float* const master[2],
                       int frames) noexcept
{
    setTargets (settings);
    delay.process (monitor[0], monitor[1], frames);
    for (size_t side = 0; side < sides.size(); ++side)
        mix (sides[side], monitor[side], master[side], frames);
}
