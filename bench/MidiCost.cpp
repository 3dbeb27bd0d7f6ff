#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "engine/CommandTable.h"
#include "midi/native/NativeDrivers.h"
#include "midi/native/table/ModelList.h"
#include "midi/system/MidiSystem.h"

#include <juce_events/juce_events.h>

#include <algorithm>
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

/** The native driver with the most lamps: messages that it knows and one that it doesn't, and a tick in which nothing changes. */
void measureNative (BenchEngine& engine)
{
    int largest = 0;
    size_t most = 0;
    for (int model = 0; model < ModelList::count; ++model)
        if (const auto* table = ModelList::entry (model).table; table != nullptr)
        {
            size_t lamps = 0;
            for (const auto& lamp : table->lamps)
                lamps += static_cast<size_t> (
                    std::ranges::count_if (lamp.at, [] (const auto& address) { return address.isSet(); }));
            if (lamps > most)
            {
                most = lamps;
                largest = model;
            }
        }
    const auto midi = makeMidi (*engine);
    NativeDrivers drivers;
    drivers.startController (midi->control, largest);
    std::printf ("%s: %zu lamps\n", ModelList::entry (largest).name, most);

    const auto measure = [&] (const char* what, int times, const auto& act)
    {
        Timing::Durations all (static_cast<size_t> (times));
        for (int i = 0; i < times; ++i)
        {
            const auto begin = Timing::nanoseconds();
            act (i);
            all.add (Timing::nanoseconds() - begin);
        }
        printLine (what, all, 1e3, "us");
    };
    const auto& rows = ModelList::entry (largest).table->controls;
    const auto fader = std::ranges::find (rows, Function (FunctionId::volume), &Control::function);
    measure ("native input: fader", 100000,
             [&] (int i) {
                 drivers.handleControllerInput (midi->control, largest, fader->at[0].status,
                                                fader->at[0].data, i % 128);
             });
    measure ("native input: unknown", 100000,
             [&] (int i) { drivers.handleControllerInput (midi->control, largest, 0x9f, i % 128, 1); });
    drivers.updateControllerOutput (midi->control, largest, 0);
    measure ("native output: nothing changed", 20000,
             [&] (int) { drivers.updateControllerOutput (midi->control, largest, 0); });
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
    measureNative (engine);
    return 0;
}
