#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/Timing.h"

#include "midi/script/ScriptContext.h"
#include "midi/script/ScriptLanguage.h"
#include "midi/script/ShippedScripts.h"

#include <cstdio>
#include <optional>

// bench_script: how long a script takes for a message and for a tick of its timer, and how long a build takes.

namespace
{
constexpr int calls = 20000;
constexpr auto noLimit = std::chrono::hours (1);

/** A shipped script, called without its threads. */
class Example
{
public:
    Example (CPlatterdex& engine, const char* name)
        : world { .owner = &engine,
                  .send = [this] (std::span<const uint8_t> bytes) { sent += bytes.size(); },
                  .journal = journal }
    {
        const auto text = std::string (ShippedScripts::find (name)->text);
        const auto before = Timing::nanoseconds();
        const auto built = language.build (juce::File ("/nowhere").getChildFile (name), text, {});
        buildTime = Timing::nanoseconds() - before;
        program = *built.program;
        context.emplace (language.engine(), turn, mustStop);
        context->initialiseGlobals (*program.module, noLimit);
    }

    Timing::Durations messages (int status, int data)
    {
        Timing::Durations durations (calls);
        ScriptContext::Message message { "Surface", status, data, 0 };
        for (int i = 0; i < calls; ++i)
        {
            message.value = i % 128;
            const auto before = Timing::nanoseconds();
            context->call (program.onMessage, noLimit, &message);
            durations.add (Timing::nanoseconds() - before);
        }
        return durations;
    }

    Timing::Durations ticks()
    {
        Timing::Durations durations (calls);
        for (int i = 0; i < calls; ++i)
        {
            const auto before = Timing::nanoseconds();
            context->call (program.onTimer, noLimit);
            durations.add (Timing::nanoseconds() - before);
        }
        return durations;
    }

    int64_t buildTime = 0;

private:
    size_t sent = 0;
    ScriptJournal journal;
    ScriptTurn turn;
    const ScriptWorld world;
    ScriptFunctions functions { world, turn };
    ScriptLanguage language { functions };
    const std::atomic<bool> mustStop { false };
    ScriptProgram program;
    std::optional<ScriptContext> context;
};

void print (const char* what, Timing::Durations durations)
{
    std::printf ("  %-34s %8.2f us %8.2f us %8.2f us\n", what, durations.quantile (0.5) / 1e3,
                 durations.quantile (0.99) / 1e3, durations.quantile (0.999) / 1e3);
}
}

int main()
{
    Machine::print();
    BenchEngine engine (true);
    std::printf ("  %-34s %11s %11s %11s\n", "", "median", "99 %", "99.9 %");

    Example decks (*engine, "two_decks.c");
    print ("two_decks.c: a fader", decks.messages (0xb0, 0x13));
    print ("two_decks.c: an unknown button", decks.messages (0x90, 0x7f));
    print ("two_decks.c: 18 lamps", decks.ticks());
    Example grid (*engine, "pad_grid.c");
    print ("pad_grid.c: 64 lamps", grid.ticks());
    std::printf ("  %-34s %8.2f ms\n", "build of pad_grid.c", static_cast<double> (grid.buildTime) / 1e6);
}
