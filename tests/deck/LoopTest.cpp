#include "LoopDeck.h"

#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <random>

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
                deck.marks.bpm = bpm;
                deck.loopSizes.loop = size;
                deck.play.on = 1;
                deck.head.rate = reverse ? -1.0 : 1.0;
                decks.transport.setReverse (0, reverse);
                deck.place (start);
                deck.loops.mode = noLoop;
                decks.loops.toggleLoop (0);
                deck.place (before);
                deck.head.declickLeft = 0;

                std::vector<float> heard;
                int turns = 0;
                for (int frame = 0; frame < 3000; ++frame)
                {
                    auto expected = deck.head.position;
                    heard.push_back (decks.render (1, 0, 1).left[0]);
                    expected += deck.head.rate;
                    if (reverse ? expected <= start : expected >= end)
                    {
                        expected += reverse ? length : -length;
                        ++turns;
                    }
                    ASSERT_NEAR (deck.head.position, expected, 1.0e-6) << frame;
                }
                EXPECT_EQ (turns, 1 + static_cast<int> ((3000 - 300.5) / length));
                // The fade over a turn adds 1.6 % of what differs, a frame.
                const auto steepest = amplitude * frequency * 2.0 * M_PI / DeckFixture::rate;
                EXPECT_LT (Signals::largestStep (heard), steepest + 0.017 * 2.0 * amplitude);

                // Blocks of any length give the same places.
                const auto after = deck.head.position;
                deck.place (before);
                decks.render (3000, 0, 512);
                EXPECT_NEAR (deck.head.position, after, 1.0e-6);
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
        decks.deck().tempo.keyLock = static_cast<int8_t> (keyLock);
        decks.deck().loopSizes.loop = static_cast<int8_t> (size);
        decks.playFrom (start - 30'000.0);
        decks.playTo (start);
        decks.loops.toggleLoop (0);
        const double loopStart = decks.deck().loops.start;
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

TEST (Loop, ABeatLoopWhoseEndLiesBehindTheTrackTurnsAtTheTracksEnd)
{
    for (const bool keyLock : { false, true })
    {
        LoopDeck decks;
        decks.deck().tempo.keyLock = keyLock ? 1 : 0;
        decks.playFrom (trackFrames - 30'000.0); // a loop of four beats would be 88200 frames long
        decks.loops.toggleLoop (0);
        const double start = decks.deck().loops.start;
        for (int block = 0; block < 4000; ++block)
        {
            decks.render (64, 0, 64);
            ASSERT_EQ (decks.deck().play.on, 1) << block;
            ASSERT_GE (decks.deck().heardPosition(), start - 1.0) << block;
        }
    }
}

TEST (Loop, IsSwitchedSizedAndMovedFromWhatIsHeard)
{
    // A tone that comes round with 1/32 of a beat: no turn, jump or retaken reading may be heard in it, to the sample.
    using Command = void (*) (LoopDeck&, int anything);
    constexpr Command commands[] {
        [] (LoopDeck& d, int any) { d.loops.moveLoop (0, any % 2 == 0 ? 1 : -1); },
        [] (LoopDeck& d, int) { d.loops.toggleLeap (0); },
        [] (LoopDeck& d, int) { d.loops.toggleLoop (0); },
        [] (LoopDeck& d, int) { d.loops.changeSize (0, -1); },
        [] (LoopDeck& d, int) { d.loops.changeSize (0, 1); },
        [] (LoopDeck& d, int any) { d.deck().loopSizes.move = static_cast<int8_t> (any % 9); },
        [] (LoopDeck& d, int) { d.grids.halveTempo (0); },
        [] (LoopDeck& d, int) { d.grids.doubleTempo (0); },
    };
    constexpr double frequency = 640.0, amplitude = 0.5;
    LoopDeck decks (sine (frequency, amplitude));
    auto& deck = decks.deck();
    deck.track.sampleRate = 44'100.0001; // just beside the engine's, so that nothing leads it to whole frames
    decks.playFrom (1'000'000.0);
    deck.loopSizes.loop = 0;

    std::mt19937 random (5);
    std::vector<float> heard;
    for (int i = 0; i < 1500; ++i)
    {
        if (deck.heardPosition() > 2'300'000.0 || deck.heardPosition() < 500'000.0)
        {
            deck.loops.mode = noLoop;
            deck.loops.rolling = 0;
            while (deck.heardPosition() > 2'300'000.0 || deck.heardPosition() < 500'000.0)
                decks.loops.moveLoop (0, deck.heardPosition() < 500'000.0 ? 1 : -1);
        }
        const auto before = deck.heardPosition();
        const auto linear = deck.head.linear - deck.readLead();
        const auto which = random() % std::size (commands);
        const auto mayMove = which == 0 || (which == 1 && deck.loops.rolling != 0);
        commands[which](decks, static_cast<int> (random() % 1024));
        if (!mayMove)
        {
            ASSERT_NEAR (deck.heardPosition(), before, 1.0e-6) << i;
        }
        ASSERT_NEAR (deck.head.linear - deck.readLead(), linear, 1.0e-6) << i;
        const auto out = decks.render (static_cast<int> (64 + random() % 4000), 0, 64).left;
        heard.insert (heard.end(), out.begin(), out.end());
        if (deck.loops.mode == beatLoop)
        {
            const auto end = deck.loops.start + deck.beatLoopFrames();
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
              d.deck().loops.mode = noLoop;
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
              d.deck().loops.in = start + 4000.0;
              d.loops.loopOut (0);
          },
          [] (double straight) { return start + 4000.0 + std::fmod (straight - start - 9000.0, 5000.0); } },
        { "to the loop's start", 5, start + 9000.0, 0.2,
          [] (LoopDeck& d)
          {
              auto& deck = d.deck();
              deck.loops.mode = manualLoop;
              deck.loops.in = start;
              deck.loops.out = start + beat;
              deck.loops.inSet = deck.loops.outSet = 1;
              d.loops.reloop (0);
          },
          [] (double straight) { return straight - 9000.0; } },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.name);
        LoopDeck decks;
        auto& deck = decks.deck();
        deck.loopSizes.loop = static_cast<int8_t> (c.size);
        decks.setTempo (1.04);
        decks.playFrom (start - 10'000.0);
        decks.playTo (start);
        const double heardStart = deck.heardPosition();
        decks.loops.toggleLoop (0);
        deck.loops.start = start;
        decks.playTo (std::min (c.pressedAt, start + deck.beatLoopFrames() - 30.0));
        const auto pressed = deck.heardPosition();
        const auto linear = deck.head.linear - deck.readLead();
        c.press (decks);
        const auto frames = static_cast<int> (c.seconds * DeckFixture::rate);
        decks.render (frames);
        EXPECT_NEAR (heardStart, start, 2.0);
        // As linear counts every frame that was heard, it tells the straight way.
        const auto straight = pressed + deck.head.linear - deck.readLead() - linear;
        EXPECT_NEAR (deck.heardPosition(), c.place (straight), millisecond);
    }
}
