#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "app/audio/RealTimePriority.h"
#include "engine/CommandTable.h"
#include "midi/system/MidiSystem.h"

#include <juce_events/juce_events.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <sched.h>
#include <thread>
#include <unistd.h>

// bench_midi_latency: how long a message takes from its port to its effect while four decks play.

namespace
{
constexpr int blockFrames = 256;
constexpr double engineRate = 48000.0;
constexpr int messagesPerSecond = 2000, secondsOfMessages = 20;
constexpr size_t total = messagesPerSecond * secondsOfMessages;
constexpr int audioPriority = 40, midiPriority = 35; // as in the application

/** Keeps the calling thread on one core, or away from it. */
void pinTo (int core, bool isThere)
{
    cpu_set_t cores;
    CPU_ZERO (&cores);
    for (int each = 0; each < juce::SystemStats::getNumCpus(); ++each)
        if ((each == core) == isThere)
            CPU_SET (each, &cores);
    sched_setaffinity (0, sizeof (cores), &cores);
}

/** The scheduling of the threads of one measurement. */
struct Scheduling
{
    const char* name;
    bool isRealTime;
    bool hasOwnCore; ///< the message's threads share the last core, where no audio is

    void applyToMidi() const
    {
        if (isRealTime)
            RealTimePriority::request (::gettid(), midiPriority);
        if (hasOwnCore)
            pinTo (juce::SystemStats::getNumCpus() - 1, true);
    }

    void applyToAudio() const
    {
        if (isRealTime)
            RealTimePriority::request (::gettid(), audioPriority);
        if (hasOwnCore)
            pinTo (juce::SystemStats::getNumCpus() - 1, false);
    }
};

/** A time during which the machine let a thread wait that had only slept. */
struct Stall
{
    int64_t begin, end;
};

/** Sleeps in short steps, scheduled as the message's threads are, and keeps how late it woke up. */
class Sleeper
{
public:
    explicit Sleeper (const Scheduling& s)
        : scheduling (s),
          thread ([this] (const std::stop_token& stop) { run (stop); })
    {
    }

    void end() { thread = {}; }

    /** True if the machine stalled between two times. */
    bool sawStall (int64_t from, int64_t to) const
    {
        const auto next =
            std::lower_bound (stalls.begin(), stalls.end(), from,
                              [] (const Stall& stall, int64_t time) { return stall.end < time; });
        return next != stalls.end() && next->begin < to;
    }

    Timing::Durations late;

private:
    static constexpr auto step = std::chrono::microseconds (250);
    static constexpr int64_t stallNs = 250'000;

    void run (const std::stop_token& stop)
    {
        scheduling.applyToMidi();
        while (!stop.stop_requested())
        {
            const auto due = Timing::nanoseconds() + std::chrono::nanoseconds (step).count();
            std::this_thread::sleep_for (step);
            const auto now = Timing::nanoseconds();
            late.add (now - due);
            if (now - due > stallNs)
                stalls.push_back ({ due, now });
        }
    }

    const Scheduling scheduling;
    std::vector<Stall> stalls;
    std::jthread thread;
};

/** The times of each message: the driver of a model hears it after the mapping table has acted. */
struct Arrivals : ControllerDrivers
{
    static inline std::vector<int64_t> sent, acted;
    static inline std::atomic<size_t> count { 0 };

    bool hasInput (int) const override { return true; }

