#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"
#include "measure/Performer.h"
#include "measure/Timing.h"

#include <juce_events/juce_events.h>

#include <cstdio>

// bench_instruments: what pads and SmartKnobs add to a block of four playing decks, as a share of its duration on one core.
// Two engines play the same, one with instruments and one without, block by block in turn; the difference is theirs. What
// the knobs' own stage takes, without the work that moving parameters give to equaliser and effects, is timed by itself.
//
//        bench_instruments        all of it
//        bench_instruments ID     the pad of one preset

namespace
{
constexpr double rate = 44100.0;
constexpr int frames = 128, warmUpBlocks = 500, blocks = 40'000;
constexpr double blockNanoseconds = frames / rate * 1e9;

class Desk
{
public:
    Desk() : engine (true, rate, frames)
    {
        const auto music = MusicLike::make (60.0, rate);
        engine->settings.bypassStretcher = 1;
        for (int deck = 0; deck < deckCount; ++deck)
        {
            engine.putTrack (deck, music, rate);
            engine.deck (deck).marks.bpm = 120.0;
            engine->setParameter (1 + deck, 1.0f); // play
        }
    }

    int64_t processBlock()
    {
        for (int deck = 0; deck < deckCount; ++deck)
            if (engine.deck (deck).head.position > 0.9 * engine.deck (deck).track.loadedFrames)
                engine->setParameter (209 + deck, 0.1f); // seek
        return engine.processBlock();
    }

    void holdKnobs (bool moving) { Performer::holdKnobs (engine, moving); }

    void turnKnobs (int block) { Performer::turnKnobs (engine, block); }

    /** A pad that loops on each deck. @param id   of its preset */
    void runPads (int id)
    {
        for (int deck = 0; deck < deckCount; ++deck)
            Performer::runPad (engine, deck, id);
    }

    BenchEngine engine;
};

void print (const char* what, double nanoseconds)
{
    std::printf ("%-52s %9.0f ns %8.3f %%\n", what, nanoseconds, 100.0 * nanoseconds / blockNanoseconds);
    std::fflush (stdout);
}

/** The knobs' stage of all decks, timed alone between two blocks. */
void measureStage (const char* what, bool moving)
{
    Desk desk;
    desk.holdKnobs (moving);
    Timing::Durations durations (blocks);
    for (int block = 0; block < blocks; ++block)
    {
        if (moving)
            desk.turnKnobs (block);
        const auto before = Timing::nanoseconds();
        for (int deck = 0; deck < deckCount; ++deck)
            desk.engine->smartKnobs.run (deck);
        durations.add (Timing::nanoseconds() - before);
        if (block % 16 == 0)
            desk.processBlock();
    }
    print (what, durations.quantile (0.5));
}

template <typename Prepare>
void measureAddition (const char* what, Prepare&& prepare)
{
    Desk plain, played;
    prepare (played);
    Timing::Durations without (blocks), with (blocks);
    for (int block = -warmUpBlocks; block < blocks; ++block)
    {
        const auto one = plain.processBlock(), other = played.processBlock();
        if (block >= 0)
        {
            without.add (one);
            with.add (other);
        }
    }
    print (what, with.quantile (0.5) - without.quantile (0.5));
}
}

int main (int count, char** arguments)
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    Machine::print();
    std::printf ("Four decks, blocks of %d frames at %.0f Hz; medians, shares of a block on one core.\n",
                 frames, rate);
    if (count > 1)
    {
        measureAddition ("added: a pad a deck",
                         [id = std::atoi (arguments[1])] (Desk& desk) { desk.runPads (id); });
        return 0;
    }
    measureStage ("knobs' stage, 2 x 20 rows a deck, at rest", false);
    measureStage ("knobs' stage, 2 x 20 rows a deck, all turning", true);
    measureAddition ("added: 2 x 20 rows a deck, at rest", [] (Desk& desk) { desk.holdKnobs (false); });
    measureAddition ("added: a pad a deck, 1/4 Beat Rpt", [] (Desk& desk) { desk.runPads (107); });
    measureAddition ("added: a pad a deck, Trance Gt 1", [] (Desk& desk) { desk.runPads (708); });
    measureAddition ("added: a pad a deck, Scratch", [] (Desk& desk) { desk.runPads (128); });
    measureAddition ("added: a pad and 2 x 20 rows a deck",
                     [] (Desk& desk)
                     {
                         desk.holdKnobs (false);
                         desk.runPads (107);
                     });
}
