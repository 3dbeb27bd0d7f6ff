#include "DeckFixture.h"

#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
constexpr double millisecond = 44.1;
constexpr int trackFrames = 3'000'000;

/** Deck A plays its stretcher unless it is bypassed; the pitch fader reaches far. */
struct LoopDeck : DeckFixture
{
    explicit LoopDeck (
        const std::function<double (int)>& value = [] (int) { return 0.0; }, double bpm = 120.0)
    {
        world.pitchRange = 1.0;
        deck().makeStretcher (rate);
        putTrack (trackFrames, value);
        deck().bpm = deck().bpmAverage = bpm;
    }

    void setTempo (double tempo) { deck().pitch = tempo - 0.5; }

    /** A table of beats at the deck's tempo, `phase` frames into the track. */
    void giveTable (int phase = 0)
    {
        auto& marks = deck().beats;
        for (auto at = static_cast<double> (phase); at < trackFrames; at += deck().beatFrames() / 2.0)
            marks.push_back ({ static_cast<int32_t> (std::lround (at)), 120.0 });
        deck().numBeats = static_cast<int32_t> (marks.size());
        settings.deckSetup[0].snap = 1;
    }

    /** Plays until the place that is heard has come to `frame`, to a sample. */
    void playTo (double frame, int block = 64)
    {
        while (deck().heardPosition() + 2.0 * block < frame)
            render (block, 0, block);
        while (deck().heardPosition() < frame)
            render (1, 0, 1);
    }

    void playFrom (double frame)
    {
        transport.seekFrames (0, frame);
        transport.playPause (0);
        render (4096);
    }
};

auto sine (double frequency, double amplitude = 0.5)
{
    return [=] (int frame)
    { return amplitude * std::sin (frame * frequency * 2.0 * M_PI / DeckFixture::rate); };
}
}

TEST (Loop, OfEverySizeAndTempoTurnsAtTheExactSample)
{
    constexpr double amplitude = 0.5, frequency = 90.0;
    LoopDeck decks (sine (frequency, amplitude));
    decks.settings.bypassStretcher = 1;
    auto& deck = decks.deck();
    for (const double bpm : { 60.0, 120.0, 174.0 })
        for (int8_t size = 0; size < loopSizeCount; ++size)
            for (const bool reverse : { false, true })
            {
                SCOPED_TRACE (testing::Message()
                              << bpm << " BPM, size " << int (size) << (reverse ? " back" : ""));
                const auto length = DeckFixture::rate * 1.875 / bpm * (1 << size);
                const auto start = 700'000.25, end = start + length;
                const auto before = reverse ? start + 300.5 : end - 300.5; // the turn
                deck.bpm = bpm;
                deck.loopSize = size;
                deck.playState = 1;
                deck.rate = reverse ? -1.0 : 1.0;
                decks.transport.setReverse (0, reverse);
                deck.position = start;
                deck.loopMode = noLoop;
                decks.loops.toggleLoop (0);
                deck.position = before;
                deck.declickGain = 0.0;

                std::vector<float> heard;
                int turns = 0;
                for (int frame = 0; frame < 3000; ++frame)
                {
                    auto expected = deck.position.get();
                    heard.push_back (decks.render (1, 0, 1).left[0]);
                    expected += deck.rate;
                    if (reverse ? expected <= start : expected >= end)
                    {
                        expected += reverse ? length : -length;
                        ++turns;
                    }
                    ASSERT_NEAR (deck.position, expected, 1.0e-6) << frame;
                }
                EXPECT_EQ (turns, 1 + static_cast<int> ((3000 - 300.5) / length));
                // The fade over a turn adds 1.6 % of what differs, a frame.
                const auto steepest = amplitude * frequency * 2.0 * M_PI / DeckFixture::rate;
                EXPECT_LT (Signals::largestStep (heard), steepest + 0.017 * 2.0 * amplitude);

                // Blocks of any length give the same places.
                const auto after = deck.position.get();
                deck.position = before;
                decks.render (3000, 0, 512);
                EXPECT_NEAR (deck.position, after, 1.0e-6);
            }
}

