#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/PlainDecode.h"
#include "measure/Timing.h"

#include "deck/FileImportThread.h"

#include <juce_events/juce_events.h>

#include <cstdio>
#include <thread>

// bench_load: how long a track takes from the request to its first playable frame and to its end, against a plain
// decode loop of the same file in the same run.

namespace
{
/** What the reader's interpolation needs before it gives a sound. */
constexpr int playableFrames = 4;

struct Load
{
    int64_t first = 0, whole = 0; ///< nanoseconds from the request
    int64_t paused = 0;           ///< of `whole`, in pauses of the loader
    int frames = 0;
};

Load load (BenchEngine& engine, const juce::File& file)
{
    auto& deck = engine.deck (0);
    Load result;
    const auto pausedBefore = engine->pacing.totalPausedMilliseconds();

    const auto begin = Timing::nanoseconds();
    engine->loadTrack (file, 0);
    // What the deck held before still counts until the loader's reset; the request has waited for no more than that.
    while (deck.loadedFrames >= playableFrames && deck.isTrackLoaded != 0 && deck.importThread->isBusy())
        continue;
    while (deck.loadedFrames < playableFrames && deck.importThread->isBusy())
        continue;
    result.first = Timing::nanoseconds() - begin;
    while (deck.importThread->isBusy())
        std::this_thread::sleep_for (std::chrono::microseconds (50));
    result.whole = Timing::nanoseconds() - begin;

    result.paused = static_cast<int64_t> ((engine->pacing.totalPausedMilliseconds() - pausedBefore) * 1e6);
    result.frames = deck.loadedFrames;
    return result;
}

/** The measurements of one way to load. */
struct Way
{
    const char* name;
    Timing::Durations first {}, whole {}, decoding {};
    double pausedMs = 0.0;

    void add (const Load& one)
    {
        first.add (one.first);
        whole.add (one.whole);
        decoding.add (one.whole - one.paused);
        pausedMs = static_cast<double> (one.paused) / 1e6;
    }

    void print (const char* format, double plain)
    {
        std::printf ("%-5s %-20s %8.2f %8.2f %9.1f %9.1f %9.1f %8.1f %%\n", format, name,
                     first.quantile (0.5) / 1e6, first.quantile (1.0) / 1e6, whole.quantile (0.5) / 1e6,
                     pausedMs, decoding.quantile (0.5) / 1e6, 100.0 * plain / decoding.quantile (0.5));
    }
};

bool measure (const char* extension, int repeats, bool withLive)
{
    const auto file = MusicLike::encoded (extension, juce::File (PX_BENCH_TRACKS));
    const auto expected = plainDecode (file); // and the file is in the system's cache from here on
    if (expected == 0)
    {
        std::printf ("%s can't be decoded.\n", file.getFullPathName().toRawUTF8());
        return false;
    }

    Timing::Durations plain;
    Way fresh { "new engine" }, again { "same deck again" }, live { "live pacing" };
    auto whole = true;
    const auto keep = [&] (Way& way, const Load& one)
    {
        way.add (one);
        // Encoders pad, and the engine cuts the padding that the file states; the plain loop needn't.
        whole = whole && std::abs (one.frames - expected) < 8192;
    };
    for (int i = 0; i < repeats; ++i)
    {
        const auto begin = Timing::nanoseconds();
        plainDecode (file);
        plain.add (Timing::nanoseconds() - begin);

        BenchEngine offline (true);
        keep (fresh, load (offline, file));
        keep (again, load (offline, file));
        if (withLive)
        {
            BenchEngine paced (false);
            keep (live, load (paced, file));
        }
    }

    const auto plainTime = plain.quantile (0.5);
    std::printf ("%-5s %-20s %8s %8s %9.1f %9s %9.1f %8.1f %%   (%.1f to %.1f ms)\n", extension, "plain loop",
                 "", "", plainTime / 1e6, "", plainTime / 1e6, 100.0, plain.quantile (0.0) / 1e6,
                 plain.quantile (1.0) / 1e6);
    fresh.print (extension, plainTime);
    again.print (extension, plainTime);
    if (withLive)
        live.print (extension, plainTime);
    if (!whole)
        std::printf ("Not every load gave the whole track: these rows are void.\n");
    std::fflush (stdout);
    return whole;
}
}

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    const juce::ArgumentList arguments (argc, argv);
    const auto only = arguments.getValueForOption ("--only");
    const auto repeats =
        arguments.containsOption ("--repeats") ? arguments.getValueForOption ("--repeats").getIntValue() : 7;
    const auto withLive = !arguments.containsOption ("--offline");

    Machine::print();
    std::printf (
        "Load of 5 minutes at 44.1 kHz, ms; medians of %d. \"Rate\" is the plain loop's time over the time\n"
        "of decoding, pauses not counted.\n",
        repeats);
    std::printf ("%-5s %-20s %8s %8s %9s %9s %9s %10s\n", "", "", "first", "(max)", "whole", "paused",
                 "decoding", "rate");
    auto valid = true;
    for (const auto* extension : { "mp3", "flac", "ogg", "m4a" })
        if (only.isEmpty() || only == extension)
            valid = measure (extension, std::max (1, repeats), withLive) && valid;
    return valid ? 0 : 1;
}
