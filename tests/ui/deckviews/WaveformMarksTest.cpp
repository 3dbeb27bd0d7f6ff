#include "ViewBench.h"

#include "ui/deckviews/BeatWindow.h"
#include "ui/deckviews/MarkLayout.h"

TEST (WaveformMarks, BeatsShowWhatTheirDistanceFromTheDownbeatSays)
{
    struct Case
    {
        int entry;
        MarkKind kind;
        int number;
    };
    const Case cases[] {
        { 0, MarkKind::downbeat, 1 },  { 32, MarkKind::phrase, 5 }, { 64, MarkKind::phrase, 9 },
        { -32, MarkKind::phrase, -3 }, { 8, MarkKind::bar, 2 },     { 40, MarkKind::bar, 6 },
        { -8, MarkKind::bar, 0 },      { 2, MarkKind::beat, 1 },    { -2, MarkKind::beat, 1 },
        { 30, MarkKind::beat, 4 },     { 1, MarkKind::none, 1 },    { -31, MarkKind::none, -2 },
    };
    for (const auto& [entry, kind, number] : cases)
    {
        EXPECT_EQ (kindOfBeat (entry), kind) << entry;
        EXPECT_EQ (barNumber (entry), number) << entry;
    }
}

TEST (WaveformMarks, StandAtTheirPlacesInBothKindsOfGrid)
{
    ViewBench bench;
    bench.putTrack (std::vector<int16_t> (2'000'000, 9));
    auto& deck = bench.deck();
    const DeckWatch watch (bench.engine, 0);
    constexpr int width = 800;
    constexpr int p = 1'000'448; // a multiple of 512
    const auto layoutOf = [&] (const TrackPlaces& places)
    {
        BeatWindow beats;
        watch.look();
        beats.update (watch, p - 401 * 512.0, p + 401 * 512.0);
        return MarkLayout::of (beats.beats(), places, {}, p / 512 - width / 2, width);
    };
    const auto check = [&] (const std::vector<Mark>& marks)
    {
        const auto grid = deck.grid();
        std::vector<Mark> expected;
        for (int i = 0; i < grid.beatCount(); ++i)
            if (const auto k = i - grid.downbeatEntry(); k % 2 == 0)
                if (const auto x = (grid.beatAt (i) - p + width / 2 * 512) / 512; x >= 0 && x < width)
                    expected.push_back ({ kindOfBeat (k), static_cast<int> (x),
                                          kindOfBeat (k) == MarkKind::beat ? 0 : barNumber (k) });
        EXPECT_GT (expected.size(), 16u);
        EXPECT_EQ (marks, expected);
    };
    check (layoutOf ({}).beats);

    deck.beats.clear();
    for (int i = 0; i < 180; ++i)
        deck.beats.push_back ({ 300 + 11'025 * i + i % 7, 120.0 });
    deck.track.numBeats = 180;
    deck.marks.downbeatIndex = 93;
    deck.marks.fixedGrid = 0;
    check (layoutOf ({}).beats);

    deck.loops.mode = 1;
    deck.loopSizes.loop = 5; // one beat
    deck.loops.start = p;
    deck.marks.cues[0] = p + 10 * 512;
    deck.marks.cues[3] = p - 10 * 512;
    deck.marks.cues[4] = p + 800 * 512;
    deck.play.currentCue = 3;
    const auto layout = layoutOf (watch.look().places);
    const MarkLayout::Region loop { 400, 400 + 22'050 / 512, true };
    EXPECT_EQ (layout.loop, loop);
    const std::vector<Mark> flags { { MarkKind::cuePoint, 390, 4 },
                                    { MarkKind::hotCue, 410, 1 },
                                    { MarkKind::hotCue, 390, 4 } };
    EXPECT_EQ (layout.flags, flags);
    EXPECT_FALSE (layoutOf (DeckWatch (bench.engine, 1)->places).loop.has_value());
}

TEST (WaveformMarks, MovedBeatsAreSeenWhateverMoved)
{
    ViewBench bench;
    bench.putTrack (std::vector<int16_t> (500'000, 9));
    auto& deck = bench.deck();
    deck.marks.fixedGrid = 0;
    for (int i = 0; i < 40; ++i)
        deck.beats.push_back ({ 11'025 * i, 120.0 });
    deck.track.numBeats = 40;
    BeatWindow window;
    const DeckWatch watch (bench.engine, 0);
    EXPECT_TRUE (window.update (watch, 0.0, 200'000.0));
    EXPECT_FALSE (window.update (watch, 50'000.0, 250'000.0)) << "still within reach";
    EXPECT_TRUE (window.update (watch, 300'000.0, 500'000.0));
    deck.beats[30].pos += 1;
    window.forget();
    EXPECT_TRUE (window.update (watch, 300'000.0, 500'000.0)) << "another table of the same numbers";
    deck.marks.downbeatIndex = 1;
    watch.look();
    EXPECT_TRUE (window.update (watch, 300'000.0, 500'000.0));
}
