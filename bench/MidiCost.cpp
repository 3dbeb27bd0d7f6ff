#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "engine/CommandTable.h"
#include "midi/system/MidiSystem.h"

#include <juce_events/juce_events.h>

#include <cstdio>

// bench_midi: the time that a message through the mapping table and a tick of the lamps take.

namespace
{
constexpr int blockFrames = 256;
constexpr double engineRate = 48000.0;
std::unique_ptr<MidiSystem> makeMidi (CPlatterdex& engine)
{
    MidiSystem::Options options;
    options.backends.clear();
    options.hasThreads = false;
    return std::make_unique<MidiSystem> (engine, std::move (options));
}

/** A table in which every command has a control. */
void fill (MidiMapping& mapping)
{
    for (int row = 1; row < MidiMapping::rowCount; ++row)
        mapping.setRow (row, { (row % 2 == 0 ? 0x90 : 0xb0) + row / 128, row % 128 });
}

void printLine (const char* what, Timing::Durations& all, double unit, const char* name)
{
    std::printf ("%-44s %9zu %9.2f %9.2f %9.2f %9.2f  %s\n", what, all.count(), all.mean() / unit,
                 all.quantile (0.5) / unit, all.quantile (0.999) / unit, all.quantile (1.0) / unit, name);
}

void measureDispatch (BenchEngine& engine)
{
    const auto midi = makeMidi (*engine);
    fill (midi->control.mapping);
    const auto measure = [&] (const char* what, const char* constant)
    {
        const auto row = midi->control.mapping.row (CommandTable::numberOf (constant));
        Timing::Durations all (100000);
        for (int i = 0; i < 100000; ++i)
        {
            const auto begin = Timing::nanoseconds();
            midi->control.handle (row.status, row.data, i % 128);
            all.add (Timing::nanoseconds() - begin);
        }
        printLine (what, all, 1e3, "us");
    };
    measure ("message, full table: crossfader", "CROSSFADER");
    measure ("message, full table: volume", "VOLUME_A");
    measure ("message, full table: jog", "JOG_B");
    measure ("message, full table: loop size", "LOOP_SIZE_C");

    Timing::Durations unmapped (100000);
    for (int i = 0; i < 100000; ++i)
    {
        const auto begin = Timing::nanoseconds();
        midi->control.handle (0x9f, i % 128, 1);
        unmapped.add (Timing::nanoseconds() - begin);
    }
    printLine ("message, full table: no row", unmapped, 1e3, "us");
}

void measureLamps (BenchEngine& engine)
{
    const auto midi = makeMidi (*engine);
    auto& mapping = midi->control.mapping;
    int lamps = 0;
    for (int row = 1; row < MidiMapping::rowCount && lamps < 300; ++row)
        if (CommandTable::find (row)->feedback != CommandFeedback::none)
            mapping.setRow (row, { 0x90 + lamps / 128, lamps++ % 128 });
    mapping.showsLamps = true;
    midi->control.tick();
    Timing::Durations all (20000);
    for (int i = 0; i < 20000; ++i)
    {
        const auto begin = Timing::nanoseconds();
        midi->control.tick();
        all.add (Timing::nanoseconds() - begin);
    }
    std::printf ("%d lamps\n", lamps);
    printLine ("tick of unchanged lamps", all, 1e3, "us");
}
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    Machine::print();
    std::printf ("%-44s %9s %9s %9s %9s %9s\n", "", "times", "mean", "median", "99.9 %", "most");
    BenchEngine engine (false, engineRate, blockFrames);
    measureDispatch (engine);
    measureLamps (engine);
    return 0;
}
