#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include "plugins/slot/VstSlots.h"
#include "support/CallbackLock.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <cstdio>
#include <random>
#include <thread>

// bench_plugins PLUGIN...: four decks play at the pace of a device while plug-ins are swapped in all slots at random; then the
// cost of a slot. The plug-ins are files of any format.

namespace
{
constexpr int blockFrames = 128, swaps = 1000, longestPauseMs = 40;
constexpr double engineRate = 44100.0;
const auto period = std::chrono::nanoseconds (static_cast<int64_t> (blockFrames / engineRate * 1e9));

/** Asks for blocks at the pace of a device until it is told to stop. */
struct AudioDevice
{
    explicit AudioDevice (BenchEngine& e) : engine (e) {}

    void run()
    {
        auto next = std::chrono::steady_clock::now();
        for (auto last = 0.0f; !stopping; std::this_thread::sleep_until (next += period))
        {
            int64_t waited = 0;
            const auto took = engine.processBlock (waited);
            blocks.add (took);
            waits.add (waited);
            late += took > period.count() ? 1 : 0;
            const auto* const master = engine.output().getReadPointer (0);
            for (int i = 0; i < blockFrames; ++i)
            {
                largestStep = std::max (largestStep.load(), std::abs (master[i] - last));
                last = master[i];
            }
        }
    }

    BenchEngine& engine;
    std::atomic<bool> stopping { false };
    Timing::Durations blocks, waits;
    int64_t late = 0;
    std::atomic<float> largestStep { 0.0f };
};

void print (const char* what, Timing::Durations& times)
{
    std::printf ("%-28s mean %8.1f us   99.9 %% %8.1f us   max %8.1f us\n", what, times.mean() / 1000.0,
                 static_cast<double> (times.quantile (0.999)) / 1000.0,
                 static_cast<double> (times.quantile (1.0)) / 1000.0);
}

/** A low tone in every deck: any step stands out. */
void putTones (BenchEngine& engine)
{
    juce::AudioBuffer<float> tone (2, static_cast<int> (600 * engineRate));
    for (int side = 0; side < 2; ++side)
        for (int i = 0; i < tone.getNumSamples(); ++i)
            tone.setSample (side, i,
                            0.1f
                                * static_cast<float> (
                                    std::sin (juce::MathConstants<double>::twoPi * 60.0 * i / engineRate)));
    for (int deck = 0; deck < deckCount; ++deck)
    {
        engine.putTrack (deck, tone, engineRate);
        engine.deck (deck).play.on = 1;
    }
}

int swapAtRandom (BenchEngine& engine, VstSlots& slots, const juce::StringArray& plugins)
{
    AudioDevice device (engine);
    std::thread thread ([&device] { device.run(); });
    std::mt19937 random (11);
    int failed = 0;
    std::this_thread::sleep_for (std::chrono::seconds (1));
    const auto undisturbed = device.largestStep.load();
    CallbackLock::resetLongest();
    const auto begin = Timing::nanoseconds();
    for (int i = 0; i < swaps; ++i)
    {
        const auto deck = static_cast<int> (random() % deckCount);
        failed +=
            slots.loadNow (deck,
                           plugins[static_cast<int> (random() % static_cast<unsigned> (plugins.size()))])
                    .isEmpty()
                ? 0
                : 1;
        slots.slot (deck).isInsert = static_cast<int8_t> (random() % 2u);
        slots.serve();
        // Some are replaced before they are heard, most are heard.
        std::this_thread::sleep_for (std::chrono::milliseconds (random() % longestPauseMs));
    }
    const auto seconds = static_cast<double> (Timing::nanoseconds() - begin) / 1e9;
    const auto longest = CallbackLock::longest();
    device.stopping = true;
    thread.join();
    std::printf ("%d swaps in %.1f s, %d failed; %zu blocks of %d frames (%.0f us), %lld late\n", swaps,
                 seconds, failed, device.blocks.count(), blockFrames,
                 static_cast<double> (period.count()) / 1000.0, static_cast<long long> (device.late));
    print ("a block", device.blocks);
    print ("its wait for the lock", device.waits);
    std::printf ("longest hold of the lock     %.1f us (%s)\n",
                 static_cast<double> (longest.nanoseconds) / 1000.0, longest.reason);
    std::printf ("largest step in the master   %.4f, %.4f before the first swap\n",
                 static_cast<double> (device.largestStep), static_cast<double> (undisturbed));
    return failed;
}

void measureBlocks (BenchEngine& engine, const char* what)
{
    constexpr int count = 20000;
    Timing::Durations times (count);
    for (int i = 0; i < count; ++i)
        times.add (engine.processBlock());
    print (what, times);
}
}

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI juce;
    juce::StringArray plugins;
    for (int i = 1; i < argc; ++i)
        plugins.add (juce::File::getCurrentWorkingDirectory()
                         .getChildFile (juce::String::fromUTF8 (argv[i]))
                         .getFullPathName());
    if (plugins.isEmpty())
        return std::puts ("usage: bench_plugins PLUGIN..."), 2;
    Machine::print();
    BenchEngine engine (false, engineRate, blockFrames);
    VstSlots::Options options;
    options.keepsSlots = options.hasMessageLoop = false;
    options.scanner.program = juce::File (PX_SCANNER);
    options.scanner.disablePopups = true;
    VstSlots slots (*engine, options);
    putTones (engine);
    engine.processBlock();
    for (const auto& plugin : plugins) // the trials, once
        if (const auto fault = slots.loadNow (0, plugin); fault.isNotEmpty())
            return std::printf ("%s\n", fault.toRawUTF8()), 1;
    slots.unload (0);
    const auto failed = swapAtRandom (engine, slots, plugins);

    for (int deck = 0; deck < deckCount; ++deck)
        slots.unload (deck);
    engine.processBlock();
    measureBlocks (engine, "four empty slots");
    for (int deck = 0; deck < deckCount; ++deck)
        juce::ignoreUnused (slots.loadNow (deck, plugins[0])); // loaded before
    measureBlocks (engine, ("four times " + plugins[0].fromLastOccurrenceOf ("/", false, false)).toRawUTF8());
    return failed == 0 ? 0 : 1;
}