TEST (Loop, ComesRoundInTimeThroughTheStretcherForHundredsOfTurns)
{
    for (const auto& [tempo, size, keyLock] : { std::tuple { 1.04, 5, 1 }, { 0.96, 4, 1 }, { 1.07, 3, 0 } })
    {
        SCOPED_TRACE (testing::Message() << tempo << " " << size);
        const double start = 500'000.0, round = 689.0625 * (1 << size);
        LoopDeck decks (
            [=] (int frame)
            {
                const auto since = frame - (start + 1500.0);
                return since < 0.0 || since > 400.0
                           ? 0.0
                           : 0.8 * std::exp (-since / 80.0) * std::cos (since * 0.4274);
            });
        decks.setTempo (tempo);
        decks.deck().keyLock = static_cast<int8_t> (keyLock);
        decks.deck().loopSize = static_cast<int8_t> (size);
        decks.playFrom (start - 30'000.0);
        decks.playTo (start);
        decks.loops.toggleLoop (0);
        const double loopStart = decks.deck().loopStart;
        EXPECT_NEAR (loopStart, start, 2.0); // what is stored is what is heard

        std::vector<float> heard;
        const int turns = 300;
        heard = decks.render (static_cast<int> ((turns + 1) * round / tempo)).left;
        std::vector<int> onsets;
        for (int i = 0, last = -10'000; i < static_cast<int> (heard.size()); ++i)
            if (std::abs (heard[static_cast<size_t> (i)]) > 0.2f)
            {
                if (i - last > 2000)
                    onsets.push_back (i);
                last = i;
            }
        ASSERT_NEAR (static_cast<double> (onsets.size()), turns, 2.0);
        EXPECT_NEAR (onsets[0], (start + 1500.0 - loopStart) / tempo, millisecond);
        for (size_t i = 0; i < onsets.size(); ++i)
            ASSERT_NEAR (onsets[i], onsets[0] + static_cast<double> (i) * round / tempo, 0.1 * millisecond)
                << i;
    }
}

TEST (Loop, IsSwitchedSizedAndMovedFromWhatIsHeard)
{
    // A tone that comes round with 1/32 of a beat: no turn, jump or retaken reading may be heard in it, to the sample.
    constexpr double frequency = 640.0, amplitude = 0.5;
    LoopDeck decks (sine (frequency, amplitude));
    auto& deck = decks.deck();
    decks.playFrom (1'000'000.0);
    deck.loopSize = 0;

    std::mt19937 random (5);
    std::vector<float> heard;
    for (int i = 0; i < 1500; ++i)
    {
        if (deck.heardPosition() > 2'300'000.0 || deck.heardPosition() < 500'000.0)
        {
            deck.loopMode = noLoop;
            deck.rollingLoop = 0;
            while (deck.heardPosition() > 2'300'000.0 || deck.heardPosition() < 500'000.0)
                decks.loops.moveLoop (0, deck.heardPosition() < 500'000.0 ? 1 : -1);
        }
        const auto before = deck.heardPosition();
        const auto linear = deck.linearPosition - deck.readLead();
        auto mayMove = false;
        switch (random() % 8)
        {
        case 0:
            decks.loops.toggleLoop (0);
            break;
        case 1:
            mayMove = deck.rollingLoop != 0;
            decks.loops.toggleLeap (0);
            break;
        case 2:
            decks.loops.changeSize (0, -1);
            break;
        case 3:
            decks.loops.changeSize (0, 1);
            break;
        case 4:
            mayMove = true;
            decks.loops.moveLoop (0, random() % 2 == 0 ? 1 : -1);
            break;
        case 5:
            deck.loopMoveSize = static_cast<int8_t> (random() % 9);
            break;
        case 6:
            decks.grids.halveTempo (0);
            break;
        default:
            decks.grids.doubleTempo (0);
            break;
        }
        if (!mayMove)
        {
            ASSERT_NEAR (deck.heardPosition(), before, 1.0e-6) << i;
        }
        ASSERT_NEAR (deck.linearPosition - deck.readLead(), linear, 1.0e-6) << i;
        const auto out = decks.render (static_cast<int> (64 + random() % 4000), 0, 64).left;
        heard.insert (heard.end(), out.begin(), out.end());
        if (deck.loopMode == beatLoop)
        {
            const auto end = deck.loopStart + deck.beatLoopFrames();
            ASSERT_LT (deck.heardPosition(), end + 1.0) << i; // within a block of the command it goes round
        }
    }

    // Against the sine that fits its first half second.
    double in = 0.0, quadrature = 0.0;
    const auto angle = [&] (size_t i)
    { return static_cast<double> (i) * frequency * 2.0 * M_PI / DeckFixture::rate; };
    for (size_t i = 0; i < 22'050; ++i)
    {
        in += heard[i] * std::sin (angle (i)) / 11'025.0;
        quadrature += heard[i] * std::cos (angle (i)) / 11'025.0;
    }
    double worst = 0.0;
    for (size_t i = 0; i < heard.size(); ++i)
        worst = std::max (
            worst, std::abs (heard[i] - in * std::sin (angle (i)) - quadrature * std::cos (angle (i))));
    EXPECT_NEAR (std::hypot (in, quadrature), amplitude, 0.01);
    EXPECT_LT (worst, 0.1 * amplitude); // 1 ms would be 4 radians
}

TEST (Loop, WhatIsPressedActsOnThePlaceThatIsHeard)
{
    // A beat of 22050 frames from 441000 on; pressed when `pressedAt` is heard, at 4 % more than the file's tempo.
    struct Case
    {
        const char* name;
        int size;
        double pressedAt, seconds;
        void (*press) (LoopDeck&);
        double (*place) (double straight); ///< where it would be without loop, to where it is to be heard
    };
    static constexpr double start = 441'000.0, beat = 22'050.0;
    const auto straightOn = [] (double straight) { return straight; };
    const Case cases[] {
        { "off just before the end", 5, start + beat - 30.0, 0.5,
          [] (LoopDeck& d) { d.loops.toggleLoop (0); }, straightOn },
        { "off 0.12 s before the end", 5, start + beat - 5500.0, 0.5,
          [] (LoopDeck& d) { d.loops.toggleLoop (0); }, straightOn },
        { "off by Loop Out", 5, start + beat - 300.0, 0.5, [] (LoopDeck& d) { d.loops.loopOut (0); },
          straightOn },
        { "doubled", 5, start + beat - 300.0, 0.7, [] (LoopDeck& d) { d.loops.changeSize (0, 1); },
          [] (double straight) { return start + std::fmod (straight - start, 2.0 * beat); } },
        { "halved in its second half", 5, start + 15'000.0, 0.7,
          [] (LoopDeck& d) { d.loops.changeSize (0, -1); },
          [] (double straight) { return start + std::fmod (straight - start, 0.5 * beat); } },
        { "moved on", 5, start + beat - 300.0, 0.7, [] (LoopDeck& d) { d.loops.moveLoop (0, 1); },
          [] (double straight) { return start + beat + std::fmod (straight - start, beat); } },
        { "cut to 1/32", 5, start + 3000.0, 0.3,
          [] (LoopDeck& d)
          {
              for (int i = 0; i < 5; ++i)
                  d.loops.changeSize (0, -1);
          },
          [] (double straight) { return start + std::fmod (straight - start, beat / 32.0); } },
        { "out of a leap", 2, start + 2000.0, 0.4,
          [] (LoopDeck& d)
          {
              d.loops.toggleLoop (0);
              d.loops.toggleLeap (0);
              d.render (44'100);
              d.loops.toggleLeap (0);
              d.deck().loopMode = noLoop;
          },
          [] (double straight) { return straight; } },
        { "moved out of a leap", 1, start + 1000.0, 0.4,
          [] (LoopDeck& d)
          {
              d.loops.toggleLoop (0);
              d.loops.toggleLeap (0);
              d.render (20'000);
              d.loops.moveLoop (0, 1);
              d.render (20'000);
              d.loops.changeSize (0, 1);
              d.render (4100);
              d.loops.toggleLeap (0);
          },
          [] (double straight) { return straight; } },
        { "a manual loop closes", 5, start + 9000.0, 0.4,
          [] (LoopDeck& d)
          {
              d.loops.toggleLoop (0);
              d.loops.loopIn (0);
              d.deck().loopIn = start + 4000.0;
              d.loops.loopOut (0);
          },
          [] (double straight) { return start + 4000.0 + std::fmod (straight - start - 9000.0, 5000.0); } },
        { "to the loop's start", 5, start + 9000.0, 0.2,
          [] (LoopDeck& d)
          {
              auto& deck = d.deck();
              deck.loopMode = manualLoop;
              deck.loopIn = start;
              deck.loopOut = start + beat;
              deck.loopInSet = deck.loopOutSet = 1;
              d.loops.reloop (0);
          },
          [] (double straight) { return straight - 9000.0; } },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        LoopDeck decks;
        auto& deck = decks.deck();
        deck.loopSize = static_cast<int8_t> (c.size);
        decks.setTempo (1.04);
        decks.playFrom (start - 10'000.0);
        decks.playTo (start);
        const double heardStart = deck.heardPosition();
        decks.loops.toggleLoop (0);
        deck.loopStart = start;
        decks.playTo (std::min (c.pressedAt, start + deck.beatLoopFrames() - 30.0));
        const auto pressed = deck.heardPosition();
        const auto linear = deck.linearPosition - deck.readLead();
        c.press (decks);
        const auto frames = static_cast<int> (c.seconds * DeckFixture::rate);
        decks.render (frames);
        EXPECT_NEAR (heardStart, start, 2.0);
        // As linear counts every frame that was heard, it tells the straight way.
        const auto straight = pressed + deck.linearPosition - deck.readLead() - linear;
        EXPECT_NEAR (deck.heardPosition(), c.place (straight), millisecond);
    }
}

TEST (Loop, KeepsTheEdgesOfItsCommands)
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

TEST (Loop, TheStartPointHoldsInReverse)
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

TEST (Loop, TheReadingPassesEachBeatOnce)
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

TEST (Loop, TenThousandRandomCommandsLeaveADeckInOrder)
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
