#include "demo/Drums.h"

#include "demo/DemoTrack.h"
#include "demo/Filter.h"
#include "support/RandGeneratorLCG.h"

#include <algorithm>
#include <array>

namespace
{
constexpr double rate = DemoTrack::sampleRate;
using PortableMath::decayPerSample;

double noise (RandGeneratorLCG& random) noexcept
{
    return 2.0 * random.nextDouble() - 1.0;
}

/** Takes the last 5 ms down to zero, so that no shot ends in a step. */
void fadeEnd (std::vector<float>& samples)
{
    const auto fade = std::min<size_t> (samples.size(), 220);
    for (size_t i = 0; i < fade; ++i)
        samples[samples.size() - 1 - i] *= static_cast<float> (i) / static_cast<float> (fade);
}

/** The cluster of six square oscillators at the ratios of analogue cymbal circuits. */
class Metal
{
public:
    explicit Metal (double hz) noexcept
    {
        static constexpr std::array ratios { 1.0, 1.3420, 1.5183, 1.8261, 2.6353, 2.7346 };
        for (size_t i = 0; i < ratios.size(); ++i)
            steps[i] = hz * ratios[i] / rate;
    }

    double next() noexcept
    {
        double sum = 0.0;
        for (size_t i = 0; i < steps.size(); ++i)
        {
            phases[i] += steps[i];
            if (phases[i] >= 1.0)
                phases[i] -= 1.0;
            sum += phases[i] < 0.5 ? 1.0 : -1.0;
        }
        return sum / 6.0;
    }

private:
    std::array<double, 6> steps {}, phases {};
};

void addBody (const DrumPatch& patch, std::vector<float>& out)
{
    const auto sweepDecay = decayPerSample (patch.sweepSeconds, rate);
    const auto bodyDecay = decayPerSample (patch.bodySeconds, rate);
    double phase = 0.0, sweep = patch.sweepHz, level = patch.bodyGain;
    for (auto& sample : out)
    {
        sample += static_cast<float> (level * PortableMath::sine (phase));
        phase += (patch.bodyHz + sweep) / rate;
        if (phase >= 1.0)
            phase -= 1.0;
        sweep *= sweepDecay;
        level *= bodyDecay;
    }
}

void addClick (const DrumPatch& patch, std::vector<float>& out, RandGeneratorLCG& random)
{
    Filter high;
    high.tune (1800.0 / rate, 0.7);
    const auto decay = decayPerSample (0.0016, rate);
    double level = patch.clickGain;
    for (size_t i = 0; i < std::min<size_t> (out.size(), 600); ++i, level *= decay)
        out[i] += static_cast<float> (level * high.highPass (noise (random)));
}

void addNoise (const DrumPatch& patch, std::vector<float>& out, RandGeneratorLCG& random)
{
    Filter high, steeperHigh, low;
    high.tune (patch.noiseLowHz / rate, 0.7);
    steeperHigh.tune (patch.noiseLowHz / rate, 0.7);
    low.tune (patch.noiseHighHz / rate, 0.6);
    constexpr size_t burstFrames = 485;
    const auto burstDecay = decayPerSample (0.004, rate);
    const auto tailDecay = decayPerSample (patch.noiseSeconds, rate);
    const auto bursts = static_cast<size_t> (patch.bursts);
    double level = patch.noiseGain;
    for (size_t i = 0; i < out.size(); ++i)
    {
        const auto burst = i / burstFrames;
        if (burst <= bursts && i % burstFrames == 0)
            level = patch.noiseGain;
        const auto filtered = low.lowPass (steeperHigh.highPass (high.highPass (noise (random))));
        out[i] += static_cast<float> (level * filtered);
        level *= burst < bursts ? burstDecay : tailDecay;
    }
}

void addMetal (const DrumPatch& patch, std::vector<float>& out)
{
    Metal metal (patch.metalHz);
    Filter high, steeperHigh;
    high.tune (6500.0 / rate, 0.8);
    steeperHigh.tune (7500.0 / rate, 0.7);
    const auto decay = decayPerSample (patch.metalSeconds, rate);
    double level = patch.metalGain;
    for (auto& sample : out)
    {
        sample += static_cast<float> (level * steeperHigh.highPass (high.highPass (metal.next())));
        level *= decay;
    }
}
}

Shot renderDrum (const DrumPatch& patch, int32_t seed)
{
    RandGeneratorLCG random (seed);
    Shot shot;
    shot.left.resize (static_cast<size_t> (patch.seconds * rate));
    if (patch.bodyGain > 0.0)
        addBody (patch, shot.left);
    if (patch.clickGain > 0.0)
        addClick (patch, shot.left, random);
    if (patch.noiseGain > 0.0)
        addNoise (patch, shot.left, random);
    if (patch.metalGain > 0.0)
        addMetal (patch, shot.left);
    for (auto& sample : shot.left)
        sample = static_cast<float> (PortableMath::softClip (patch.drive * sample) / patch.drive);
    fadeEnd (shot.left);
    return shot;
}

Shot renderRiser (double seconds, int32_t seed)
{
    Shot shot;
    const auto frames = static_cast<size_t> (seconds * rate);
    for (auto* channel : { &shot.left, &shot.right })
    {
        RandGeneratorLCG random (seed);
        random.seed (random.nextInt() + (channel == &shot.right ? 1 : 0));
        Filter band;
        channel->resize (frames);
        for (size_t i = 0; i < frames; ++i)
        {
            const auto along = static_cast<double> (i) / static_cast<double> (frames);
            if (i % 64 == 0)
                band.tune (250.0 * PortableMath::exp2 (5.17 * along) / rate, 1.1);
            (*channel)[i] = static_cast<float> (along * along * band.bandPass (noise (random)));
        }
        fadeEnd (*channel);
    }
    return shot;
}

Shot renderCrash (double seconds, int32_t seed)
{
    const DrumPatch cymbal { .seconds = seconds,
                             .bodyGain = 0.0,
                             .bodyHz = 0.0,
                             .sweepHz = 0.0,
                             .sweepSeconds = 1.0,
                             .bodySeconds = 1.0,
                             .clickGain = 0.3,
                             .noiseGain = 0.8,
                             .noiseLowHz = 2600.0,
                             .noiseHighHz = 13000.0,
                             .noiseSeconds = 0.55,
                             .bursts = 0,
                             .metalGain = 0.35,
                             .metalHz = 420.0,
                             .metalSeconds = 0.7,
                             .drive = 1.0 };
    auto shot = renderDrum (cymbal, seed);
    shot.right = renderDrum (cymbal, seed + 1).left;

    const DrumPatch fall { .seconds = std::min (seconds, 1.2),
                           .bodyGain = 0.5,
                           .bodyHz = 32.0,
                           .sweepHz = 50.0,
                           .sweepSeconds = 0.25,
                           .bodySeconds = 0.3,
                           .clickGain = 0.0,
                           .noiseGain = 0.0,
                           .noiseLowHz = 0.0,
                           .noiseHighHz = 0.0,
                           .noiseSeconds = 1.0,
                           .bursts = 0,
                           .metalGain = 0.0,
                           .metalHz = 0.0,
                           .metalSeconds = 1.0,
                           .drive = 1.0 };
    const auto sub = renderDrum (fall, seed);
    for (size_t i = 0; i < sub.frames(); ++i)
    {
        shot.left[i] += sub.left[i];
        shot.right[i] += sub.left[i];
    }
    return shot;
}
