#include "deck/voice/DeckReader.h"
#include "measure/BenchEngine.h"
#include "measure/Machine.h"
#include "measure/MusicLike.h"

#include <juce_events/juce_events.h>

#include <array>
#include <cstdio>
#include <ctime>

// bench_reader: what a frame costs a deck's reader, and what loops and the walk along the beat grid add to it.

namespace
{
constexpr double engineRate = 44100.0, trackSeconds = 60.0, bpm = 174.0;
constexpr int framesPerCall = 128, callsPerRound = 4000, rounds = 80;

struct Row
{
    const char* what;
    bool grid = false;
    int loopSize = -1; ///< none below 0
    bool reads =
        true; ///< else only the comparisons of region and walk are made, on places that move as a reading's
};

constexpr Row rows[] {
    { "reading, no grid", false, -1, true },     { "reading, grid", true, -1, true },
    { "loop of 4 beats", true, 7, true },        { "loop of 1/32 beat", true, 0, true },
    { "the comparisons alone", true, 7, false },
};

/** Processor time of this thread, to the nanosecond: rounds are shorter than the ticks of other clocks. */
int64_t ownNanoseconds()
{
    timespec now {};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * int64_t { 1'000'000'000 } + now.tv_nsec;
}

/** One deck that plays at 2 % off the file's rate, so that no place falls on a frame for long. */
class Deck
{
public:
    explicit Deck (const Row& r) : row (r), engine (true, engineRate, framesPerCall), deck (engine.deck (0))
    {
        engine.putTrack (0, MusicLike::make (trackSeconds, engineRate), engineRate);
        deck.marks.bpm = bpm;
        if (row.grid)
            for (double at = 100.0; at < deck.track.loadedFrames; at += deck.beatFrames() / 2.0)
                deck.beats.push_back ({ static_cast<int32_t> (at), bpm });
        deck.track.numBeats = static_cast<int32_t> (deck.beats.size());
        deck.play.on = 1;
        deck.place (start);
        deck.loops.start = start;
        deck.loops.mode = row.loopSize < 0 ? noLoop : beatLoop;
        deck.loopSizes.loop = static_cast<int8_t> (std::max (0, row.loopSize));
        drive.playFactor = 1.02;
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
            if (row.reads)
            {
                findNextBeat (deck.head, deck.grid());
                readDeck (deck.head, deck.readSource(), drive, engine->decks.noise, left.data(), right.data(),
                          framesPerCall);
            }
            else
            {
                compare();
            }
        }
        const auto spent = ownNanoseconds() - before;
        return static_cast<double> (spent) / (static_cast<double> (callsPerRound) * framesPerCall);
    }

private:
    void compare()
    {
        const auto region = drive.region;
        auto position = deck.head.position;
        const auto beat = position + 1.0e6;
        for (int i = 0; i < framesPerCall; ++i)
        {
            position += drive.playFactor;
            if (region.isLeftAt (position))
                position = start;
            passed += position >= beat ? 1 : 0;
        }
        deck.place (position);
        deck.head.nextBeat = passed;
    }

    static constexpr double start = 441'000.0;
    const Row row;
    BenchEngine engine;
    DeckPlayer& deck;
    ReadDrive drive;
    std::array<float, framesPerCall> left {}, right {};
    int passed = 0;
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
