#include "DeckFixture.h"
#include "shared/Signals.h"
#include "support/FadeCurve.h"

#include <gtest/gtest.h>

#include <numbers>

namespace
{
constexpr double rate = DeckFixture::rate;

std::function<double (int)> sineTrack (double frequency, double trackRate = rate)
{
    return [=] (int i) { return 0.5 * std::sin (2.0 * std::numbers::pi * frequency * i / trackRate); };
}

/** Lets a deck start and settle to its speed. */
void startPlaying (DeckFixture& decks, int frames = 8192)
{
    decks.transport.playPause (0);
    decks.render (frames);
}
}

TEST (DeckReader, PitchedSineHasItsFrequencyAndNothingElse)
{
    struct Case
    {
        const char* name;
        double pitch, trackRate, frequency, worstResidualDb;
    };
    const Case cases[] {
        { "unity", 0.5, 44100.0, 1000.0, -80.0 },
        { "3 % up", 0.5 + 0.03 / 0.16, 44100.0, 1000.0, -80.0 },
        { "a 48 kHz file", 0.5, 48000.0, 1000.0, -80.0 },
        { "8 kHz, 3 % up", 0.5 + 0.03 / 0.16, 44100.0, 8000.0, -80.0 },
        { "16 kHz, 8 % up", 1.0, 44100.0, 16000.0, -80.0 },
        { "16 kHz, 8 % down", 0.0, 44100.0, 16000.0, -80.0 },
        { "16 kHz of a 96 kHz file, 5 % up", 0.5 + 0.05 / 0.16, 96000.0, 16000.0, -80.0 },
    };
    for (const auto& c : cases)
    {
        DeckFixture decks;
        decks.putTrack (600'000, sineTrack (c.frequency, c.trackRate), 0, c.trackRate);
        decks.deck().tempo.pitch = c.pitch;
        startPlaying (decks);
        const auto heard = decks.render (88'200).left;

        const auto expected = c.frequency * (1.0 + (c.pitch - 0.5) * 0.16);
        const auto fit = Signals::fitSine (heard, rate, expected);
        EXPECT_NEAR (fit.frequency, expected, 0.01) << c.name;
        EXPECT_LT (20.0 * std::log10 (fit.residualRms / (fit.amplitude / std::numbers::sqrt2)),
                   c.worstResidualDb)
            << c.name;
    }
}

TEST (DeckReader, AtUnityTheSamplesComeOutAsTheyAre)
{
    DeckFixture decks;
    const auto noise = Signals::noise (50'000, 3);
    decks.putTrack (50'000, [&] (int i) { return noise[static_cast<size_t> (i)]; });
    auto& deck = decks.deck();
    deck.play.on = 1;
    deck.place (1000.0);
    deck.head.rate = 1.0; // already at speed: the position falls on whole frames
    const auto out = decks.render (4096);

    // Slow speeds are dulled by g / sqrt (1 + g * g) with g ten times the speed, which is 0.995 at unity.
    const auto dulling = 10.0 / std::sqrt (101.0);
    for (size_t i = 0; i < 4096; ++i)
    {
        const auto sample = deck.audioMemory.left()[1000 + i] / 32768.0;
        ASSERT_NEAR (out.left[i], sample * dulling, 1e-6) << i;
        ASSERT_NEAR (out.right[i], -sample * dulling, 1e-6) << i;
    }
}

TEST (DeckReader, AFastReadingFoldsNothingBack)
{
    // 30 kHz of a 96 kHz file would be heard as 14.1 kHz.
    DeckFixture decks;
    decks.putTrack (600'000, sineTrack (30'000.0, 96'000.0), 0, 96'000.0);
    startPlaying (decks);
    for (const auto sample : decks.render (44'100).left)
        ASSERT_LT (std::abs (sample), 0.5 * 1.0e-4);
}

TEST (DeckReader, AStartedDeckComesToWholeFramesAndSoToTheFilesOwnSamples)
{
    DeckFixture decks;
    const auto noise = Signals::noise (50'000, 3);
    decks.putTrack (50'000, [&] (int i) { return noise[static_cast<size_t> (i)]; });
    decks.settings.bypassStretcher = 1;
    startPlaying (decks);
    const auto from = decks.deck().head.position;
    const auto out = decks.render (4096).left;
    EXPECT_EQ (from, std::round (from));
    for (size_t i = 0; i < out.size(); ++i)
        ASSERT_NEAR (out[i],
                     decks.deck().audioMemory.left()[static_cast<size_t> (from) + i] / 32768.0 * 10.0
                         / std::sqrt (101.0),
                     1e-7);
}

TEST (DeckReader, ReverseOfForwardIsTheOriginalTurnedRound)
{
    DeckFixture decks;
    const auto noise = Signals::noise (50'000, 4);
    decks.putTrack (50'000, [&] (int i) { return noise[static_cast<size_t> (i)]; });
    auto& deck = decks.deck();

    deck.play.on = 1;
    deck.place (10'000.0);
    deck.head.rate = 1.0;
    auto forward = decks.render (8192).left;

    deck.play.reverse = 1;
    deck.head.rate = -1.0;
    deck.place (10'000.0 + 8191.0);
    const auto backward = decks.render (8192).left;

    // The dulling follows the sign of the speed, so reverse play has the other polarity.
    std::reverse (forward.begin(), forward.end());
    for (size_t i = 0; i < forward.size(); ++i)
        ASSERT_NEAR (backward[i], -forward[i], 1e-6) << i;
}

TEST (DeckReader, ReverseAtZeroStaysSilentAndPlaying)
{
    DeckFixture decks;
    decks.putTrack (50'000, sineTrack (440.0));
    auto& deck = decks.deck();
    deck.play.on = 1;
    deck.play.reverse = 1;
    deck.place (2000.0);
    decks.render (20'000);
    EXPECT_EQ (deck.head.position, 0.0);
    EXPECT_EQ (deck.play.on, 1);
    EXPECT_EQ (Signals::peak (decks.render (1024).left), 0.0);
}

TEST (DeckReader, StopsItselfAtTheEndAndAnotherDeckLeads)
{
    DeckFixture decks;
    decks.putTrack (30'000, sineTrack (440.0));
    decks.putTrack (400'000, sineTrack (440.0), 1);
    decks.transport.playPause (1);
    decks.transport.playPause (0);
    decks.settings.masterDeck = 0;
    for (int block = 0; block < 60; ++block)
        for (int d = 0; d < 2; ++d)
            decks.render (1000, d);
    EXPECT_EQ (decks.deck().play.on, 0);
    EXPECT_EQ (decks.deck().head.position, 30'000.0);
    EXPECT_EQ (decks.settings.masterDeck, 1);

    decks.transport.playPause (0); // from the end it starts anew
    EXPECT_EQ (decks.deck().head.position, 0.0);
}

TEST (DeckReader, AnEmptyDeckTakesPlayAndStopsInTheSameBlock)
{
    DeckFixture decks;
    decks.transport.playPause (0);
    EXPECT_EQ (decks.deck().play.on, 1);
    const auto out = decks.render (128);
    EXPECT_EQ (decks.deck().play.on, 0);
    EXPECT_EQ (Signals::peak (out.left), 0.0);
}

TEST (DeckReader, StopsAndJumpsMakeNoStepLargerThanTheMusics)
{
    struct Case
    {
        const char* name;
        std::function<void (DeckFixture&)> act;
    };
    const Case cases[] {
        { "seek", [] (DeckFixture& d) { d.transport.seekFrames (0, 150'137.3); } },
        { "seek back", [] (DeckFixture& d) { d.transport.seekNormalised (0, 0.01); } },
        { "rewind", [] (DeckFixture& d) { d.transport.rewind (0); } },
        { "hot cue", [] (DeckFixture& d) { d.transport.jumpToCue (0, 2); } },
        { "stop", [] (DeckFixture& d) { d.transport.playPause (0); } },
        { "scratch on", [] (DeckFixture& d) { d.transport.setScratch (0, true, false); } },
        { "reverse", [] (DeckFixture& d) { d.deck().play.reverse = 1; } },
    };
    for (const auto& c : cases)
    {
        DeckFixture decks;
        decks.putTrack (300'000, sineTrack (200.0));
        decks.deck().marks.cues[2] = 120'055.7;
        startPlaying (decks);
        auto heard = decks.render (4096).left;
        const auto before = Signals::largestStep (heard);
        c.act (decks);
        const auto after = decks.render (4096).left;
        heard.insert (heard.end(), after.begin(), after.end());

        // The fade falls by 1.6 % a sample, so a jump adds at most that share of full swing to the slope.
        EXPECT_LT (Signals::largestStep (heard), before + 2.0 * 0.5 * 0.016 + 0.002) << c.name;
        EXPECT_LE (Signals::peak (heard), 0.51) << c.name;
    }
}

TEST (DeckReader, ADeclickHasTheEnergyOfItsFade)
{
    // Old audio constant, new audio silent: what is left is the fade alone, 0.984 a sample.
    DeckFixture decks;
    decks.putTrack (100'000, [] (int i) { return i < 50'000 ? 0.5 : 0.0; });
    auto& deck = decks.deck();
    deck.play.on = 1;
    deck.place (20'000.0);
    deck.head.rate = 1.0;
    deck.jumpTo (80'000.0);
    const auto tail = decks.render (2048).left;

    double energy = 0.0;
    for (const double sample : tail)
        energy += sample * sample;
    const auto level = 0.5 * 10.0 / std::sqrt (101.0);
    double expected = 0.0;
    for (int i = 0; i < 132; ++i) // 3 ms
        expected += std::pow (level * FadeCurve::at (i / 132.0), 2.0);
    EXPECT_NEAR (energy, expected, 0.02 * expected);
    EXPECT_LT (std::abs (tail[133]), 1.0e-12f);
    EXPECT_EQ (deck.head.declickLeft, 0);
}

TEST (DeckReader, PositionZeroIsSilentForItsFirstFrame)
{
    DeckFixture decks;
    decks.putTrack (1000, [] (int) { return 0.9; });
    decks.deck().play.on = 1;
    decks.deck().head.rate = 1.0;
    const auto out = decks.render (16).left;
    EXPECT_LT (std::abs (out[0]), 1e-9f);
    EXPECT_GT (out[1], 0.8f);
}

TEST (DeckReader, NudgeAndBendDoWhatTheySay)
{
    DeckFixture decks;
    decks.putTrack (800'000, sineTrack (1000.0));
    startPlaying (decks);
    const auto speedOver = [&] (int frames)
    {
        const double from = decks.deck().head.position;
        decks.render (frames);
        return (decks.deck().head.position - from) / frames;
    };
    decks.transport.setNudge (0, 1);
    decks.render (4096);
    EXPECT_NEAR (speedOver (44'100), 1.04, 1e-6);
    decks.transport.setNudge (0, -1);
    decks.render (4096);
    EXPECT_NEAR (speedOver (44'100), 0.96, 1e-6);
    decks.transport.setNudge (0, 0);
    decks.render (4096);
    EXPECT_NEAR (speedOver (44'100), 1.0, 1e-6);

    // A bend of the jog speeds the deck up and dies away with its 0.1 s, but for the cut at 0.001.
    decks.transport.bendJog (0, 10.0, -0.01, 0.1);
    const double from = decks.deck().head.position;
    decks.render (88'200);
    EXPECT_NEAR (decks.deck().head.position - from - 88'200.0, 0.1 * 4410.0, 12.0);
    EXPECT_EQ (decks.deck().head.bend, 0.0);
}

TEST (DeckReader, ScratchFollowsTheJogAlone)
{
    DeckFixture decks;
    decks.putTrack (400'000, sineTrack (500.0));
    startPlaying (decks);
    decks.deck().place (200'000.0);
    decks.transport.setScratch (0, true, false);
    decks.render (44'100);
    const double held = decks.deck().head.position;
    decks.render (4410);
    EXPECT_EQ (decks.deck().head.position, held);

    decks.transport.bendJog (0, 20.0, -0.01, 0.1);
    decks.render (2205);
    const double forward = decks.deck().head.position;
    EXPECT_GT (forward, held + 1000.0);
    decks.transport.bendJog (0, -60.0, -0.01, 0.1);
    decks.render (4410);
    EXPECT_LT (decks.deck().head.position, forward - 1000.0);

    decks.transport.setScratch (0, false, false);
    EXPECT_EQ (decks.deck().jog.scratchEnded, 1);
    decks.render (88'200);
    EXPECT_EQ (decks.deck().jog.scratchEnded, 0);
    EXPECT_NEAR (decks.deck().head.rate, 1.0, 1e-6);
}

TEST (DeckReader, AScratchWhoseMessagesStopEndsByItself)
{
    DeckFixture decks;
    decks.putTrack (400'000, sineTrack (500.0));
    startPlaying (decks);
    auto& deck = decks.deck();
    decks.transport.spinJog (0, 0.5);
    decks.now += 25;
    decks.render (128);
    EXPECT_EQ (deck.jog.scratchOn, 1);
    EXPECT_EQ (deck.jog.touched, 0);
    decks.now += 1;
    decks.render (128);
    EXPECT_EQ (deck.jog.scratchOn, 0);
    EXPECT_EQ (deck.jog.scratchEnded, 1);
    decks.render (128); // the jog is at rest: the next block takes the end up
    EXPECT_EQ (deck.jog.scratchEnded, 0);

    decks.transport.spinJog (0, 0.5);
    decks.transport.setScratch (0, true, true); // a hand is there
    decks.now += 2000;
    decks.render (128);
    EXPECT_EQ (deck.jog.scratchOn, 1);
    EXPECT_EQ (deck.jog.touched, 1);
    decks.now += 1;
    decks.render (128);
    EXPECT_EQ (deck.jog.touched, 0);
}

TEST (DeckReader, StartsAndStopsAtAnyRateOfFileAndEngine)
{
    for (const double engineRate : { 8000.0, 44'100.0, 96'000.0, 192'000.0 })
        for (const double trackRate : { 8000.0, 44'100.0, 192'000.0 })
        {
            DeckFixture decks;
            decks.world.engineRate = engineRate;
            decks.world.smoothing5ms = std::exp (-1.0 / (0.005 * engineRate));
            decks.putTrack (static_cast<int> (trackRate), sineTrack (440.0, trackRate), 0, trackRate);
            decks.transport.playPause (0);
            decks.render (static_cast<int> (engineRate / 2.0));
            EXPECT_NEAR (decks.deck().head.position, trackRate * 0.495, trackRate * 0.001)
                << engineRate << ' ' << trackRate;
            decks.transport.playPause (0);
            decks.render (static_cast<int> (engineRate / 5.0));
            EXPECT_EQ (decks.deck().head.rate, 0.0) << engineRate << ' ' << trackRate;
        }
}

TEST (DeckReader, AnyBlockSizeGivesTheSameSound)
{
    std::vector<float> reference;
    for (const int block : { 64, 1, 128, 1000, 5000, 20'000 })
    {
        DeckFixture decks;
        decks.putTrack (100'000, sineTrack (700.0));
        decks.deck().tempo.pitch = 0.8;
        decks.transport.playPause (0);
        const auto heard = decks.render (40'000, 0, block).left;
        if (reference.empty())
            reference = heard;
        EXPECT_EQ (heard, reference) << block;
    }
}
