#include "adec/BuiltDecoder.h"
#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include <juce_events/juce_events.h>

#include <cstdio>

// bench_start: how long an engine takes to be ready and to go, and the memory it holds.

namespace
{
constexpr int repeats = 20;

/** The steps of the memory's growth. */
class Memory
{
public:
    Memory() { step ("before the first engine"); }

    void step (const char* what)
    {
        const auto now = Machine::residentMegabytes();
        std::printf ("%-44s %8.1f MB %+9.1f\n", what, now, last > 0.0 ? now - last : 0.0);
        last = now;
    }

private:
    double last = 0.0;
};

void loadWhole (BenchEngine& engine, const juce::File& file, int deck)
{
    engine->loadTrack (file, deck);
    engine->loaders.waitUntilIdle (deck);
}

/** The measurements of one kind of start. */
struct Start
{
    Timing::Durations construction, destruction;

    void add (const juce::File& root)
    {
        EngineWorld world;
        world.folders.root = root;
        world.decoderLibrary = juce::File (builtDecoder());
        const auto begin = Timing::nanoseconds();
        auto engine = std::make_unique<CPlatterdex> (std::move (world));
        const auto ready = Timing::nanoseconds();
        engine.reset();
        construction.add (ready - begin);
        destruction.add (Timing::nanoseconds() - ready);
    }

    void print (const char* what)
    {
        std::printf ("%-34s %6zu %9.2f %9.2f %9.2f %9.2f\n", what, construction.count(),
                     construction.quantile (0.5) / 1e6, construction.quantile (1.0) / 1e6,
                     destruction.quantile (0.5) / 1e6, destruction.quantile (1.0) / 1e6);
    }
};
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    const auto file = MusicLike::encoded ("mp3", juce::File (PX_BENCH_TRACKS));
    if (!file.existsAsFile())
        return 1;
    Machine::print();

    // First of all: the process's first engine loads the decoder's libraries too.
    const TemporaryFolder folder;
    Memory memory;
    Start first, later;
    first.add (folder);
    memory.step ("after the first engine has gone");
    for (int i = 0; i < repeats; ++i)
        later.add (folder);
    memory.step ("after as many more as below");
    {
        BenchEngine engine (true);
        memory.step ("with an engine");
        loadWhole (engine, file, 0);
        memory.step ("one track of 5 minutes loaded");
        for (int deck = 1; deck < deckCount; ++deck)
            loadWhole (engine, file, deck);
        memory.step ("four of them");
    }
    memory.step ("after that engine has gone");

    std::printf ("\nms %31s %6s %9s %9s %9s %9s\n", "", "", "ready", "(max)", "gone", "(max)");
    first.print ("first engine of the process");
    later.print ("engines after it (median)");
}
