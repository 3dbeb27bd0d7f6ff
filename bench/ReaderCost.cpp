#include "deck/voice/DeckReader.h"
#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"

#include <juce_events/juce_events.h>

#include <array>
#include <cstdio>
#include <ctime>

// bench_reader: the cost of a frame of a deck's reader by speed, and what loops add to it.

namespace
{
constexpr double engineRate = 44100.0, trackSeconds = 60.0, bpm = 174.0;
constexpr int framesPerCall = 128, callsPerRound = 4000, rounds = 80;

struct Row
{
    const char* what;
    double speed;      ///< frames of the file per output frame
    int loopSize = -1; ///< none below 0
};

constexpr Row rows[] {
    { "2 % off the file's speed", 1.02 }, { "the file's own speed", 1.0 },  { "twice the speed", 2.0 },
    { "loop of 4 beats", 1.02, 7 },       { "loop of 1/32 beat", 1.02, 0 },
};

/** Processor time of this thread, to the nanosecond: rounds are shorter than the ticks of other clocks. */
int64_t ownNanoseconds()
{
    timespec now {};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * int64_t { 1'000'000'000 } + now.tv_nsec;
}

/** One deck that plays. */
class Deck
{
public:
    explicit Deck (const Row& row) : engine (true, engineRate, framesPerCall), deck (engine.deck (0))
    {
        engine.putTrack (0, MusicLike::make (trackSeconds, engineRate), engineRate);
        deck.marks.bpm = bpm;
        deck.play.on = 1;
        deck.place (start);
        deck.loops.start = start;
        deck.loops.mode = row.loopSize < 0 ? noLoop : beatLoop;
        deck.loopSizes.loop = static_cast<int8_t> (std::max (0, row.loopSize));
        drive.playFactor = row.speed;
        drive.smoothing5ms = 0.99547;
        drive.decay100ms = 0.99977;
        drive.isPlaying = true;
        drive.region = deck.region();
    }

    /** @returns nanoseconds per frame */
    double measure()
    {
        const auto before = ownNanoseconds();
        for (int call = 0; call < callsPerRound; ++call)
        {
            if (deck.head.position > 0.9 * deck.track.loadedFrames)
                deck.place (start);
            readDeck (deck.head, deck.readSource(), drive, engine->decks.noise, left.data(), right.data(),
                      framesPerCall);
        }
        const auto spent = ownNanoseconds() - before;
        return static_cast<double> (spent) / (static_cast<double> (callsPerRound) * framesPerCall);
    }

private:
    static constexpr double start = 441'000.0;
    BenchEngine engine;
    DeckPlayer& deck;
    ReadDrive drive;
    std::array<float, framesPerCall> left {}, right {};
};
}

int main()
{
    const juce::ScopedJuceInitialiser_GUI toolkit;
    Machine::print();
    std::printf ("Processor time of the reader, a frame of both channels, in calls of %d frames: least and "
                 "median of %d rounds\n"
                 "that take the rows in turn. Shares are of the first row.\n",
                 framesPerCall, rounds);

    std::vector<std::unique_ptr<Deck>> decks;
    for (const auto& row : rows)
        decks.push_back (std::make_unique<Deck> (row));
    std::array<std::vector<double>, std::size (rows)> spent;
    for (int round = -3; round < rounds; ++round)
        for (size_t i = 0; i < decks.size(); ++i)
            if (const auto each = decks[i]->measure(); round >= 0)
                spent[i].push_back (each);

    double plain = 0.0;
    for (size_t i = 0; i < spent.size(); ++i)
    {
        std::sort (spent[i].begin(), spent[i].end());
        const auto median = spent[i][spent[i].size() / 2];
        if (i == 0)
            plain = median;
        std::printf ("%-24s %8.3f ns %8.3f ns %8.1f %%\n", rows[i].what, spent[i].front(), median,
                     100.0 * median / plain);
    }
    return 0;
}
