#include "measure/Machine.h"
#include "measure/Timing.h"

#include "fx/modulation/ModulationFx.h"
#include "fx/reverb/ReverbFx.h"

#include <algorithm>
#include <cstdio>
#include <vector>

// bench_modulation: what the Flanger, the Phaser and the Reverb cost alone, as a share of the block's own duration on
// one core.

namespace
{
constexpr double engineRate = 44100.0, bpm = 126.0;
constexpr int warmUpBlocks = 500, blocks = 50'000;

template <class Effect>
void measure (const char* what, int frames, bool bypassed)
{
    Effect effect;
    effect.setSampleRate (engineRate);
    effect.setFxParameter (FxParameter::bypass, bypassed ? 1.0 : 0.0);
    effect.setFxParameter (FxParameter::feedback, 0.25);

    fx_dsp::rand_generator_lcg random;
    std::vector<float> source (8192);
    for (auto& sample : source)
        sample = static_cast<float> (random.next() - 0.5);
    std::vector<float> left (static_cast<size_t> (frames)), right (left.size());
    Timing::Durations durations (blocks);
    for (int i = -warmUpBlocks; i < blocks; ++i)
    {
        const auto from = source.begin() + (i + warmUpBlocks) * frames % 4096;
        std::copy_n (from, frames, left.begin());
        std::copy_n (from + 1024, frames, right.begin());
        const auto before = Timing::nanoseconds();
        effect.process (left.data(), right.data(), frames, bpm);
        if (i >= 0)
            durations.add (Timing::nanoseconds() - before);
    }
    const auto share = 100.0 / (frames / engineRate * 1e9);
    std::printf ("%-24s %6d %9.4f %% %9.4f %% %9.4f %%\n", what, frames, durations.mean() * share,
                 durations.quantile (0.5) * share, durations.quantile (0.9999) * share);
}
}

int main()
{
    Machine::print();
    std::printf ("Cost of one effect alone; shares of the block's duration on one core.\n");
    std::printf ("%-24s %6s %11s %11s %11s\n", "", "frames", "mean", "median", "99.99 %");
    for (const auto frames : { 64, 128 })
    {
        measure<FlangerFx> ("Flanger", frames, false);
        measure<PhaserFx> ("Phaser", frames, false);
        measure<ReverbFx> ("Reverb", frames, false);
        measure<ReverbFx> ("Reverb, bypassed", frames, true);
    }
}