    void handleControllerInput (MidiControl&, int, int, int, int) override
    {
        const auto index = count.load (std::memory_order_relaxed);
        if (index < acted.size())
            acted[index] = Timing::nanoseconds();
        count.store (index + 1, std::memory_order_release);
    }
};

void print (const char* what, Timing::Durations& all)
{
    std::printf ("  %-46s %7zu %9.3f %9.3f %9.3f %9.3f ms\n", what, all.count(), all.quantile (0.5) / 1e6,
                 all.quantile (0.99) / 1e6, all.quantile (0.999) / 1e6, all.quantile (1.0) / 1e6);
}

/** Prints how many of the durations lie in each span of a doubling row. */
void printHistogram (const Timing::Durations& all)
{
    int64_t lower = 0;
    for (int64_t upper = 15'625; lower < 32'000'000; lower = upper, upper *= 2)
    {
        const auto share = all.countAbove (lower - 1) - all.countAbove (upper - 1);
        std::printf ("    below %8.4f ms  %7zu  %s\n", static_cast<double> (upper) / 1e6, share,
                     std::string (60 * share / std::max<size_t> (1, all.count()), '#').c_str());
    }
    std::printf ("    above             %7zu\n", all.countAbove (lower - 1));
}

/** Asks for blocks at their pace, as a device does. */
class Device
{
public:
    Device (BenchEngine& e, const Scheduling& s)
        : engine (e),
          scheduling (s),
          thread ([this] (const std::stop_token& stop) { run (stop); })
    {
    }

private:
    void run (const std::stop_token& stop)
    {
        scheduling.applyToAudio();
        const std::chrono::nanoseconds period (static_cast<int64_t> (blockFrames / engineRate * 1e9));
        for (auto next = std::chrono::steady_clock::now(); !stop.stop_requested();)
        {
            engine.processBlock();
            std::this_thread::sleep_until (next += period);
        }
    }

    BenchEngine& engine;
    const Scheduling scheduling;
    std::jthread thread;
};

/** Plays faders, jogs and steps at a pace no controller reaches, as a port's thread does. */
void sendMessages (MidiControl& control, const Scheduling& scheduling)
{
    const std::array constants { "CROSSFADER", "JOG_A", "LOOP_SIZE_A", "VOLUME_B", "FILTER_C" };
    for (size_t i = 0; i < constants.size(); ++i)
        control.mapping.setRow (CommandTable::numberOf (constants[i]), { 0xb0, static_cast<int> (i) });
    std::jthread port (
        [&]
        {
            scheduling.applyToMidi();
            auto next = std::chrono::steady_clock::now();
            for (size_t i = 0; i < total; ++i)
            {
                const std::array message { static_cast<uint8_t> (0xb0),
                                           static_cast<uint8_t> (i % constants.size()),
                                           static_cast<uint8_t> (60 + i % 8) };
                Arrivals::sent[i] = Timing::nanoseconds();
                control.midiArrived ({}, message);
                std::this_thread::sleep_until (next +=
                                               std::chrono::microseconds (1'000'000 / messagesPerSecond));
            }
        });
    port.join();
    std::this_thread::sleep_for (std::chrono::milliseconds (200));
}

void measure (BenchEngine& engine, const Scheduling& scheduling)
{
    MidiSystem::Options options;
    options.backends.clear();
    options.drivers = std::make_unique<Arrivals>();
    options.askForRealTime = [scheduling] (pid_t) { scheduling.applyToMidi(); };
    MidiSystem midi (*engine, std::move (options));
    midi.control.selectController (1);
    Arrivals::count = 0;
    Arrivals::sent.assign (total, 0);
    Arrivals::acted.assign (total, 0);
    Sleeper sleeper (scheduling);
    {
        const Device device (engine, scheduling);
        sendMessages (midi.control, scheduling);
    }
    sleeper.end();

    const size_t acted = Arrivals::count;
    Timing::Durations all (total), undisturbed (total);
    for (size_t i = 0; i < std::min (acted, total); ++i)
    {
        const auto from = Arrivals::sent[i], to = Arrivals::acted[i];
        all.add (to - from);
        if (!sleeper.sawStall (from, to))
            undisturbed.add (to - from);
    }
    std::printf ("%s: %zu of %zu messages came through\n", scheduling.name, acted, total);
    print ("a thread that only sleeps wakes up too late by", sleeper.late);
    print ("from port to effect, all messages", all);
    print ("from port to effect, the sleeper not late", undisturbed);
    printHistogram (all);
}
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    Machine::print();
    std::printf ("  %-46s %7s %9s %9s %9s %9s\n", "", "times", "median", "99 %", "99.9 %", "most");
    BenchEngine engine (false, engineRate, blockFrames);
    juce::AudioBuffer<float> noise (2, static_cast<int> (90 * engineRate));
    juce::Random random (1);
    for (int i = 0; i < noise.getNumSamples(); ++i)
        noise.setSample (0, i, random.nextFloat() - 0.5f);
    noise.copyFrom (1, 0, noise, 0, 0, noise.getNumSamples());
    for (int deck = 0; deck < deckCount; ++deck)
    {
        engine.putTrack (deck, noise, engineRate);
        engine->transport.playPause (deck);
    }
    for (const auto& scheduling :
         { Scheduling { "ordinary threads", false, false }, Scheduling { "real time", true, false },
           Scheduling { "real time, on a core without audio", true, true } })
        measure (engine, scheduling);
    return 0;
}
