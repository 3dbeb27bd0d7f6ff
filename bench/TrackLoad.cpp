#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/PlainDecode.h"
#include "measure/Timing.h"

#include <juce_events/juce_events.h>

#include <cstdio>
#include <thread>

// bench_load: how long a track takes from the request to its first playable frame and to its end, against a plain
// decode loop of the same file in the same run.

namespace
{
/** Frames that the reader's interpolation needs before it gives a sound. */
constexpr int playableFrames = 4;

/** Nanoseconds. */
struct Load
{
    int64_t first = 0, whole = 0; ///< from the request
    int64_t paused = 0;           ///< of `whole`, in pauses of the loader
    int64_t processor = 0;        ///< what the loader used
    int frames = 0;
};

Load load (BenchEngine& engine, const juce::File& file)
{
    auto& deck = engine.deck (0);
    Load result;
    const auto pausedBefore = engine->pacing.totalPausedMilliseconds();
    const auto usedBefore = Timing::processorNanoseconds (Timing::Threads::others);

    engine->loaders.unload (0); // else the deck keeps its track until the next one has begun
    engine->loaders.waitUntilIdle (0);

    const auto begin = Timing::nanoseconds();
    engine->loadTrack (file, 0);
    while (deck.track.loadedFrames < playableFrames && deck.isLoading != 0)
        continue;
    result.first = Timing::nanoseconds() - begin;
    while (deck.isLoading != 0)
        std::this_thread::sleep_for (std::chrono::microseconds (500));
    result.whole = Timing::nanoseconds() - begin;

    result.paused = static_cast<int64_t> ((engine->pacing.totalPausedMilliseconds() - pausedBefore) * 1e6);
    result.processor = Timing::processorNanoseconds (Timing::Threads::others) - usedBefore;
    result.frames = deck.track.loadedFrames;
    return result;
}

/** The measurements of one way to get at a track's samples. */
struct Way
{
    const char* name;
    Timing::Durations first {}, whole {}, paused {}, decoding {}, processor {};

    void add (const Load& one)
    {
        first.add (one.first);
        whole.add (one.whole);
        paused.add (one.paused);
        decoding.add (one.whole - one.paused);
        processor.add (one.processor);
    }

    void print (const char* format, Way& plain)
    {
        const auto ms = [] (Timing::Durations& each, double part) { return each.quantile (part) / 1e6; };
        const auto rate = [] (Timing::Durations& reference, Timing::Durations& each)
        { return 100.0 * reference.quantile (0.5) / each.quantile (0.5); };
        std::printf ("%-5s %-16s %7.2f %7.2f %8.1f %8.1f %8.1f %6.1f %% %8.1f %6.1f %%\n", format, name,
                     ms (first, 0.5), ms (first, 1.0), ms (whole, 0.5), ms (paused, 0.5), ms (decoding, 0.5),
                     rate (plain.decoding, decoding), ms (processor, 0.5), rate (plain.processor, processor));
    }
};

Load decodePlainly (const juce::File& file)
{
    const auto usedBefore = Timing::processorNanoseconds (Timing::Threads::own);
    const auto begin = Timing::nanoseconds();
    Load result;
    result.frames = static_cast<int> (plainDecode (file));
    result.whole = Timing::nanoseconds() - begin;
    result.processor = Timing::processorNanoseconds (Timing::Threads::own) - usedBefore;
    return result;
}

bool measure (const char* extension, int repeats, bool withLive)
{
    const auto file = MusicLike::encoded (extension, juce::File (PX_BENCH_TRACKS));
    const auto expected = plainDecode (file); // and the file is in the system's cache from here on
    if (expected == 0)
    {
        std::printf ("%s can't be decoded.\n", file.getFullPathName().toRawUTF8());
        return false;
    }

    Way plain { "plain loop" }, fresh { "new engine" }, again { "same deck again" }, live { "live pacing" };
    auto isWhole = true;
    const auto keep = [&] (Way& way, const Load& one)
    {
        way.add (one);
        // Encoders pad, and the engine cuts the padding that the file states; the plain loop need not.
        isWhole = isWhole && std::abs (one.frames - expected) < 8192;
    };
    for (int i = 0; i < repeats; ++i)
    {
        keep (plain, decodePlainly (file));
        BenchEngine offline (true);
        keep (fresh, load (offline, file));
        keep (again, load (offline, file));
        if (withLive)
        {
            BenchEngine paced (false);
            keep (live, load (paced, file));
        }
    }

    for (auto* way : { &plain, &fresh, &again, &live })
        if (way->whole.count() > 0)
            way->print (extension, plain);
    if (!isWhole)
        std::printf ("Not every load gave the whole track: these rows are void.\n");
    std::fflush (stdout);
    return isWhole;
}
}

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    const juce::ArgumentList arguments (argc, argv);
    const auto only = arguments.getValueForOption ("--only");
    const auto asked = arguments.getValueForOption ("--repeats").getIntValue();
    const auto repeats = asked > 0 ? asked : 7;
    const auto withLive = !arguments.containsOption ("--offline");

    Machine::print();
    std::printf (
        "Load of 5 minutes at 44.1 kHz, ms, medians of %d loads. A rate is the plain loop's time over the\n"
        "load's: first by the clock, pauses not counted, then by the processor time used.\n",
        repeats);
    std::printf ("%-22s %7s %7s %8s %8s %8s %8s %8s %8s\n", "", "first", "(max)", "whole", "paused",
                 "decoding", "rate", "CPU", "rate");
    auto valid = true;
    for (const auto* extension : { "mp3", "flac", "ogg", "m4a" })
        if (only.isEmpty() || only == extension)
            valid = measure (extension, repeats, withLive) && valid;
    return valid ? 0 : 1;
}
