#include "mixer/insert/SignalGuard.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr int fadeFrames = 64;

/** The first sample that is none, or too loud. @returns the frames if all are good */
int firstFault (const float* samples, int frames) noexcept
{
    // Looked at whole first, which is quick, since as a rule there is none.
    auto isGood = true;
    for (int i = 0; i < frames; ++i)
        isGood &= std::abs (samples[i]) < SignalGuard::faultLevel;
    if (isGood)
        return frames;
    int at = 0;
    while (at < frames && std::abs (samples[at]) < SignalGuard::faultLevel)
        ++at;
    return at;
}

void limit (float* samples, int frames) noexcept
{
    constexpr auto smallest = std::numeric_limits<float>::min();
    for (int i = 0; i < frames; ++i)
    {
        const auto limited = std::clamp (samples[i], -SignalGuard::highestLevel, SignalGuard::highestLevel);
        samples[i] = std::abs (limited) < smallest ? 0.0f : limited;
    }
}
}

PluginFault SignalGuard::run (float* const* channels, int frames) noexcept
{
    if (frames < 1)
        return PluginFault::none;
    const int firsts[] { firstFault (channels[0], frames), firstFault (channels[1], frames) };
    const auto good = std::min (firsts[0], firsts[1]);
    auto fault = PluginFault::none;
    if (good < frames)
        fault = std::isfinite (channels[firsts[0] == good ? 0 : 1][good]) ? PluginFault::tooLoud
                                                                          : PluginFault::notANumber;
    for (int side = 0; side < 2; ++side)
    {
        limit (channels[side], good);
        if (good > 0)
            last[side] = channels[side][good - 1];
    }
    if (fault != PluginFault::none)
        fadeOut (channels, good, frames);
    return fault;
}

void SignalGuard::fadeOut (float* const* channels, int begin, int frames) noexcept
{
    for (int side = 0; side < 2; ++side)
    {
        for (int i = begin; i < frames; ++i)
            channels[side][i] =
                last[side] * static_cast<float> (std::max (0, fadeFrames - (i - begin))) / fadeFrames;
        last[side] = 0.0f;
    }
}
