#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Timing.h"

#include <juce_events/juce_events.h>

#include <cmath>
#include <cstdio>

// bench_block: what an audio block costs, as a share of its own duration on one core.

namespace
{
constexpr double engineRate = 44100.0, trackSeconds = 60.0;
constexpr int warmUpBlocks = 500;

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
    int frames, decks;
    double fileRate = engineRate;
    bool scratching = false;
    enum
    {
        flat,
        set,    ///< each band off its centre
        turning ///< every band of every deck jumps in every block, so that coefficients are computed in each
    } equaliser = flat;

    int blocks() const { return frames >= 1024 ? 30'000 : 100'000; }
};

/** Holds a row's decks in play, as a hand at the controls would. */
class Hand
{
public:
    Hand (BenchEngine& e, const Row& r) : engine (e), row (r)
    {
        const auto music = MusicLike::make (trackSeconds, row.fileRate);
        engine->settings.bypassStretcher = 1;
        for (int deck = 0; deck < row.decks; ++deck)
        {
            engine.putTrack (deck, music, row.fileRate);
            // Each another fader, so that no position falls on a frame of the file for long.
            engine->setParameter (pitchFader + deck, 0.35f + 0.07f * static_cast<float> (deck));
            engine->setParameter (playPause + deck, 1.0f);
            if (row.scratching)
                engine->setParameter (jogScratch + deck, 1.0f);
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
                engine->dispatch (jog + deck, static_cast<float> (wanted - engine.deck (deck).jogValue), 1.0f,
                                  1.0f);
            }
            if (engine.deck (deck).position > 0.95 * engine.deck (deck).loadedFrames)
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

bool measure (const Row& row)
{
    BenchEngine engine (true, engineRate, row.frames);
    Hand hand (engine, row);
    int silent = 0;
    Timing::Durations durations (static_cast<size_t> (row.blocks()));
    for (int i = -warmUpBlocks; i < row.blocks(); ++i)
    {
        hand.move();
        const auto duration = engine.processBlock();
        if (i >= 0)
            durations.add (duration);
        silent += hand.isHeard() ? 0 : 1;
    }

    const auto share = 100.0 / (row.frames / engineRate * 1e9);
    std::printf ("%-24s %6d %6d %8zu %8.2f %9.3f %% %9.3f %% %9.3f %%\n", row.what, row.frames, row.decks,
                 durations.count(), durations.mean() / 1000.0, durations.mean() * share,
                 durations.quantile (0.9999) * share, durations.quantile (1.0) * share);
    std::fflush (stdout);

    // A wheel that turns round is silent for a moment; a deck that does not play would be silent throughout.
    if (silent <= row.blocks() / 4)
        return true;
    std::printf ("%d of these blocks did not sound as they should: the row is void.\n", silent);
    return false;
}
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    Machine::print();
    std::printf ("Cost of a block, callback lock included; shares of the block's duration on one core.\n");
    std::printf ("%-24s %6s %6s %8s %8s %11s %11s %11s\n", "", "frames", "decks", "blocks", "mean us", "mean",
                 "99.99 %", "maximum");

    auto valid = true;
    for (const auto frames : { 64, 128, 256, 1024 })
        for (int decks = 0; decks <= deckCount; ++decks)
            valid = measure ({ "playing", frames, decks }) && valid;
    for (const auto frames : { 64, 128 })
    {
        valid = measure ({ "equalisers set", frames, deckCount, engineRate, false, Row::set }) && valid;
        valid =
            measure ({ "equalisers turning", frames, deckCount, engineRate, false, Row::turning }) && valid;
    }
    for (const auto frames : { 128, 1024 })
    {
        valid = measure ({ "scratching", frames, deckCount, engineRate, true }) && valid;
        valid = measure ({ "playing 96 kHz files", frames, deckCount, 96000.0 }) && valid;
    }
    return valid ? 0 : 1;
}
