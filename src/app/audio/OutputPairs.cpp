#include "app/audio/OutputPairs.h"

#include <cmath>
#include <numbers>

namespace
{
constexpr double toneHz = 440.0, toneLevel = 0.1, sideSeconds = 0.6, edgeSeconds = 0.01;
}

OutputPairs::OutputPairs()
{
    for (int pair = 0; pair < count; ++pair)
        setSource (pair, pair);
    prepare (rate);
}

bool OutputPairs::carriesOnly (int pair, int source) const noexcept
{
    const auto& p = pairs[static_cast<size_t> (pair)];
    return p.wished == source && p.carried == source && p.gain.isAt (1.0);
}

void OutputPairs::prepare (double r)
{
    rate = r;
    for (auto& pair : pairs)
    {
        pair.carried = pair.wished;
        pair.gain.setSampleRate (rate);
        pair.gain.reset (1.0);
    }
    tonePair = silent;
}

void OutputPairs::begin() noexcept
{
    if (const auto wished = toneWished.exchange (silent, std::memory_order_relaxed); wished != silent)
    {
        tonePair = wished;
        toneFrame = 0;
    }
}

void OutputPairs::write (int pair, const juce::AudioBuffer<float>& engine, float* left, float* right,
                         bool isMono) noexcept
{
    auto& p = pairs[static_cast<size_t> (pair)];
    const std::array<float*, 2> targets { left, right };
    const int wished = p.wished;
    for (int i = 0; i < engine.getNumSamples(); ++i)
    {
        if (wished != p.carried && p.gain.isAt (0.0))
            p.carried = wished;
        p.gain.setTarget (wished == p.carried ? 1.0 : 0.0);
        const auto faded = static_cast<float> (p.gain.next());
        const auto gain = p.carried == silent ? 0.0f : faded;
        const auto first = 2 * std::max (0, p.carried);
        const std::array<float, 2> sides { engine.getSample (first, i), engine.getSample (first + 1, i) };
        for (size_t side = 0; side < targets.size(); ++side)
            if (targets[side] != nullptr)
                targets[side][i] = gain * (isMono ? 0.5f * (sides[0] + sides[1]) : sides[side]);
    }
}

void OutputPairs::addTone (int pair, float* left, float* right, int frames) noexcept
{
    if (pair != tonePair)
        return;
    for (int i = 0; i < frames; ++i, ++toneFrame)
    {
        const auto time = static_cast<double> (toneFrame) / rate;
        if (time >= 2.0 * sideSeconds)
        {
            tonePair = silent;
            return;
        }
        const auto inSide = std::fmod (time, sideSeconds);
        const auto edge = std::min (1.0, std::min (inSide, sideSeconds - inSide) / edgeSeconds);
        if (auto* target = time < sideSeconds ? left : right)
            target[i] +=
                static_cast<float> (toneLevel * edge * std::sin (2.0 * std::numbers::pi * toneHz * time));
    }
}
