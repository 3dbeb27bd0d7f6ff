#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Performer.h"
#include "measure/Timing.h"

#include <juce_events/juce_events.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string_view>
#include <vector>

// bench_sampler: the cost of sixteen pads that play beside a master deck, as a share of a block's duration on one core.

namespace
{
constexpr double rate = 44100.0;
constexpr int block = 128, blocks = 20'000, warmUp = 1000;

/** Runs of the same blocks. A block's cost is its least of them: what other work on the machine adds hits each run elsewhere. */
constexpr int runs = 5;

struct Row
{
    const char* what;
    int pads;
    bool synced;
    bool deckPlays;
    bool masterJumps = false; ///< each second
};

/** Plays a row once and keeps each block's least duration so far. @returns the level that was heard last */
float play (const Row& row, std::vector<int64_t>& least)
{
    static const auto track = MusicLike::make ((blocks + warmUp) * block / rate + 5.0, rate);
    BenchEngine engine (true, rate, block);
    engine->settings.bypassStretcher = 0;
    engine.putTrack (0, track, rate);
    engine.deck (0).marks.bpm = 125.0;
    engine.deck (0).marks.fixedGrid = 1;
    engine->setParameter (CPlatterdex::standaloneCall, CPlatterdex::standaloneValue);
    if (row.deckPlays)
        engine->setParameter (1, 1.0f);
    Performer::fillSampler (engine->sampler, rate, row.pads);
    engine->sampler.setSync (row.synced);
    for (int pad = 0; pad < row.pads; ++pad)
    {
        engine->sampler.padPress (pad, Sampler::strongest);
        engine.processBlock(); // one after the other, as hands do
    }
    for (int i = -warmUp; i < blocks; ++i)
    {
        if (row.masterJumps && i % 344 == 0)
        {
            const CallbackLock lock (engine->getCallbackLock(), "bench");
            engine.deck (0).jumpTo ((20.0 + i % 7) * rate);
        }
        if (const auto duration = engine.processBlock(); i >= 0)
            least[static_cast<size_t> (i)] = std::min (least[static_cast<size_t> (i)], duration);
    }
    return engine.output().getRMSLevel (12, 0, block);
}

void measure (const Row& row)
{
    std::vector<int64_t> least (blocks, std::numeric_limits<int64_t>::max());
    auto heard = 0.0f;
    for (int run = 0; run < runs; ++run)
        heard = play (row, least);
    Timing::Durations durations (blocks);
    for (const auto duration : least)
        durations.add (duration);
    const auto share = 100.0 / (block / rate * 1e9);
    std::printf ("%-44s %9.3f %% %9.3f %% %9.3f %%  heard %.3f\n", row.what, durations.mean() * share,
                 durations.quantile (0.9999) * share, durations.quantile (1.0) * share,
                 static_cast<double> (heard));
    std::fflush (stdout);
}

/** The memory of a sampler, its thread and all: many are made, so that what the heap has to spare already is no matter. */
void measureMemory()
{
    constexpr int many = 40;
    BenchEngine engine (true, rate, block);
    const SongPosition host;
    std::vector<std::unique_ptr<Sampler>> samplers;
    auto last = Machine::proportionalMegabytes();
    const auto tell = [&last] (const char* what)
    {
        const auto now = Machine::proportionalMegabytes();
        std::printf ("%-44s %9.2f MB\n", what, (now - last) / many);
        last = now;
    };
    for (int i = 0; i < many; ++i)
        samplers.push_back (
            std::make_unique<Sampler> (engine->sampler.desk.world, host, engine->environment.folders,
                                       engine->environment.decoderLibrary, [] { return juce::Time(); }));
    tell ("an empty sampler");
    for (auto& sampler : samplers)
        Performer::fillSampler (*sampler, rate, 1);
    tell ("two seconds on a pad, and its stretcher");
    for (auto& sampler : samplers)
    {
        sampler->clearSlot (0);
        sampler->waitUntilIdle();
    }
    tell ("the pad cleared");
    for (auto& sampler : samplers)
        Performer::fillSampler (*sampler, rate, 1);
    tell ("two seconds on a pad that has a stretcher");
}
}

/** @param arguments   "--only=TEXT": only rows whose name holds that; "memory" is one */
int main (int count, char** arguments)
{
    constexpr std::string_view option = "--only=";
    const std::string_view argument = count > 1 ? arguments[1] : "";
    const auto only = argument.starts_with (option) ? argument.substr (option.size()) : std::string_view();
    const juce::ScopedJuceInitialiser_GUI juceScope;
    Machine::print();
    if (only.empty() || only == "memory")
        measureMemory(); // before engines that go leave the heap with room
    std::printf ("%-44s %11s %11s %11s\n", "blocks of 128 frames", "mean", "99.99 %", "maximum");
    for (const Row& row : { Row { "an engine at rest", 0, false, false },
                            { "16 pads at their own tempo", 16, false, false },
                            { "a deck with key lock", 0, false, true },
                            { "1 synced pad beside it, 120 at 125 BPM", 1, true, true },
                            { "4 synced pads beside it", 4, true, true },
                            { "16 synced pads beside it", 16, true, true },
                            { "16 synced pads whose master jumps", 16, true, true, true } })
        if (std::string_view (row.what).find (only) != std::string_view::npos)
            measure (row);
}
