#include "DeckFixture.h"

#include "shared/Signals.h"

#include <gtest/gtest.h>

namespace
{
constexpr double millisecond = 44.1;

struct StretchedDecks : DeckFixture
{
    StretchedDecks()
    {
        world.pitchRange = 1.0;
        for (auto& each : world.decks)
            each->makeStretcher (rate);
    }

    void setTempo (double tempo, int index = 0) { deck (index).tempo.pitch = tempo - 0.5; }
};

/** Bursts of 3 kHz, `spacing` frames apart from `spacing` on. */
auto clicks (int spacing)
{
    return [spacing] (int frame)
    {
        const auto since = frame % spacing;
        return frame < spacing || since > 400 ? 0.0
                                              : 0.8 * std::exp (-since / 80.0) * std::cos (since * 0.4274);
    };
}

auto sineTrack (double frequency)
{
    return [frequency] (int frame)
    { return 0.5 * std::sin (frame * frequency * 2.0 * M_PI / DeckFixture::rate); };
}

/** The sound of a deck block by block, and the place that it says is heard at the begin of each. */
struct Take
{
    std::vector<float> left;
    std::vector<double> heard;
    static constexpr int block = 128;

    void add (DeckFixture& decks, int index)
    {
        heard.push_back (decks.deck (index).heardPosition());
        const auto out = decks.render (block, index);
        left.insert (left.end(), out.left.begin(), out.left.end());
    }

    double heardAt (double frame) const
    {
        const auto index = std::min (static_cast<size_t> (frame / block), heard.size() - 2);
        const auto share = frame / block - static_cast<double> (index);
        return heard[index] + share * (heard[index + 1] - heard[index]);
    }

