#include "DeckFixture.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
struct EditedDeck : DeckFixture
{
    EditedDeck()
    {
        putTrack (500'000, [] (int) { return 0.0; });
        for (int at = 0; at < 500'000; at += 11'025)
            deck().beats.push_back ({ at, 120.0 });
        deck().track.numBeats = static_cast<int32_t> (deck().beats.size());
    }

    TrackMarks marks() { return deck().marks; }
};
}

TEST (EditHistory, TakesBackAndDoesAgainTheLast32Edits)
{
    using Command = void (*) (EditedDeck&, int anything);
    constexpr Command commands[] {
        [] (EditedDeck& d, int any) { d.transport.setCue (0, any % 16); },
        [] (EditedDeck& d, int any) { d.transport.deleteCue (0, any % 16); },
        [] (EditedDeck& d, int) { d.loops.toggleStartPoint (0); },
        [] (EditedDeck& d, int) { d.grids.setDownbeat (0); },
        [] (EditedDeck& d, int) { d.grids.halveTempo (0); },
        [] (EditedDeck& d, int) { d.grids.doubleTempo (0); },
        [] (EditedDeck& d, int any) { d.grids.setTempo (0, 60.0 + any % 120); },
        [] (EditedDeck& d, int any) { d.grids.moveGrid (0, any % 2 == 0 ? 1 : -1); },
        [] (EditedDeck& d, int) { d.grids.toggleGridMode (0); },
        [] (EditedDeck& d, int any) { d.grids.read (0, GridReading::all()[any % GridReading::count]); },
    };
    EditedDeck decks;
    auto& deck = decks.deck();
    std::mt19937 random (3);
    std::vector<TrackMarks> states { decks.marks() };
    for (int i = 0; i < 400; ++i)
    {
        decks.now += 5000;
        deck.place (random() % 500'000);
        commands[random() % std::size (commands)](decks, static_cast<int> (random() % 1024));
        if (const auto now = decks.marks(); now != states.back()) // what changes nothing is no edit
            states.push_back (now);

        if (i % 40 == 39)
        {
            const auto depth = std::min (static_cast<size_t> (EditHistory::capacity), states.size() - 1);
            ASSERT_EQ (deck.edits.undoCount(), static_cast<int> (depth));
            for (size_t back = 1; back <= depth; ++back)
            {
                ASSERT_TRUE (decks.grids.undo (0));
                ASSERT_EQ (decks.marks(), states[states.size() - 1 - back]) << i << " " << back;
            }
            ASSERT_FALSE (decks.grids.undo (0));
            for (size_t on = 0; on < depth; ++on)
                ASSERT_TRUE (decks.grids.redo (0));
            ASSERT_FALSE (decks.grids.redo (0));
            ASSERT_EQ (decks.marks(), states.back());
            // An edit after two steps back ends what could be done again.
            for (int back = 0; back < 2; ++back)
                decks.grids.undo (0), states.pop_back();
        }
    }
    EXPECT_EQ (deck.edits.redoCount(), 2);
    decks.grids.setTempo (0, 59.5);
    EXPECT_EQ (deck.edits.redoCount(), 0);
    EXPECT_FALSE (decks.grids.redo (0));

    decks.putTrack (100, [] (int) { return 0.0; });
    EXPECT_FALSE (decks.grids.undo (0));
}

TEST (EditHistory, RunsOfMovesAndTapsAreOneEdit)
{
    EditedDeck decks;
    auto& deck = decks.deck();
    const auto pause = [&] (uint32_t ms) { decks.now += ms; };
    deck.marks.fixedGrid = 1;
    for (int i = 0; i < 20; ++i, pause (300))
        decks.grids.moveGrid (0, 1);
    pause (2000);
    for (int i = 0; i < 3; ++i, pause (999))
        decks.grids.moveGrid (0, -1);
    EXPECT_EQ (deck.marks.downbeatPosition, 17 * 512);
    EXPECT_EQ (deck.edits.undoCount(), 2);
    decks.grids.undo (0);
    EXPECT_EQ (deck.marks.downbeatPosition, 20 * 512);
    decks.grids.moveGrid (0, -1); // soon after, but what came before was taken back
    EXPECT_EQ (deck.edits.undoCount(), 2);
    decks.grids.undo (0);
    decks.grids.undo (0);
    EXPECT_EQ (deck.marks.downbeatPosition, 0);

    for (int i = 0; i < 8; ++i, pause (600))
        decks.grids.tapTempo (0);
    EXPECT_NEAR (deck.marks.bpm, 100.0, 1.0e-9);
    EXPECT_EQ (deck.edits.undoCount(), 1);
    decks.grids.undo (0);
    EXPECT_EQ (deck.marks.bpm, 120.0);
    EXPECT_EQ (deck.marks.bpmAverage, 120.0);

    // A field that has changed by itself since, or that the edit did not touch, stays.
    decks.transport.setCue (0, 4);
    deck.marks.bpmAverage = 90.0;
    decks.grids.undo (0);
    EXPECT_EQ (deck.marks.cues[4], emptyCue);
    EXPECT_EQ (deck.marks.bpmAverage, 90.0);
}

TEST (GridCommands, KeepTempoDownbeatAndGridWithinTheirLimits)
{
    EditedDeck decks;
    auto& deck = decks.deck();
    using Turn = void (*) (GridCommands&);
    const Turn halve = [] (GridCommands& g) { g.halveTempo (0); };
    const Turn twice = [] (GridCommands& g) { g.doubleTempo (0); };
    const struct
    {
        double bpm, average;
        Turn turn;
        double expected;
    } cases[] {
        { 120.0, 120.0, halve, 60.0 },  { 60.0, 120.0, halve, 60.0 },   { 60.0, 120.0, twice, 120.0 },
        { 120.0, 120.0, twice, 240.0 }, { 240.0, 120.0, twice, 240.0 }, { 130.0, 130.0, twice, 130.0 },
        { 59.0, 59.0, halve, 59.0 },    { 60.0, 60.0, halve, 30.0 },    { 125.0, 125.0, twice, 250.0 },
    };
    for (const auto& c : cases)
    {
        deck.marks.bpm = c.bpm;
        deck.marks.bpmAverage = c.average;
        c.turn (decks.grids);
        EXPECT_EQ (deck.marks.bpm, c.expected) << c.bpm << " of " << c.average;
    }
    for (const auto& [number, expected] :
         { std::pair { 20.0, 32.0 }, { 300.0, 256.0 }, { 99.5, 99.5 }, { std::nan (""), 99.5 } })
    {
        decks.grids.setTempo (0, number);
        EXPECT_EQ (deck.marks.bpm, expected);
    }

    deck.place (11'025.0 * 3 + 5000.0); // an odd entry may be the downbeat
    decks.grids.setDownbeat (0);
    EXPECT_EQ (deck.marks.downbeatIndex, 3);
    EXPECT_EQ (deck.marks.downbeatPosition, 33'075);
    deck.track.numBeats = 1;
    deck.place (100'000.0);
    decks.grids.setDownbeat (0);
    EXPECT_EQ (deck.marks.downbeatIndex, 3);

    // An edit leaves the grid alone that is not in force.
    decks.grids.moveGrid (0, 1);
    EXPECT_EQ (deck.marks.downbeatPosition, 33'075);
    deck.marks.fixedGrid = 1;
    decks.grids.setDownbeat (0);
    EXPECT_NE (deck.marks.downbeatPosition, 33'075);
    EXPECT_EQ (deck.marks.downbeatIndex, 3);

    for (int i = 0; i < 2000; ++i)
        decks.grids.moveGrid (0, 1);
    EXPECT_EQ (deck.marks.downbeatPosition, 500'000);
    for (int i = 0; i < 2000; ++i)
        decks.grids.moveGrid (0, -1);
    EXPECT_EQ (deck.marks.downbeatPosition, 0);
    for (const int none : { -1, 4 })
    {
        decks.grids.setDownbeat (none);
        decks.loops.toggleLoop (none);
        EXPECT_FALSE (decks.grids.undo (none));
    }
}

TEST (GridCommands, ReadTheGridAnew)
{
    const auto read = [] (EditedDeck& decks, const char* name)
    { return decks.grids.read (0, *GridReading::find (name)); };
    const auto places = [] (EditedDeck& decks)
    {
        std::vector<double> all;
        const auto grid = decks.deck().grid();
        for (int32_t i = 0; i < grid.beatCount(); ++i)
            all.push_back (grid.beatAt (i));
        return all;
    };
    for (const auto* name : { "3/2", "2/3", "4/3", "3/4" })
    {
        // In time that drifts the ratio is kept at every place, and the downbeat is where it was.
        EditedDeck decks;
        auto& deck = decks.deck();
        for (size_t i = 0; i < deck.beats.size(); ++i)
            deck.beats[i].pos = static_cast<int32_t> (i * 11'000 + i * i * 20);
        deck.marks.downbeatIndex = 5;
        const auto before = places (decks);
        const auto& reading = *GridReading::find (name);
        ASSERT_TRUE (read (decks, name));
        EXPECT_NEAR (deck.marks.bpm, 120.0 * reading.beats / reading.per, 1.0e-9) << name;
        const auto after = places (decks);
        EXPECT_NEAR (after[static_cast<size_t> (deck.marks.downbeatIndex)], before[5], 0.01) << name;
        EXPECT_LT (after.front(), before[2]) << name;
        EXPECT_GT (after.back(), before[before.size() - 3]) << name;
        for (int bar = 0; bar < 4; ++bar)
            EXPECT_NEAR (after[static_cast<size_t> (deck.marks.downbeatIndex + bar * reading.beats)],
                         before[static_cast<size_t> (5 + bar * reading.per)], 0.01)
                << name << bar;

        // Opposite and undo lead back to the frame.
        const auto* opposite = reading.beats == 3 && reading.per == 2 ? "2/3"
                               : reading.beats == 2                   ? "3/2"
                               : reading.beats == 4                   ? "3/4"
                                                                      : "4/3";
        ASSERT_TRUE (read (decks, opposite));
        EXPECT_EQ (places (decks), before) << name;
        decks.grids.undo (0);
        EXPECT_EQ (places (decks), after) << name;
        decks.grids.undo (0);
        EXPECT_EQ (places (decks), before) << name;
        EXPECT_EQ (deck.marks.downbeatIndex, 5);
        EXPECT_EQ (deck.marks.bpm, 120.0);
    }

    EditedDeck decks;
    auto& marks = decks.deck().marks;
    ASSERT_TRUE (read (decks, "half") && read (decks, "beat"));
    EXPECT_EQ (marks.downbeatIndex, 3);
    EXPECT_EQ (marks.downbeatPosition, 33'075);
    marks.fixedGrid = 1;
    ASSERT_TRUE (read (decks, "half"));
    EXPECT_EQ (marks.downbeatPosition, 44'100);
    EXPECT_EQ (marks.downbeatIndex, 3);

    // Neither tempo nor downbeat leaves its range, and a deck without beats has nothing to read.
    marks.bpm = 200.0;
    EXPECT_FALSE (read (decks, "3/2"));
    marks.downbeatPosition = 499'999;
    EXPECT_FALSE (read (decks, "beat"));
    marks.fixedGrid = 0;
    marks.downbeatIndex = decks.deck().track.numBeats - 1;
    EXPECT_FALSE (read (decks, "half"));
    decks.deck().track.numBeats = 0;
    EXPECT_FALSE (read (decks, "2/3"));
    EXPECT_EQ (marks.bpm, 200.0);
}
