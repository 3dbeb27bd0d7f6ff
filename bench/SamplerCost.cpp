#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include <juce_events/juce_events.h>

#include <cstdio>

// bench_sampler: the cost of sixteen pads that play beside a master deck, as a share of a block's duration on one core.

namespace
{
constexpr double rate = 44100.0;
constexpr int block = 128, blocks = 100'000, warmUp = 2000;

struct Row
{
    const char* what;
    int pads;
    bool synced;
    bool deckPlays;
};

/** Lays four beats of music at 120 BPM onto every pad, as the import thread does. */
void fill (Sampler& sampler, int pads)
{
    const auto music = MusicLike::make (2.0, rate);
    for (int pad = 0; pad < pads; ++pad)
    {
        auto& slot = *sampler.desk.find (pad);
        std::copy_n (music.getReadPointer (0), music.getNumSamples(), slot.buffer.left());
        std::copy_n (music.getReadPointer (1), music.getNumSamples(), slot.buffer.right());
        SampleFacts facts;
        facts.lengthFrames = music.getNumSamples();
        facts.beats = 8.0;
        auto stretcher = sampler.desk.makeStretcher();
        sampler.desk.publish (slot, facts, stretcher);
        sampler.setPlayMode (pad, loopMode);
    }
}

void measure (const Row& row)
{
    BenchEngine engine (true, rate, block);
    engine->settings.bypassStretcher = 0;
    engine.putTrack (0, MusicLike::make (400.0, rate), rate);
    engine.deck (0).marks.bpm = 125.0;
    engine.deck (0).marks.fixedGrid = 1;
    engine->setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);
    if (row.deckPlays)
        engine->setParameter (1, 1.0f);
    fill (engine->sampler, row.pads);
    engine->sampler.setSync (row.synced);
    for (int pad = 0; pad < row.pads; ++pad)
    {
        engine->sampler.padPress (pad, Sampler::strongest);
        engine.processBlock(); // one after the other, as hands do
    }
    Timing::Durations durations (blocks);
    for (int i = -warmUp; i < blocks; ++i)
        if (const auto duration = engine.processBlock(); i >= 0)
            durations.add (duration);
    const auto share = 100.0 / (block / rate * 1e9);
    std::printf ("%-44s %9.3f %% %9.3f %% %9.3f %%  heard %.3f\n", row.what, durations.mean() * share,
                 durations.quantile (0.9999) * share, durations.quantile (1.0) * share,
                 static_cast<double> (engine.output().getRMSLevel (12, 0, block)));
    std::fflush (stdout);
}
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    Machine::print();
    std::printf ("%-44s %11s %11s %11s\n", "blocks of 128 frames", "mean", "99.99 %", "maximum");
    measure ({ "an engine at rest", 0, false, false });
    measure ({ "16 pads at their own tempo", 16, false, false });
    measure ({ "a deck with key lock", 0, false, true });
    measure ({ "16 synced pads beside it, 120 at 125 BPM", 16, true, true });
}
