#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Performer.h"
#include "measure/Timing.h"

#include <juce_events/juce_events.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

// bench_block: what an audio block costs, as a share of its own duration on one core.

namespace
{
constexpr double engineRate = 44100.0, trackSeconds = 60.0;
constexpr std::string_view onlyOption = "--only=", blocksOption = "--blocks=";
constexpr int warmUpBlocks = 500;
// In a row: every phase of a stretcher's frames, but hardly an interruption.
constexpr size_t quietBlocks = 96;

enum Command
{
    playPause = 1,
    pitchFader = 21,
    jog = 201,
    jogScratch = 205,
    seek = 209,
    eqHigh = 221,
    eqMid = 233,
    eqLow = 245
};

struct Row
{
    const char* what;
    int frames = 0, decks = deckCount;
    double fileRate = engineRate;
    bool scratching = false;
    enum
    {
        flat,
        set,    ///< each band off its centre
        turning ///< every band of every deck jumps in every block, so that coefficients are computed in each
    } equaliser = flat;
    bool keyLocked = false; ///< through the stretcher, every deck at the file's tempo times `tempo`
    double tempo = 1.0;
    bool effects = false; ///< filter set, three effects of each deck on
};

/** Holds a row's decks in play, as a hand at the controls would. */
class Hand
{
public:
    Hand (BenchEngine& e, const Row& r) : engine (e), row (r)
    {
        const auto music = MusicLike::make (trackSeconds, row.fileRate);
        engine->settings.bypassStretcher = row.keyLocked ? 0 : 1;
        for (int deck = 0; deck < row.decks; ++deck)
        {
            engine.putTrack (deck, music, row.fileRate);
            // Each another fader, so that no position falls on a frame of the file for long.
            if (!row.keyLocked)
                engine->setParameter (pitchFader + deck, 0.35f + 0.07f * static_cast<float> (deck));
            else
                engine->transport.setPitch (deck, 0.5 + (row.tempo - 1.0) / engine->decks.pitchRange);
            engine->setParameter (playPause + deck, 1.0f);
            if (row.scratching)
                engine->setParameter (jogScratch + deck, 1.0f);
            if (row.effects)
                Performer::turnEffectsOn (engine, deck);
        }
    }

    /** Between two blocks: the wheel moves, and a track that nears its end is set back. */
    void move()
    {
        time += row.frames / engineRate;
        ++moves;
        for (int deck = 0; deck < row.decks; ++deck)
        {
            if (row.equaliser == Row::turning || (row.equaliser == Row::set && moves == 1))
                for (const auto band : { eqHigh, eqMid, eqLow })
                    engine->setParameter (band + deck, moves % 2 == 0 ? 0.3f : 0.8f);
            if (row.scratching)
            {
                // To and fro three times a second, with the play speed as its middle.
                const auto wanted =
                    1.0 + 2.0 * std::sin (juce::MathConstants<double>::twoPi * 3.0 * time + deck);
                engine->dispatch (jog + deck, static_cast<float> (wanted - engine.deck (deck).head.jog), 1.0f,
                                  1.0f);
            }
            if (engine.deck (deck).head.position > 0.95 * engine.deck (deck).track.loadedFrames)
                engine->setParameter (seek + deck, 0.01f);
        }
    }

    /** True if every deck that should be heard is heard in the last block, and no other. */
    bool isHeard() const
    {
        for (int deck = 0; deck < deckCount; ++deck)
            if ((engine.output().getRMSLevel (4 + 2 * deck, 0, row.frames) > 1e-4f) != (deck < row.decks))
                return false;
        return true;
    }

private:
    BenchEngine& engine;
    const Row row;
    double time = 0.0;
    int64_t moves = 0;
};

/** @param mostBlocks   of up to 256 frames; fewer of longer ones */
bool measure (const Row& row, int mostBlocks)
{
    const auto blocks = row.frames >= 1024 ? mostBlocks * 3 / 10 : mostBlocks;
    BenchEngine engine (true, engineRate, row.frames);
    Hand hand (engine, row);
    int silent = 0;
    Timing::Durations durations (static_cast<size_t> (blocks));
    for (int i = -warmUpBlocks; i < blocks; ++i)
    {
        hand.move();
        const auto duration = engine.processBlock();
        if (i >= 0)
            durations.add (duration);
        silent += hand.isHeard() ? 0 : 1;
    }

    const auto share = 100.0 / (row.frames / engineRate * 1e9);
    const auto quietest = durations.leastMean (quietBlocks) * share;
    std::printf ("%-24s %6d %6d %8zu %8.2f %9.3f %% %9.3f %% %9.3f %% %9.3f %%\n", row.what, row.frames,
                 row.decks, durations.count(), durations.mean() / 1000.0, durations.mean() * share, quietest,
                 durations.quantile (0.9999) * share, durations.quantile (1.0) * share);
    std::fflush (stdout);

    // A wheel that turns round is silent for a moment; a deck that does not play would be silent throughout.
    if (silent <= blocks / 4)
        return true;
    std::printf ("%d of these blocks did not sound as they should: the row is void.\n", silent);
    return false;
}
}

int main (int argc, char** argv)
{
    std::string wanted;
    int blocks = 100'000;
    for (const std::string_view argument : std::span (argv + 1, static_cast<size_t> (argc - 1)))
    {
        if (argument.starts_with (onlyOption))
            wanted = argument.substr (onlyOption.size());
        else if (argument.starts_with (blocksOption))
            blocks = std::max (1, std::atoi (argument.data() + blocksOption.size()));
    }
    const juce::ScopedJuceInitialiser_GUI toolkit;
    Machine::print();
    std::printf ("Cost of a block, callback lock included; shares of the block's duration on one core.\n");
    std::printf ("%-24s %6s %6s %8s %8s %11s %11s %11s %11s\n", "", "frames", "decks", "blocks", "mean us",
                 "mean", "quietest", "99.99 %", "maximum");

    auto valid = true;
    const auto run = [&] (const Row& row)
    {
        valid = (std::string_view (row.what).find (wanted) == std::string_view::npos || measure (row, blocks))
                && valid;
    };
    const auto runAt = [&] (std::initializer_list<int> blockSizes, Row row)
    {
        for (const auto frames : blockSizes)
        {
            row.frames = frames;
            run (row);
        }
    };
    for (const auto frames : { 64, 128, 256, 1024 })
        for (int decks = 0; decks <= deckCount; ++decks)
            run ({ .what = "playing", .frames = frames, .decks = decks });
    const auto stage = { 64, 128 }, wheels = { 128, 1024 };
    runAt (stage, { .what = "equalisers set", .equaliser = Row::set });
    runAt (stage, { .what = "equalisers turning", .equaliser = Row::turning });
    runAt (stage, { .what = "key lock at unity", .keyLocked = true });
    runAt (stage, { .what = "key lock at +4 %", .keyLocked = true, .tempo = 1.04 });
    runAt (stage, { .what = "eq, filter, 3 effects", .equaliser = Row::set, .effects = true });
    runAt (stage, { .what = "all that at +4 %",
                    .equaliser = Row::set,
                    .keyLocked = true,
                    .tempo = 1.04,
                    .effects = true });
    runAt (wheels, { .what = "scratching", .scratching = true });
    runAt (wheels, { .what = "playing 96 kHz files", .fileRate = 96000.0 });
    return valid ? 0 : 1;
}
