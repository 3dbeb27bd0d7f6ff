#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include "engine/CommandTable.h"
#include "support/CallbackLock.h"
#include "support/RandGeneratorLCG.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <cstdio>
#include <map>
#include <string>
#include <thread>

// bench_lock: how long the callback lock is held while decks are loaded and random commands arrive, by reason, and how
// long an audio block waits for it.

namespace
{
constexpr int blockFrames = 128;
constexpr double engineRate = 44100.0;
constexpr int64_t longHolding = 50'000;

/** Asks for blocks at the pace of a device. */
class AudioDevice
{
public:
    explicit AudioDevice (BenchEngine& engine) : thread ([this, &engine] { run (engine); }) {}

    ~AudioDevice() { stop(); }

    void stop()
    {
        stopping = true;
        if (thread.joinable())
            thread.join();
    }

    Timing::Durations waits; ///< of a block for the lock; to be read after stop()

private:
    void run (BenchEngine& engine)
    {
        const auto period = std::chrono::nanoseconds (static_cast<int64_t> (blockFrames / engineRate * 1e9));
        auto next = std::chrono::steady_clock::now();
        while (!stopping)
        {
            int64_t waited = 0;
            engine.processBlock (waited);
            waits.add (waited);
            std::this_thread::sleep_until (next += period);
        }
    }

    std::atomic<bool> stopping { false };
    std::thread thread;
};

using Holdings = std::map<std::string, Timing::Durations>;

/** Takes the longest holding since the last call. */
void collect (Holdings& holdings)
{
    const auto longest = CallbackLock::longest();
    CallbackLock::resetLongest();
    if (longest.nanoseconds > 0)
        holdings[longest.reason].add (longest.nanoseconds);
}

void sendRandomCommand (CPlatterdex& engine, RandGeneratorLCG& random)
{
    const auto number = 1 + static_cast<int> (random.nextDouble() * CommandTable::commandCount);
    const auto command = CommandTable::find (number);
    const auto relative = command && command->kind == CommandKind::relative;
    engine.dispatch (number, static_cast<float> (random.nextDouble() * (relative ? 127.0 : 1.0)), 0.1f, 0.5f);
}
}

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    const juce::ArgumentList arguments (argc, argv);
    const auto asked = arguments.getValueForOption ("--seconds").getDoubleValue();
    const auto seconds = asked > 0.0 ? asked : 30.0;
    const std::array files { MusicLike::encoded ("mp3", juce::File (PX_BENCH_TRACKS)),
                             MusicLike::encoded ("flac", juce::File (PX_BENCH_TRACKS)) };
    Machine::print();

    BenchEngine engine (false, engineRate, blockFrames);
    AudioDevice device (engine);
    Holdings holdings;
    RandGeneratorLCG random;
    int commands = 0, loads = 0;
    CallbackLock::resetLongest();
    const auto end = Timing::nanoseconds() + static_cast<int64_t> (seconds * 1e9);
    for (; Timing::nanoseconds() < end; ++commands)
    {
        // A load every 100 commands: most are cut short by the next of their deck, some reach their end.
        if (commands % 100 == 0)
        {
            engine->loadTrack (files[static_cast<size_t> (loads) % files.size()], loads % deckCount);
            ++loads;
        }
        sendRandomCommand (*engine, random);
        engine->deliverMessages();
        collect (holdings);
        std::this_thread::sleep_for (
            std::chrono::microseconds (static_cast<int> (random.nextDouble() * 1000.0)));
    }
    device.stop();

    std::printf ("%d commands, %d loads, %zu blocks of %d frames in %.0f s; us.\n", commands, loads,
                 device.waits.count(), blockFrames, seconds);
    std::printf ("%-24s %8s %8s %8s %8s %10s\n", "held for", "times", "median", "99 %", "max", "over 50 us");
    const auto print = [] (const char* what, Timing::Durations& each)
    {
        std::printf ("%-24s %8zu %8.2f %8.2f %8.2f %10zu\n", what, each.count(), each.quantile (0.5) / 1000.0,
                     each.quantile (0.99) / 1000.0, each.quantile (1.0) / 1000.0,
                     each.countAbove (longHolding));
    };
    for (auto& [reason, each] : holdings)
        print (reason.c_str(), each);
    print ("(a block's wait for it)", device.waits);
}
