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
    const auto stand = [&] (double frame) { deck.position = frame; };

    // Manual loops: ends in the wrong order, ends missing, a start past the end.
    decks.loops.reloop (0);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loopMode, noLoop);
    stand (50'000.0);
    decks.loops.loopIn (0);
    decks.loops.reloop (0);
    EXPECT_EQ (deck.loopMode, noLoop);
    stand (20'000.0);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loopMode, manualLoop);
    EXPECT_EQ (deck.loopIn, 20'000.0);
    EXPECT_EQ (deck.loopOut, 50'000.0);
    decks.loops.toggleLoop (0);
    decks.loops.toggleLeap (0);
    EXPECT_EQ (deck.loopMode, manualLoop); // a beat loop does not take over
    decks.loops.reloop (0);
    EXPECT_EQ (deck.position, 20'000.0);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loopMode, noLoop);
    EXPECT_EQ (deck.position, 20'000.0);
    decks.loops.reloop (0);
    EXPECT_EQ (deck.loopMode, manualLoop);
    stand (60'000.0);
    decks.loops.loopIn (0);
    EXPECT_EQ (deck.loopMode, noLoop);
    decks.loops.reloop (0);
    EXPECT_EQ (deck.loopMode, noLoop);

    // Beat loops: resync where parts of a beat were left, none after a roll; a Loop press ends a roll where it is.
    for (const auto& [size, resync] : { std::pair { 4, 1 }, { 5, 0 } })
    {
        deck.loopSize = static_cast<int8_t> (size);
        deck.resyncRequest = 0;
        decks.settings.deckSetup[0].timecodeAbsolute = 1;
        decks.loops.toggleLoop (0);
        EXPECT_EQ (decks.settings.deckSetup[0].timecodeAbsolute, 0);
        EXPECT_EQ (deck.loopStart, 60'000.0);
        decks.loops.toggleLoop (0);
        EXPECT_EQ (deck.resyncRequest, resync);
    }
    deck.loopSize = 0;
    deck.resyncRequest = 0;
    decks.loops.toggleLeap (0);
    EXPECT_EQ (deck.rollPosition, 60'000.0);
    deck.rollPosition = 90'000.0;
    decks.loops.toggleLoop (0);
    EXPECT_EQ (deck.position, 60'000.0);
    decks.loops.toggleLeap (0);
    deck.rollPosition = 1.0e9;
    decks.loops.toggleLeap (0);
    EXPECT_EQ (deck.position, trackFrames);
    EXPECT_EQ (deck.resyncRequest, 0);

    // Sizes stop at their ends, moves at the track's.
    for (int i = 0; i < 20; ++i)
        decks.loops.changeSize (0, 1), decks.loops.changeMoveSize (0, -1);
    EXPECT_EQ (deck.loopSize, 10);
    EXPECT_EQ (deck.loopMoveSize, 0);
    stand (1000.0);
    decks.loops.moveLoop (0, 1);
    EXPECT_DOUBLE_EQ (deck.position, 1000.0 + 689.0625);
    decks.loops.moveLoop (0, -1), decks.loops.moveLoop (0, -1), decks.loops.moveLoop (0, -1);
    EXPECT_EQ (deck.position, 0.0);

    // Snap: full beats at 5000 + k * 22050, the downbeat's parity; what can't be snapped.
    decks.giveTable (5000);
    const auto store = [&] (double frame)
    {
        stand (frame);
        decks.transport.setCue (0, 2);
        return deck.cues[2].get();
    };
    EXPECT_EQ (store (5000.0 + 22'050.0 + 11'000.0), 5000.0 + 22'050.0);
    EXPECT_EQ (store (5000.0 + 22'050.0 + 11'050.0), 5000.0 + 44'100.0);
    deck.downbeatIndex = 1;
    EXPECT_EQ (store (5000.0 + 22'050.0 - 100.0), 5000.0 + 11'025.0);
    deck.numBeats = 2; // one even beat, at 16025
    EXPECT_EQ (store (16'025.0 + 99'999.0), 16'025.0);
    deck.loopIn = 7.0;
    deck.startPoint = 8.0;
    EXPECT_EQ (store (16'025.0 + 100'000.0), 16'025.0); // as it was
    decks.loops.loopIn (0);
    EXPECT_EQ (deck.loopIn, 7.0);
    decks.loops.toggleStartPoint (0);
    EXPECT_EQ (deck.startPoint, 8.0);
    EXPECT_EQ (deck.startPointOn, 1);
    decks.loops.loopOut (0);
    EXPECT_EQ (deck.loopOut, 116'025.0);
    decks.loops.loopOut (0);
    decks.loops.toggleLoop (0);
    EXPECT_EQ (deck.loopStart, 116'025.0);
    deck.numBeats = 0; // no grid
    EXPECT_EQ (store (33'333.0), 33'333.0);
    snap = 0;
    deck.numBeats = 2;
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
        const double point = decks.deck().startPoint;
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

TEST (LoopCommands, TheReadingPassesEachBeatOnce)
{
    // A fixed grid at 120: bars of the walk are beats of 22050 frames; in a loop of half a beat from a beat on, 11025.
    LoopDeck decks;
    decks.settings.bypassStretcher = 1;
    auto& deck = decks.deck();
    deck.fixedGrid = 1;
    deck.downbeatPosition = 4000;
    decks.playFrom (100.0);
    const auto expectBars = [&] (int frames, int bar)
    {
        decks.render (80'000, 0, 500);
        for (int done = 0; done < frames; done += 500)
        {
            decks.render (500, 0, 500);
            EXPECT_NEAR (deck.framesOfBar, bar, 1.0);
            EXPECT_LE (deck.framesSinceBar, bar);
        }
    };
    expectBars (200'000, 22'050);
    deck.loopStart = 4000.0 + 12 * 22'050.0;
    deck.loopSize = 4;
    deck.loopMode = beatLoop;
    expectBars (100'000, 11'025);
    deck.loopMode = noLoop;
    decks.setTempo (0.9); // bypassed: slower, so a beat lasts longer
    expectBars (200'000, 24'500);
}

TEST (LoopCommands, TenThousandRandomCommandsLeaveADeckInOrder)
{
    LoopDeck decks (sine (300.0, 0.9), 174.0);
    auto& deck = decks.deck();
    decks.giveTable (700);
    std::mt19937 random (9);
    const auto chance = [&random] { return random() % 2 == 0; };
    for (int i = 0; i < 10'000; ++i)
    {
        decks.now += random() % 900;
        switch (random() % 24)
        {
        case 0:
            decks.loops.toggleLoop (0);
            break;
        case 1:
            decks.loops.toggleLeap (0);
            break;
        case 2:
            decks.loops.changeSize (0, chance() ? 1 : -1);
            break;
        case 3:
            decks.loops.changeMoveSize (0, chance() ? 1 : -1);
            break;
        case 4:
            decks.loops.moveLoop (0, chance() ? 1 : -1);
            break;
        case 5:
            decks.loops.loopIn (0);
            break;
        case 6:
            decks.loops.loopOut (0);
            break;
        case 7:
            decks.loops.reloop (0);
            break;
        case 8:
            decks.loops.toggleStartPoint (0);
            break;
        case 9:
            decks.grids.setDownbeat (0);
            break;
        case 10:
            chance() ? decks.grids.halveTempo (0) : decks.grids.doubleTempo (0);
            break;
        case 11:
            decks.grids.moveGrid (0, chance() ? 1 : -1);
            break;
        case 12:
            decks.grids.toggleGridMode (0);
            break;
        case 13:
            decks.grids.setTempo (0, random() % 400);
            break;
        case 14:
            decks.grids.tapTempo (0);
            break;
        case 15:
            chance() ? decks.grids.undo (0) : decks.grids.redo (0);
            break;
        case 16:
            decks.transport.jumpToCue (0, static_cast<int> (random() % 16));
            break;
        case 17:
            decks.transport.deleteCue (0, static_cast<int> (random() % 16));
            break;
        case 18:
            decks.transport.cue (0, chance());
            break;
        case 19:
            decks.transport.seekNormalised (0, (random() % 1200) / 1000.0 - 0.1);
            break;
        case 20:
            decks.settings.deckSetup[0].snap = chance();
            break;
        case 21:
            decks.setTempo (0.7 + (random() % 700) / 1000.0);
            break;
        case 22:
            decks.transport.setReverse (0, random() % 3 == 0);
            break;
        default:
            decks.settings.bypassStretcher = random() % 4 == 0;
            break;
        }
        if (deck.playState == 0 && random() % 3 == 0)
            decks.transport.playPause (0);
        if (i % 4 != 0)
            continue; // commands also fall on one another
        const auto out = decks.render (static_cast<int> (1 + random() % 1500), 0, 100);
        ASSERT_LT (Signals::peak (out.left), 1.8) << i;
        for (const double place :
             { deck.position.get(), deck.heardPosition(), deck.loopStart.get(), deck.loopIn.get(),
               deck.loopOut.get(), deck.startPoint.get(), static_cast<double> (deck.downbeatPosition) })
            ASSERT_TRUE (place >= 0.0 && place <= trackFrames) << i << " " << place;
        for (const double cue : deck.cues)
            ASSERT_TRUE (cue == emptyCue || (cue >= 0.0 && cue <= trackFrames)) << i;
        ASSERT_TRUE (deck.loopInSet == 0 || deck.loopOutSet == 0 || deck.loopIn <= deck.loopOut) << i;
        ASSERT_TRUE (deck.rollingLoop == 0 || deck.loopMode == beatLoop) << i;
        ASSERT_TRUE (deck.startPointOn == 0 || deck.playState == 0 || deck.position >= deck.startPoint) << i;
        ASSERT_TRUE (deck.bpm >= 30.0 && deck.bpm <= 256.0) << i;
    }
}
