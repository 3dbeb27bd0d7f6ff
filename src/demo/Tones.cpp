#include "demo/Tones.h"

#include "demo/DemoTrack.h"
#include "demo/Filter.h"
#include "support/RandGeneratorLCG.h"

#include <array>

namespace
{
constexpr double rate = DemoTrack::sampleRate;
constexpr int controlFrames = 16;
using PortableMath::decayPerSample;

/** An oscillator's phase in turns. */
struct Phasor
{
    double phase = 0.0, step = 0.0;

    double next() noexcept
    {
        const auto now = phase;
        phase += step;
        if (phase >= 1.0)
            phase -= 1.0;
        return now;
    }
};

/** Correction of a polynomial band-limited step around the wrap at 0. */
double blep (double phase, double step) noexcept
{
    if (phase < step)
    {
        const auto t = phase / step - 1.0;
        return -t * t;
    }
    if (phase > 1.0 - step)
    {
        const auto t = (phase - 1.0) / step + 1.0;
        return t * t;
    }
    return 0.0;
}

/** One channel's oscillators and filter. */
class Channel
{
public:
    Channel (const TonePatch& p, double hz, double side, RandGeneratorLCG& random) noexcept : patch (p)
    {
        for (int i = 0; i < patch.saws; ++i)
        {
            const auto spread = patch.saws > 1 ? 2.0 * i / (patch.saws - 1) - 1.0 : 0.0;
            const auto cents = patch.detuneCents * (spread + 0.23 * patch.width * side);
            saws[static_cast<size_t> (i)] = { random.nextDouble(),
                                              hz * PortableMath::exp2 (cents / 1200.0) / rate };
        }
        const auto shift = PortableMath::exp2 (patch.width * side * 4.0 / 1200.0);
        square = { 0.0, hz * shift / rate };
        sub = { 0.0, 0.5 * hz / rate };
        carrier = { 0.0, hz * shift / rate };
        modulator = { 0.0, hz * patch.fmRatio / rate };
        sawScale = patch.saws > 0 ? patch.sawGain / (0.4 + 0.6 * patch.saws) : 0.0;
    }

    void tune (double cutoffHz, double fmDepth) noexcept
    {
        first.tune (cutoffHz / rate, 0.54);
        second.tune (cutoffHz / rate, patch.resonance);
        depth = fmDepth;
    }

    double next() noexcept
    {
        double sum = 0.0;
        for (int i = 0; i < patch.saws; ++i)
        {
            auto& saw = saws[static_cast<size_t> (i)];
            const auto phase = saw.next();
            sum += 2.0 * phase - 1.0 - blep (phase, saw.step);
        }
        sum *= sawScale;
        if (patch.squareGain > 0.0)
        {
            const auto phase = square.next();
            const auto other = phase < 0.5 ? phase + 0.5 : phase - 0.5;
            sum += patch.squareGain
                   * ((phase < 0.5 ? 1.0 : -1.0) + blep (phase, square.step) - blep (other, square.step));
        }
        if (patch.fmGain > 0.0)
        {
            const auto bend = carrier.next() + depth * PortableMath::sine (modulator.next()) + 8.0;
            sum += patch.fmGain * PortableMath::sine (bend - static_cast<int> (bend));
        }
        auto filtered = second.lowPass (first.lowPass (sum));
        if (patch.drive > 1.0)
            filtered = PortableMath::softClip (patch.drive * filtered) / patch.drive;
        return patch.subGain > 0.0 ? filtered + patch.subGain * PortableMath::sine (sub.next()) : filtered;
    }

private:
    const TonePatch& patch;
    std::array<Phasor, 7> saws;
    Phasor square, sub, carrier, modulator;
    Filter first, second;
    double sawScale, depth = 0.0;
};

/** Linear attack, exponential decay to the sustained level, exponential release, and a last fade to zero. */
std::vector<float> amplitude (const TonePatch& patch, int gateFrames)
{
    const auto releaseFrames = static_cast<int> (4.0 * patch.release * rate) + 1;
    std::vector<float> levels (static_cast<size_t> (gateFrames + releaseFrames));
    const auto attackStep = 1.0 / (patch.attack * rate + 1.0);
    const auto decay = decayPerSample (patch.decay, rate);
    const auto release = decayPerSample (patch.release, rate);
    double level = 0.0;
    bool rising = true;
    for (int i = 0; i < gateFrames + releaseFrames; ++i)
    {
        if (i >= gateFrames)
            level *= release;
        else if (rising)
        {
            level += attackStep;
            rising = level < 1.0;
        }
        else
            level = patch.sustain + (level - patch.sustain) * decay;
        const auto left = static_cast<double> (gateFrames + releaseFrames - 1 - i) / releaseFrames;
        levels[static_cast<size_t> (i)] = static_cast<float> (i >= gateFrames ? level * left : level);
    }
    return levels;
}
}

Shot renderTone (const TonePatch& patch, int note, int gateFrames, int32_t seed)
{
    RandGeneratorLCG random (seed);
    const auto hz = PortableMath::noteHz (note);
    const auto tracked = patch.cutoffHz * PortableMath::exp2 (patch.keyTrack * (note - 60) / 12.0);
    const auto filterDecay = PortableMath::exp2 (-1.4427 * controlFrames / (patch.filterSeconds * rate));
    const auto fmDecay =
        patch.fmGain > 0.0 ? PortableMath::exp2 (-1.4427 * controlFrames / (patch.fmSeconds * rate)) : 1.0;
    const auto levels = amplitude (patch, gateFrames);

    Shot shot;
    for (const auto side : { -1.0, 1.0 })
    {
        if (side > 0.0 && patch.width <= 0.0)
            break;
        Channel channel (patch, hz, patch.width > 0.0 ? side : 0.0, random);
        auto& out = side < 0.0 ? shot.left : shot.right;
        out.resize (levels.size());
        double envelope = 1.0, fmDepth = patch.fmIndex / (2.0 * PortableMath::pi);
        for (size_t i = 0; i < out.size(); ++i)
        {
            if (i % controlFrames == 0)
            {
                channel.tune (tracked * PortableMath::exp2 (patch.envelopeOctaves * envelope), fmDepth);
                envelope *= filterDecay;
                fmDepth *= fmDecay;
            }
            out[i] = static_cast<float> (channel.next()) * levels[i];
        }
    }
    return shot;
}
