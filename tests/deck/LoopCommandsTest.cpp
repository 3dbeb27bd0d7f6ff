#include "LoopDeck.h"

#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <random>

TEST (LoopCommands, KeepsTheEdgesOfItsCommands)
{
    LoopDeck decks;
    auto& deck = decks.deck();
    decks.settings.bypassStretcher = 1;
    auto& snap = decks.settings.deckSetup[0].snap;
    const auto stand = [&] (double frame) { deck.place (frame); };

    // Manual loops: ends in the wrong order, ends missing, a start past the end.
    decks.loops.reloop (0);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loops.mode, noLoop);
    stand (50'000.0);
    decks.loops.loopIn (0);
    decks.loops.reloop (0);
    EXPECT_EQ (deck.loops.mode, noLoop);
    stand (20'000.0);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loops.mode, manualLoop);
    EXPECT_EQ (deck.loops.in, 20'000.0);
    EXPECT_EQ (deck.loops.out, 50'000.0);
    decks.loops.toggleLoop (0);
    decks.loops.toggleLeap (0);
    EXPECT_EQ (deck.loops.mode, manualLoop); // a beat loop does not take over
    decks.loops.reloop (0);
    EXPECT_EQ (deck.head.position, 20'000.0);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loops.mode, noLoop);
    EXPECT_EQ (deck.head.position, 20'000.0);
    decks.loops.reloop (0);
    EXPECT_EQ (deck.loops.mode, manualLoop);
    stand (60'000.0);
    decks.loops.loopIn (0);
    EXPECT_EQ (deck.loops.mode, noLoop);
    decks.loops.reloop (0);
    EXPECT_EQ (deck.loops.mode, noLoop);

    // Beat loops: resync where parts of a beat were left, none after a roll; a Loop press ends a roll where it is.
    for (const auto& [size, resync] : { std::pair { 4, 1 }, { 5, 0 } })
    {
        deck.loopSizes.loop = static_cast<int8_t> (size);
        deck.sync.resync = 0;
        decks.settings.deckSetup[0].timecodeAbsolute = 1;
        decks.loops.toggleLoop (0);
        EXPECT_EQ (decks.settings.deckSetup[0].timecodeAbsolute, 0);
        EXPECT_EQ (deck.loops.start, 60'000.0);
        decks.loops.toggleLoop (0);
        EXPECT_EQ (deck.sync.resync, resync);
    }
    deck.loopSizes.loop = 0;
    deck.sync.resync = 0;
    decks.loops.toggleLeap (0);
    EXPECT_EQ (deck.head.roll, 60'000.0);
    deck.head.roll = 90'000.0;
    decks.loops.toggleLoop (0);
    EXPECT_EQ (deck.head.position, 60'000.0);
    decks.loops.toggleLeap (0);
    deck.head.roll = 1.0e9;
    decks.loops.toggleLeap (0);
    EXPECT_EQ (deck.head.position, trackFrames);
    EXPECT_EQ (deck.sync.resync, 0);

    // Sizes stop at their ends, moves at the track's.
    for (int i = 0; i < 20; ++i)
        decks.loops.changeSize (0, 1), decks.loops.changeMoveSize (0, -1);
    EXPECT_EQ (deck.loopSizes.loop, 10);
    EXPECT_EQ (deck.loopSizes.move, 0);
    stand (1000.0);
    decks.loops.moveLoop (0, 1);
    EXPECT_DOUBLE_EQ (deck.head.position, 1000.0 + 689.0625);
    decks.loops.moveLoop (0, -1), decks.loops.moveLoop (0, -1), decks.loops.moveLoop (0, -1);
    EXPECT_EQ (deck.head.position, 0.0);

    // Snap: full beats at 5000 + k * 22050, the downbeat's parity; what can't be snapped.
    decks.giveTable (5000);
    const auto store = [&] (double frame)
    {
        stand (frame);
        decks.transport.setCue (0, 2);
        return deck.marks.cues[2].get();
    };
    EXPECT_EQ (store (5000.0 + 22'050.0 + 11'000.0), 5000.0 + 22'050.0);
    EXPECT_EQ (store (5000.0 + 22'050.0 + 11'050.0), 5000.0 + 44'100.0);
    deck.marks.downbeatIndex = 1;
    EXPECT_EQ (store (5000.0 + 22'050.0 - 100.0), 5000.0 + 11'025.0);
    deck.track.numBeats = 2; // one even beat, at 16025
    EXPECT_EQ (store (16'025.0 + 99'999.0), 16'025.0);
    deck.loops.in = 7.0;
    deck.marks.startPoint = 8.0;
    EXPECT_EQ (store (16'025.0 + 100'000.0), 16'025.0); // as it was
    decks.loops.loopIn (0);
    EXPECT_EQ (deck.loops.in, 7.0);
    decks.loops.toggleStartPoint (0);
    EXPECT_EQ (deck.marks.startPoint, 8.0);
    EXPECT_EQ (deck.marks.startPointOn, 1);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loops.out, 116'025.0);
    decks.loops.loopOut (0);
    decks.loops.toggleLoop (0);
    EXPECT_EQ (deck.loops.start, 116'025.0);
    deck.track.numBeats = 0; // no grid
    EXPECT_EQ (store (33'333.0), 33'333.0);
    snap = 0;
    deck.track.numBeats = 2;
    EXPECT_EQ (store (44'444.0), 44'444.0);
}

TEST (LoopCommands, TheStartPointHoldsInReverse)
{
    for (const int8_t bypass : { 0, 1 })
    {
        LoopDeck decks (sine (200.0));
        decks.settings.bypassStretcher = bypass;
        decks.playFrom (500'000.0);
        decks.loops.toggleStartPoint (0);
        const double point = decks.deck().marks.startPoint;
        decks.render (20'000);
        decks.transport.setReverse (0, true);
        for (int i = 0; i < 60; ++i)
        {
            decks.render (1000);
            EXPECT_GE (decks.deck().heardPosition(), point - 1.0);
        }
        EXPECT_NEAR (decks.deck().heardPosition(), point, 1.0);
        decks.transport.setReverse (0, false);
        decks.render (20'000);
        EXPECT_GT (decks.deck().heardPosition(), point + 10'000.0);
    }
}

TEST (LoopCommands, TenThousandRandomCommandsLeaveADeckInOrder)
{
    using Command = void (*) (LoopDeck&, unsigned anything);
    constexpr Command commands[] {
        [] (LoopDeck& d, unsigned) { d.loops.toggleLoop (0); },
        [] (LoopDeck& d, unsigned) { d.loops.toggleLeap (0); },
        [] (LoopDeck& d, unsigned any) { d.loops.changeSize (0, any % 2 == 0 ? 1 : -1); },
        [] (LoopDeck& d, unsigned any) { d.loops.changeMoveSize (0, any % 2 == 0 ? 1 : -1); },
        [] (LoopDeck& d, unsigned any) { d.loops.moveLoop (0, any % 2 == 0 ? 1 : -1); },
        [] (LoopDeck& d, unsigned) { d.loops.loopIn (0); },
        [] (LoopDeck& d, unsigned) { d.loops.loopOut (0); },
        [] (LoopDeck& d, unsigned) { d.loops.reloop (0); },
        [] (LoopDeck& d, unsigned) { d.loops.toggleStartPoint (0); },
        [] (LoopDeck& d, unsigned) { d.grids.setDownbeat (0); },
        [] (LoopDeck& d, unsigned any) { any % 2 == 0 ? d.grids.halveTempo (0) : d.grids.doubleTempo (0); },
        [] (LoopDeck& d, unsigned any) { d.grids.moveGrid (0, any % 2 == 0 ? 1 : -1); },
        [] (LoopDeck& d, unsigned) { d.grids.toggleGridMode (0); },
        [] (LoopDeck& d, unsigned any) { d.grids.setTempo (0, any % 400); },
        [] (LoopDeck& d, unsigned) { d.grids.tapTempo (0); },
        [] (LoopDeck& d, unsigned any) { any % 2 == 0 ? d.grids.undo (0) : d.grids.redo (0); },
        [] (LoopDeck& d, unsigned any) { d.transport.jumpToCue (0, static_cast<int> (any % 16)); },
        [] (LoopDeck& d, unsigned any) { d.transport.deleteCue (0, static_cast<int> (any % 16)); },
        [] (LoopDeck& d, unsigned any) { d.transport.cue (0, any % 2 == 0); },
        [] (LoopDeck& d, unsigned any) { d.transport.seekNormalised (0, (any % 1200) / 1000.0 - 0.1); },
        [] (LoopDeck& d, unsigned any) { d.settings.deckSetup[0].snap = any % 2 == 0; },
        [] (LoopDeck& d, unsigned any) { d.setTempo (0.7 + (any % 700) / 1000.0); },
        [] (LoopDeck& d, unsigned any) { d.transport.setReverse (0, any % 3 == 0); },
        [] (LoopDeck& d, unsigned any) { d.transport.setKeyLock (0, any % 3 != 0); },
        [] (LoopDeck& d, unsigned any) { d.settings.bypassStretcher = any % 4 == 0; },
    };
    LoopDeck decks (sine (300.0, 0.9), 174.0);
    auto& deck = decks.deck();
    decks.giveTable (700);
    std::mt19937 random (9);
    for (int i = 0; i < 10'000; ++i)
    {
        decks.now += random() % 900;
        commands[random() % std::size (commands)](decks, static_cast<unsigned> (random()));
        if (deck.play.on == 0 && random() % 3 == 0)
            decks.transport.playPause (0);
        if (i % 4 != 0)
            continue; // commands also fall on one another
        const auto out = decks.render (static_cast<int> (1 + random() % 1500), 0, 100);
        ASSERT_LT (Signals::peak (out.left), 1.8) << i;
        for (const double place : { deck.head.position, deck.heardPosition(), deck.loops.start.get(),
                                    deck.loops.in.get(), deck.loops.out.get(), deck.marks.startPoint.get(),
                                    static_cast<double> (deck.marks.downbeatPosition) })
            ASSERT_TRUE (place >= 0.0 && place <= trackFrames) << i << " " << place;
        for (const double cue : deck.marks.cues)
            ASSERT_TRUE (cue == emptyCue || (cue >= 0.0 && cue <= trackFrames)) << i;
        ASSERT_TRUE (deck.loops.inSet == 0 || deck.loops.outSet == 0 || deck.loops.in <= deck.loops.out) << i;
        ASSERT_TRUE (deck.loops.rolling == 0 || deck.loops.mode == beatLoop) << i;
        ASSERT_TRUE (deck.marks.startPointOn == 0 || deck.play.on == 0
                     || deck.head.position >= deck.marks.startPoint)
            << i;
        ASSERT_TRUE (deck.marks.bpm >= 30.0 && deck.marks.bpm <= 256.0) << i;
    }
}
