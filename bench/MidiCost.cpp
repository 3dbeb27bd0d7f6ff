#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "engine/CommandTable.h"
#include "midi/system/MidiSystem.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <cstdio>
#include <thread>

// bench_midi: what a message and a tick of the lamps cost, and how long a message takes from its port to its effect while
// four decks play.

namespace
{
constexpr int blockFrames = 256;
constexpr double engineRate = 48000.0;
constexpr int messagesPerSecond = 2000, secondsOfMessages = 20;

/** Takes the time at which each message has acted: the driver of a model hears it after the mapping table. */
struct Arrivals
{
    static inline std::vector<int64_t> sent, acted;
    static inline std::atomic<size_t> count { 0 };

    static void heard (MidiControl&, int, int, int)
    {
        const auto index = count.load (std::memory_order_relaxed);
        if (index < acted.size())
            acted[index] = Timing::nanoseconds();
        count.store (index + 1, std::memory_order_release);
    }

    static constexpr std::array<ControllerDriver, 2> drivers { ControllerDriver {},
                                                               ControllerDriver { .input = heard } };
};

std::unique_ptr<MidiSystem> makeMidi (CPlatterdex& engine, bool hasThreads)
{
    MidiSystem::Options options;
    options.backends.clear();
    options.hasThreads = hasThreads;
    options.drivers = Arrivals::drivers;
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
    const auto midi = makeMidi (*engine, false);
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
    const auto midi = makeMidi (*engine, false);
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

/** Prints how many of the durations lie in each span of a doubling row. */
void printHistogram (const Timing::Durations& all, size_t total)
{
    int64_t lower = 0;
    for (int64_t upper = 62'500; lower < 16'000'000; lower = upper, upper *= 2)
    {
        const auto share = all.countAbove (lower - 1) - all.countAbove (upper - 1);
        std::printf ("  below %8.4f ms  %7zu  %s\n", static_cast<double> (upper) / 1e6, share,
                     std::string (60 * share / std::max<size_t> (1, total), '#').c_str());
    }
    std::printf ("  above             %7zu\n", all.countAbove (lower - 1));
}

/** Faders, jogs and notes at a pace no controller reaches, while a device asks for blocks. @param isPlaying   blocks come */
void measureLatency (BenchEngine& engine, bool isPlaying)
{
    const auto midi = makeMidi (*engine, true);
    midi->control.selectController (1);
    const std::array constants { "CROSSFADER", "JOG_A", "LOOP_SIZE_A", "VOLUME_B", "FILTER_C" };
    for (size_t i = 0; i < constants.size(); ++i)
        midi->control.mapping.setRow (CommandTable::numberOf (constants[i]), { 0xb0, static_cast<int> (i) });

    std::atomic<bool> stopping { false };
    std::thread device (
        [&]
        {
            const auto period =
                std::chrono::nanoseconds (static_cast<int64_t> (blockFrames / engineRate * 1e9));
            for (auto next = std::chrono::steady_clock::now(); !stopping;)
            {
                if (isPlaying)
                    engine.processBlock();
                std::this_thread::sleep_until (next += period);
            }
        });
    constexpr size_t total = messagesPerSecond * secondsOfMessages;
    Arrivals::count = 0;
    Arrivals::sent.assign (total, 0);
    Arrivals::acted.assign (total, 0);
    auto next = std::chrono::steady_clock::now();
    for (size_t i = 0; i < total; ++i)
    {
        const std::array message { static_cast<uint8_t> (0xb0), static_cast<uint8_t> (i % constants.size()),
                                   static_cast<uint8_t> (60 + i % 8) };
        Arrivals::sent[i] = Timing::nanoseconds();
        midi->control.midiArrived ({}, message);
        std::this_thread::sleep_until (next += std::chrono::microseconds (1'000'000 / messagesPerSecond));
    }
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
    stopping = true;
    device.join();

    const size_t acted = Arrivals::count;
    Timing::Durations all (total);
    for (size_t i = 0; i < std::min (acted, total); ++i)
        all.add (Arrivals::acted[i] - Arrivals::sent[i]);
    printLine (isPlaying ? "port to effect, four decks playing" : "port to effect, no audio", all, 1e6, "ms");
    std::printf ("  %zu of %zu messages came through\n", acted, total);
    printHistogram (all, total);
}
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    Machine::print();
    std::printf ("%-44s %9s %9s %9s %9s %9s\n", "", "times", "mean", "median", "99.9 %", "most");
    BenchEngine engine (false, engineRate, blockFrames);
    juce::AudioBuffer<float> noise (2, static_cast<int> (60 * engineRate));
    juce::Random random (1);
    for (int i = 0; i < noise.getNumSamples(); ++i)
        noise.setSample (0, i, random.nextFloat() - 0.5f);
    noise.copyFrom (1, 0, noise, 0, 0, noise.getNumSamples());
    measureDispatch (engine);
    measureLamps (engine);
    for (int deck = 0; deck < deckCount; ++deck)
    {
        engine.putTrack (deck, noise, engineRate);
        engine->transport.playPause (deck);
    }
    measureLatency (engine, false);
    measureLatency (engine, true);
    return 0;
}
