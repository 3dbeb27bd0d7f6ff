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