    /** Frames at which something sets on after silence. */
    std::vector<int> onsets() const
    {
        std::vector<int> found;
        for (int i = 0, last = -10'000; i < static_cast<int> (left.size()); ++i)
            if (std::abs (left[static_cast<size_t> (i)]) > 0.2f)
            {
                if (i - last > 4000)
                    found.push_back (i);
                last = i;
            }
        return found;
    }
};
}

TEST (DeckVoice, ADeckTellsThePlaceThatIsHeard)
{
    struct Case
    {
        double tempo, key;
        int keyLock;
        double trackRate;
    };
    for (const auto& c : { Case { 1.0, 0.0, 1, 44'100.0 },
                           { 1.06, 0.0, 1, 44'100.0 },
                           { 0.94, 0.0, 0, 44'100.0 },
                           { 1.04, 3.0, 1, 48'000.0 },
                           { 0.8, -2.0, 1, 44'100.0 },
                           { 1.4, 0.0, 1, 44'100.0 } })
    {
        SCOPED_TRACE (testing::Message() << c.tempo << " " << c.key << " " << c.keyLock);
        StretchedDecks decks;
        decks.putTrack (900'000, clicks (20'000), 0, c.trackRate);
        decks.setTempo (c.tempo);
        decks.deck().tempo.keyLock = static_cast<int8_t> (c.keyLock);
        decks.deck().tempo.keyTuning = c.key;
        decks.transport.playPause (0);
        Take take;
        for (int block = 0; block < 3000; ++block)
            take.add (decks, 0);

        const auto onsets = take.onsets();
        ASSERT_GT (onsets.size(), 10u);
        for (const auto onset : onsets)
        {
            const auto heard = take.heardAt (onset);
            EXPECT_NEAR (heard, 20'000.0 * std::round (heard / 20'000.0), millisecond);
        }
        const auto lead = decks.deck().head.position - decks.deck().heardPosition();
        EXPECT_TRUE (c.keyLock == 0 ? lead == 0.0 : lead > 3000.0) << lead;
    }
}

TEST (DeckVoice, DecksThatReadInPhaseAreHeardInPhase)
{
    // The second deck's beats lie 1.1 times as far apart, and it runs 1.1 times as fast.
    StretchedDecks decks;
    decks.putTrack (2'000'000, clicks (20'000), 0);
    decks.putTrack (2'200'000, clicks (22'000), 1);
    decks.deck (1).tempo.keyTuning = 4.0;
    std::array<Take, 2> takes;
    for (int deck = 0; deck < 2; ++deck)
        decks.transport.playPause (deck);
    for (int block = 0; block < 9000; ++block)
    {
        const auto tempo = 0.97 + 0.04 * std::sin (block * 0.002) + (block / 1500 % 2) * 0.01;
        decks.setTempo (tempo, 0);
        decks.setTempo (1.1 * tempo, 1);
        if (block % 700 == 0)
            decks.transport.setKeyLock (block / 700 % 2, block % 1400 == 0);
        for (int deck = 0; deck < 2; ++deck)
            takes[static_cast<size_t> (deck)].add (decks, deck);
    }
    const auto first = takes[0].onsets(), second = takes[1].onsets();
    ASSERT_EQ (first.size(), second.size());
    ASSERT_GT (first.size(), 40u);
    // The slow start of a deck is the same in time, and so not in beats.
    const auto start = second[0] - first[0];
    EXPECT_NEAR (start, 0.0, millisecond);
    for (size_t i = 0; i < first.size(); ++i)
        EXPECT_NEAR (second[i] - first[i], start, millisecond) << i;
}

TEST (DeckVoice, TwentyMinutesAtPlusFourPercentEndWhereArithmeticSays)
{
    StretchedDecks decks;
    constexpr double trackRate = 22'050.0, tempo = 1.04;
    decks.putTrack (
        27'800'000, [] (int) { return 0.0; }, 0, trackRate);
    decks.setTempo (tempo);
    decks.transport.playPause (0);
    constexpr int frames = 20 * 60 * 44'100;
    for (int done = 0; done < frames; done += 44'100)
        decks.render (44'100, 0, 4410);

    // The speed rises by the 5 ms coefficient in what is read.
    const auto lost = decks.world.smoothing5ms / (1.0 - decks.world.smoothing5ms);
    EXPECT_NEAR (decks.deck().heardPosition(), (frames * tempo - lost) * trackRate / 44'100.0, 1.0);
}

TEST (DeckVoice, AJumpOfAPlayingDeckIsHeardAtOnce)
{
    StretchedDecks decks;
    decks.putTrack (900'000, clicks (20'000));
    decks.setTempo (1.05);
    decks.deck().marks.cues[0] = 399'800.0; // the fade of the jump is over before the onset
    decks.transport.playPause (0);
    decks.render (40'000);
    EXPECT_NEAR (decks.deck().heardPosition(), 40'000.0 * 1.05 - 220.0, 3.0 * millisecond); // beside an onset

    decks.transport.jumpToCue (0, 0);
    EXPECT_EQ (decks.deck().heardPosition(), 399'800.0);
    Take take;
    for (int block = 0; block < 100; ++block)
        take.add (decks, 0);
    ASSERT_FALSE (take.onsets().empty());
    EXPECT_NEAR (take.onsets().front(), 200.0 / 1.05, millisecond);
}

TEST (DeckVoice, AHandIsHeardAtOnce)
{
    using Turn = void (*) (StretchedDecks&);
    struct Case
    {
        const char* name;
        Turn turn;
        double unlockedMs, lockedMs; ///< until it is heard; infinite where it has no effect
    };
    constexpr auto never = 1.0e9;
    const Case cases[] {
        { "pitch by 1 %", [] (StretchedDecks& d) { d.setTempo (1.01); }, 8.0, 15.0 },
        { "pitch by 8 %", [] (StretchedDecks& d) { d.setTempo (1.08); }, 8.0, 15.0 },
        { "pitch by 45 %", [] (StretchedDecks& d) { d.setTempo (0.55); }, 8.0, 25.0 },
        { "nudge", [] (StretchedDecks& d) { d.transport.setNudge (0, -1); }, 8.0, 15.0 },
        { "bend", [] (StretchedDecks& d) { d.transport.bendJog (0, 1.0, 0.05, 1.0); }, 8.0, 15.0 },
        { "reverse", [] (StretchedDecks& d) { d.transport.setReverse (0, true); }, 8.0, 10.0 },
        { "key", [] (StretchedDecks& d) { d.transport.setKeyTuning (0, 2.0); }, never, 25.0 },
    };
    const auto noise = Signals::noise (300'000, 7, 0.5);
    const auto listen = [&] (bool locked, const Turn* turn)
    {
        StretchedDecks decks;
        decks.putTrack (300'000, [&] (int frame) { return noise[static_cast<size_t> (frame)]; });
        decks.transport.setKeyLock (0, locked);
        decks.transport.playPause (0);
        decks.render (64'000);
        if (turn != nullptr)
            (*turn) (decks);
        return decks.render (12'800).left;
    };
    for (const bool locked : { false, true })
    {
        const auto plain = listen (locked, nullptr);
        const auto audible = Signals::rms (plain) * 0.01;
        for (const auto& c : cases)
        {
            const auto turned = listen (locked, &c.turn);
            size_t at = 0;
            while (at < turned.size() && std::abs (turned[at] - plain[at]) < audible)
                ++at;
            const auto aim = locked ? c.lockedMs : c.unlockedMs;
            if (aim == never)
                EXPECT_EQ (at, turned.size()) << c.name;
            else
                EXPECT_LT (static_cast<double> (at), aim * millisecond)
                    << c.name << (locked ? " locked" : "");
        }
    }
}

TEST (DeckVoice, TheKeyHoldsThroughAStepOfTheTempo)
{
    for (const double tone : { 200.0, 1000.0 })
    {
        StretchedDecks decks;
        decks.putTrack (400'000, sineTrack (tone));
        decks.transport.playPause (0);
        for (const auto tempo : { 1.08, 0.95, 1.0 })
        {
            decks.render (30'016);
            decks.setTempo (tempo);
            decks.render (1152); // 26 ms
            const auto fit = Signals::fitSine (decks.render (2560).left, DeckFixture::rate, tone);
            EXPECT_NEAR (1200.0 * std::log2 (fit.frequency / tone), 0.0, 3.0) << tone << ' ' << tempo;
            EXPECT_LT (fit.residualRms, 0.01) << tone << ' ' << tempo;
        }
    }
}

TEST (DeckVoice, AtUnityTheStretcherChangesNothing)
{
    std::array<std::vector<float>, 2> heard;
    for (const int bypass : { 0, 1 })
    {
        StretchedDecks decks;
        decks.settings.bypassStretcher = static_cast<int8_t> (bypass);
        decks.putTrack (400'000, sineTrack (440.0));
        decks.transport.playPause (0);
        heard[static_cast<size_t> (bypass)] = decks.render (100'000).left;
    }
    for (size_t i = 0; i < heard[0].size(); ++i)
        ASSERT_NEAR (heard[0][i], heard[1][i], 1.0e-4) << i;
}

TEST (DeckVoice, NothingThatIsTurnedWhilePlayingMakesAStep)
{
    using Turn = void (*) (StretchedDecks&);
    constexpr std::pair<const char*, Turn> turns[] {
        { "tempo up", [] (StretchedDecks& d) { d.setTempo (1.08); } },
        { "key lock off", [] (StretchedDecks& d) { d.transport.setKeyLock (0, false); } },
        { "tempo down", [] (StretchedDecks& d) { d.setTempo (0.95); } },
        { "key lock on", [] (StretchedDecks& d) { d.transport.setKeyLock (0, true); } },
        { "key up", [] (StretchedDecks& d) { d.transport.setKeyTuning (0, 3.0); } },
        { "key back", [] (StretchedDecks& d) { d.transport.setKeyTuning (0, 0.0); } },
        { "unity", [] (StretchedDecks& d) { d.setTempo (1.0); } },
        { "bypass", [] (StretchedDecks& d) { d.settings.bypassStretcher = 1; } },
        { "no bypass", [] (StretchedDecks& d) { d.settings.bypassStretcher = 0; } },
        { "hot cue", [] (StretchedDecks& d) { d.transport.jumpToCue (0, 1); } },
        { "scratch", [] (StretchedDecks& d) { d.transport.setScratch (0, true, false); } },
        { "scratch ends",
          [] (StretchedDecks& d)
          {
              d.deck().jog.scratchOn = 0;
              d.deck().jog.scratchArmed = 0;
              d.deck().jog.scratchEnded = 1;
          } },
        { "stop", [] (StretchedDecks& d) { d.transport.playPause (0); } },
        { "play", [] (StretchedDecks& d) { d.transport.playPause (0); } },
        { "cue", [] (StretchedDecks& d) { d.transport.cue (0, true); } },
    };
    StretchedDecks decks;
    decks.putTrack (2'000'000, sineTrack (200.0));
    decks.deck().marks.cues[1] = 600'000.0;
    decks.transport.playPause (0);
    decks.render (20'000);
    const auto steepest = 0.5 * 2.0 * M_PI * 200.0 / DeckFixture::rate;
    for (const auto& [name, turn] : turns)
    {
        auto heard = decks.render (1280).left;
        const double before = decks.deck().heardPosition();
        turn (decks);
        const auto jumps = std::string_view (name) == "hot cue" || std::string_view (name) == "cue";
        if (!jumps)
        {
            EXPECT_NEAR (decks.deck().heardPosition(), before, millisecond) << name;
        }
        const auto after = decks.render (25'600).left;
        heard.insert (heard.end(), after.begin(), after.end());
        // A fade over a jump adds its own slope: 1.6 % of what differs, a frame.
        EXPECT_LT (Signals::largestStep (heard), 1.5 * steepest + (jumps ? 0.016 : 0.004)) << name;
    }
}

TEST (DeckVoice, AStoppedOrScratchedDeckIsWhereItIsHeard)
{
    StretchedDecks decks;
    decks.putTrack (900'000, sineTrack (300.0));
    auto& deck = decks.deck();
    decks.transport.playPause (0);
    decks.render (30'000);
    const double heard = deck.heardPosition();
    EXPECT_GT (deck.head.position - heard, 3000.0);
    decks.transport.playPause (0);
    decks.render (1280);
    // It still turns for the 5 ms that the platter takes.
    EXPECT_NEAR (deck.head.position, heard + 220.0, 2.0 * millisecond);
    decks.render (4096);
    EXPECT_EQ (deck.head.position, deck.heardPosition());
    EXPECT_EQ (Signals::peak (decks.render (256).left), 0.0);

    decks.transport.playPause (0);
    decks.render (30'000);
    decks.transport.setScratch (0, true, false);
    decks.render (128);
    EXPECT_EQ (deck.head.position, deck.heardPosition());
}

TEST (DeckVoice, ATrackIsHeardToItsEnd)
{
    StretchedDecks decks;
    decks.putTrack (100'000, sineTrack (300.0));
    decks.setTempo (0.9);
    decks.transport.playPause (0);
    const auto heard = decks.render (130'000).left;
    EXPECT_EQ (decks.deck().play.on, 0);
    const auto end = static_cast<size_t> (100'000 / 0.9);
    EXPECT_GT (Signals::rms (std::span (heard).subspan (end - 2000, 1500)), 0.3);
    EXPECT_LT (Signals::rms (std::span (heard).subspan (end + 2000, 1500)), 1.0e-4);
}

TEST (DeckVoice, TheStretcherHoldsTheTempoThatBypassedIsPitch)
{
    for (const auto& [tempo, bypass, speed] :
         { std::tuple { 2.4, 0, 1.5 }, { 0.2, 0, 0.5 }, { 2.4, 1, 2.4 }, { 0.2, 1, 0.2 } })
    {
        StretchedDecks decks;
        decks.settings.bypassStretcher = static_cast<int8_t> (bypass);
        decks.putTrack (400'000, sineTrack (300.0));
        decks.world.pitchRange = 4.0;
        decks.deck().tempo.pitch = 0.5 + (tempo - 1.0) / 4.0;
        decks.transport.playPause (0);
        decks.render (60'000);
        const auto before = decks.deck().heardPosition();
        decks.render (30'000);
        EXPECT_NEAR (decks.deck().heardPosition() - before, speed * 30'000.0, millisecond) << tempo;
    }
}

TEST (DeckVoice, ANewTrackDoesNotTakeUpThePlaceOfTheOldOne)
{
    StretchedDecks decks;
    auto& deck = decks.deck();
    decks.putTrack (400'000, sineTrack (300.0));
    decks.transport.playPause (0);
    decks.render (50'000);
    EXPECT_GT (deck.heardPosition(), 40'000.0);
    decks.putTrack (400'000, sineTrack (500.0));
    EXPECT_EQ (deck.heardPosition(), 0.0);
    decks.render (1280);
    EXPECT_EQ (deck.head.position, 0.0);
    EXPECT_EQ (Signals::peak (decks.render (256).left), 0.0);
}
