#include "ViewBench.h"

#include "ui/deckviews/StackedWave.h"

#include <cmath>

namespace
{
constexpr int width = 804, height = 80; // whole pixels at every scale

struct View : StackedWave
{
    View (ViewBench& bench, int deck) : StackedWave (bench.engine, deck)
    {
        setSize (width, height);
        setVisible (true);
    }

    /** Whole beats only: bars and phrases too. */
    std::vector<int> beatsAfter (double scale)
    {
        refresh();
        ViewBench::picture (*this, scale);
        std::vector<int> xs;
        const auto shown = marks();
        for (const auto& mark : shown.beats)
            xs.push_back (mark.x);
        return xs;
    }
};

/** A deck that plays in a tempo, whose downbeat lies some seconds of sound from what is heard. */
void put (ViewBench& bench, int index, double bpm, double rate, double factor, double secondsToDownbeat)
{
    bench.putTrack (std::vector<int16_t> (3'000'000, 5000), index);
    auto& deck = bench.deck (index);
    deck.track.sampleRate = rate;
    deck.marks.bpm = bpm;
    deck.marks.downbeatPosition = 1'000'000;
    deck.tempo.factor = factor;
    deck.play.on = 1;
    deck.place (1'000'000.0 - secondsToDownbeat * rate * factor);
}
}

TEST (StackedWave, BeatsThatSoundTogetherStandBelowEachOther)
{
    struct Case
    {
        double bpm, rate, factor;
    };
    // All of them sound at 126 BPM.
    const Case cases[] { { 126.0, 44'100.0, 1.0 },
                         { 120.0, 44'100.0, 1.05 },
                         { 140.0, 44'100.0, 0.9 },
                         { 126.0, 48'000.0, 1.0 },
                         { 90.0, 96'000.0, 1.4 } };
    for (const auto scale : { 1.0, 1.5, 2.0 })
    {
        ViewBench bench;
        std::vector<int> leader;
        for (const auto& [bpm, rate, factor] : cases)
        {
            put (bench, 0, bpm, rate, factor, 0.3);
            View view (bench, 0);
            const auto beats = view.beatsAfter (scale);
            ASSERT_GE (beats.size(), 17u) << "a window of 9.3 s at 126 BPM";
            if (leader.empty())
                leader = beats;
            ASSERT_EQ (beats.size(), leader.size()) << bpm;
            for (size_t i = 0; i < beats.size(); ++i)
                EXPECT_NEAR (beats[i], leader[i], 1) << bpm << " BPM, beat " << i << ", scale " << scale;
        }
        const auto middle = width / 2 * scale, pixelsOfSecond = 44'100.0 / 512.0 * scale;
        const auto nearest =
            std::min_element (leader.begin(), leader.end(),
                              [&] (int a, int b) { return std::abs (a - middle) < std::abs (b - middle); });
        const auto beat = 60.0 / 126.0;
        EXPECT_NEAR (*nearest, middle + (0.3 - beat) * pixelsOfSecond, 1.5)
            << "what is heard is in the middle";
    }
}

TEST (StackedWave, AScrolledPictureIsTheOneThatIsDrawnAnew)
{
    ViewBench bench;
    bench.putTrack (ViewBench::noise (900'000));
    bench.deck().marks.cues[2] = 100'000.0;
    for (const auto factor : { 1.0, 1.037, 0.91 })
        for (const auto scale : { 1.0, 1.25, 2.0 })
        {
            bench.deck().play.on = 1;
            bench.deck().tempo.factor = factor;
            View view (bench, 0);
            ViewBench::picture (view, scale);
            for (const auto step : { 300, 1764, -900, 60'000, -30'000, 250'000, 900'000, -90'000 })
            {
                bench.engine.transport.seekFrames (0, bench.deck().head.position + step);
                view.refresh();
                View fresh (bench, 0);
                ASSERT_TRUE (
                    ViewBench::same (ViewBench::picture (view, scale), ViewBench::picture (fresh, scale)))
                    << factor << " at " << scale << ", after a step of " << step;
            }
        }
}

TEST (StackedWave, ATickOfASyncedDeckDrawsAFewColumns)
{
    ViewBench bench;
    put (bench, 0, 120.0, 44'100.0, 1.05, 0.0);
    View view (bench, 0);
    view.beatsAfter (1.0);
    auto& deck = bench.deck();
    for (int tick = 0; tick < 20; ++tick)
    {
        deck.tempo.factor = 1.05 * (1.0 + 0.0002 * (tick % 3 - 1)); // as its phase is held
        deck.place (deck.head.position + 1852.0);
        view.beatsAfter (1.0);
        EXPECT_LE (view.columnsDrawn(), 4) << tick;
    }
    deck.tempo.factor = 1.06;
    view.beatsAfter (1.0);
    EXPECT_EQ (view.columnsDrawn(), width) << "another tempo is another picture";
    deck.jog.scratchOn = 1;
    deck.tempo.factor = -3.0;
    view.beatsAfter (1.0);
    EXPECT_LE (view.columnsDrawn(), 1) << "but not the speed of a hand";
}
