#include "fx/EffectRack.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_events/juce_events.h>

#include <cstdio>
#include <memory>

// bench_fx: what each effect and a deck's whole rack cost, as a share of the block's duration on one core.

namespace
{
constexpr double rate = 44100.0, bpm = 126.0;
constexpr int blocks = 100'000, warmUpBlocks = 500;

/** Runs `process (left, right, frames)` over music, block after block, and prints a row. */
template <typename Process>
void measure (const char* what, int frames, Process&& process)
{
    static const auto music = MusicLike::make (20.0, rate);
    juce::AudioBuffer<float> block (2, frames);
    const juce::ScopedNoDenormals noDenormals; // as in the engine
    Timing::Durations durations (blocks);
    for (int i = -warmUpBlocks, from = 0; i < blocks; ++i, from += frames)
    {
        if (from + frames > music.getNumSamples())
            from = 0;
        for (int side = 0; side < 2; ++side)
            block.copyFrom (side, 0, music, side, from, frames);
        const auto begin = Timing::nanoseconds();
        process (block.getWritePointer (0), block.getWritePointer (1), frames);
        if (i >= 0)
            durations.add (Timing::nanoseconds() - begin);
    }
    const auto share = 100.0 / (frames / rate * 1e9);
    std::printf ("%-44s %6d %8.2f %9.3f %% %9.3f %% %9.3f %%\n", what, frames, durations.mean() / 1000.0,
                 durations.mean() * share, durations.quantile (0.9999) * share,
                 durations.quantile (1.0) * share);
    std::fflush (stdout);
}

struct RackRow
{
    const char* what;
    std::array<int, EffectRack::slotCount> kinds;
    bool areOn;
    double filter;
    bool isMidOn;
};

constexpr RackRow racks[] {
    { "rack at rest: split, nothing on",
      { FxType::flanger, FxType::phaser, FxType::delay },
      false,
      0.5,
      true },
    { "rack: Flanger, Phaser, Delay", { FxType::flanger, FxType::phaser, FxType::delay }, true, 0.5, true },
    { "the same, low-pass filter, mid band off",
      { FxType::flanger, FxType::phaser, FxType::delay },
      true,
      0.2,
      false },
    { "rack: LowPass, Distortion, Reverb, filter",
      { FxType::lowPass, FxType::distortion, FxType::reverb },
      true,
      0.8,
      false },
};

void measureRack (const RackRow& row, int frames)
{
    const auto rack = std::make_unique<EffectRack>();
    for (int slot = 0; slot < EffectRack::slotCount; ++slot)
    {
        rack->selectFx (slot, FxType::selectorValue (row.kinds[static_cast<size_t> (slot)]));
        rack->setFxParameter (slot, FxParameter::bypass, row.areOn ? 0.0 : 1.0);
    }
    rack->setFilter (row.filter);
    rack->setBand (BandSplit::mid, row.isMidOn);
    measure (row.what, frames,
             [&] (float* left, float* right, int n) { rack->process (left, right, n, bpm); });
}
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    Machine::print();
    std::printf (
        "Cost of effects on a stereo pair; shares of the block's duration on one core, %d blocks a row.\n",
        blocks);
    std::printf ("%-44s %6s %8s %11s %11s %11s\n", "", "frames", "mean us", "mean", "99.99 %", "maximum");
    for (const auto frames : { 64, 128 })
    {
        for (int kind = 0; kind < FxType::count; ++kind)
        {
            EffectSlot slot (kind);
            slot.setFxParameter (FxParameter::bypass, 0.0);
            slot.setSampleRate (rate);
            measure (FxType::name (kind), frames,
                     [&] (float* left, float* right, int n) { slot.process (left, right, n, bpm); });
        }
        for (const auto& row : racks)
            measureRack (row, frames);
    }
}
