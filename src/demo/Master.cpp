#include "demo/MixDown.h"

#include "demo/Filter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr double rate = DemoTrack::sampleRate;
constexpr double ceilingDb = -0.5;
constexpr double loudnessDb = -12.0; ///< RMS before the saturation
constexpr double monoBelowHz = 170.0;
constexpr int fadeFrames = 882;

/** Takes what no loudspeaker renders out of the sum, before it can drive the saturation. */
void cutRumble (float* left, float* right, int frames)
{
    Filter leftCut, rightCut;
    leftCut.tune (27.0 / rate, 0.7);
    rightCut.tune (27.0 / rate, 0.7);
    for (int i = 0; i < frames; ++i)
    {
        left[i] = static_cast<float> (leftCut.highPass (left[i]));
        right[i] = static_cast<float> (rightCut.highPass (right[i]));
    }
}

/** Takes bass out of the difference of the channels, and what is left of DC. Comes after the saturation, which
    makes a little of both. */
void centreBass (float* left, float* right, int frames)
{
    Filter dc, sides, steeperSides;
    dc.tune (9.0 / rate, 0.5);
    sides.tune (monoBelowHz / rate, 0.54);
    steeperSides.tune (monoBelowHz / rate, 1.31);
    for (int i = 0; i < frames; ++i)
    {
        const auto middle = dc.highPass (0.5 * (left[i] + right[i]));
        const auto side = steeperSides.highPass (sides.highPass (0.5 * (left[i] - right[i])));
        left[i] = static_cast<float> (middle + side);
        right[i] = static_cast<float> (middle - side);
    }
}

/** Straight up to 0.8, bent above so that 1 is never passed: for the few peaks that the filters after the saturation
    raise. */
double trim (double sample) noexcept
{
    constexpr double knee = 0.8;
    const auto size = std::abs (sample);
    if (size <= knee)
        return sample;
    const auto bent = knee + (1.0 - knee) * PortableMath::softClip ((size - knee) / (1.0 - knee));
    return sample < 0.0 ? -bent : bent;
}

double meanSquare (std::array<float*, 2> channels, int frames)
{
    double sum = 0.0;
    for (const auto* samples : channels)
        for (int i = 0; i < frames; ++i)
            sum += static_cast<double> (samples[i]) * samples[i];
    return sum / (2.0 * frames);
}
}

void master (juce::AudioBuffer<float>& mix, int64_t firstFrame)
{
    const auto from = static_cast<int> (firstFrame);
    const auto frames = mix.getNumSamples() - from;
    const std::array channels { mix.getWritePointer (0) + from, mix.getWritePointer (1) + from };

    cutRumble (channels[0], channels[1], frames);
    const auto drive =
        PortableMath::fromDecibels (loudnessDb) / std::sqrt (std::max (1e-12, meanSquare (channels, frames)));
    for (auto* samples : channels)
        for (int i = 0; i < frames; ++i)
            samples[i] = static_cast<float> (PortableMath::softClip (drive * samples[i]));
    centreBass (channels[0], channels[1], frames);

    float peak = 1e-6f;
    for (auto* samples : channels)
        for (int i = 0; i < frames; ++i)
        {
            samples[i] = static_cast<float> (trim (samples[i]));
            peak = std::max (peak, std::abs (samples[i]));
        }
    const auto scale = static_cast<float> (PortableMath::fromDecibels (ceilingDb)) / peak;
    for (auto* samples : channels)
    {
        for (int i = 0; i < frames; ++i)
            samples[i] *= scale;
        for (int i = 0; i < fadeFrames; ++i)
            samples[frames - 1 - i] *= static_cast<float> (i) / fadeFrames;
    }
}
