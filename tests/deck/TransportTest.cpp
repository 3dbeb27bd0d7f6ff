#include "DeckFixture.h"

#include "deck/sync/PhaseAlignment.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

namespace
{
constexpr double slow = 0.25;

/** Hears what decks say. */
struct Heard : EngineListener
{
    explicit Heard (ListenerList& l) : list (l) { list.add (*this); }
    ~Heard() override { list.remove (*this); }
    void engineEvent (EngineEvent event, int index) override { events.emplace_back (event, index); }
    void engineMessage (const juce::String& text, int) override { messages.add (text); }

    ListenerList& list;
    std::vector<std::pair<EngineEvent, int>> events;
    juce::StringArray messages;
};

/** A deck with a track of 10 s. */
struct LoadedDeck : DeckFixture
{
    LoadedDeck()
    {
        for (int d = 0; d < deckCount; ++d)
            putTrack (
                441'000, [] (int i) { return slow * ((i / 50) % 2 == 0 ? 1 : -1); }, d);
    }

    void playAt (double position, int index = 0)
    {
        deck (index).place (position);
        if (deck (index).play.on == 0)
            transport.playPause (index);
    }

    void giveGrid (int index, double bpm, int downbeat = 0)
    {
        deck (index).marks.bpm = bpm;
        deck (index).marks.fixedGrid = 1;
        deck (index).marks.downbeatPosition = downbeat;
    }
};
}

TEST (Transport, CueStoresReturnsAndPlaysWhileHeld)
{
    LoadedDeck decks;
    auto& deck = decks.deck();

    deck.place (50'000.0);
    decks.transport.cue (0, true);
    EXPECT_EQ (deck.marks.cues[0], 50'000.0);
    EXPECT_EQ (deck.play.on, 0);

    deck.place (50'587.0); // within reach: plays while held
    decks.transport.cue (0, true);
    EXPECT_EQ (deck.play.on, 1);
    EXPECT_EQ (deck.play.cueHold, 1);
    decks.render (4410);
    decks.transport.cue (0, false);
    EXPECT_EQ (deck.play.on, 0);
    EXPECT_EQ (deck.head.position, 50'000.0);
    EXPECT_EQ (deck.head.rate, 0.0);

    deck.place (50'588.0); // out of reach: stores anew
    decks.transport.cue (0, true);
    EXPECT_EQ (deck.marks.cues[0], 50'588.0);

    decks.playAt (90'000.0); // a press while playing returns and stops
    decks.transport.cue (0, true);
    EXPECT_EQ (deck.play.on, 0);
    EXPECT_EQ (deck.head.position, 50'588.0);

    decks.transport.cue (0, true); // held, then Play: it goes on
    decks.transport.playPause (0);
    EXPECT_EQ (deck.play.on, 1);
    EXPECT_EQ (deck.play.cueHold, 0);
    decks.transport.cue (0, false);
    EXPECT_EQ (deck.play.on, 1);
}

TEST (Transport, AnEmptySlotIsNoCueToStandAt)
{
    LoadedDeck decks;
    decks.deck().place (100.0); // -1 would be within reach
    EXPECT_FALSE (Transport::isStoppedAtCue (decks.deck()));
    decks.transport.cue (0, true);
    EXPECT_EQ (decks.deck().marks.cues[0], 100.0);
}

TEST (Transport, HotCuesSetThenJump)
{
    LoadedDeck decks;
    auto& deck = decks.deck();
    decks.playAt (70'000.0);
    decks.transport.jumpToCue (0, 3);
    EXPECT_EQ (deck.marks.cues[3], 70'000.0);
    EXPECT_EQ (deck.play.currentCue, 3);
    EXPECT_EQ (deck.head.declickLeft, 0);

    deck.place (200'000.0);
    deck.loops.mode = 1;
    decks.transport.jumpToCue (0, 3);
    EXPECT_EQ (deck.head.position, 70'000.0);
    EXPECT_EQ (deck.head.declickPosition, 200'000.0);
    EXPECT_EQ (deck.head.declickLeft, ReadHead::wholeFade);
    EXPECT_EQ (deck.loops.mode, 0);
    EXPECT_EQ (deck.sync.resync, 1);

    decks.transport.deleteCue (0, 3);
    EXPECT_LE (deck.marks.cues[3], emptyCue);
    for (const int slot : { -1, 16, 1000 })
    {
        decks.transport.jumpToCue (0, slot);
        decks.transport.deleteCue (0, slot);
        decks.transport.setCue (0, slot);
    }
    EXPECT_EQ (deck.head.position, 70'000.0);
}

TEST (Transport, ASyncedDeckKeepsItsPhaseOverAJump)
{
    LoadedDeck decks;
    auto& deck = decks.deck();
    decks.giveGrid (0, 120.0); // a beat of 22050 frames
    decks.settings.deckSetup[0].sync = 1;
    decks.settings.masterDeck = 1;
    deck.marks.cues[0] = 220'500.0 + 400.0; // a bit late
    deck.marks.cues[1] = 100.0;

    decks.playAt (44'100.0 + 1500.0);
    decks.transport.jumpToCue (0, 0);
    EXPECT_DOUBLE_EQ (deck.head.position, 220'500.0 + 1500.0);

    deck.place (44'100.0 - 900.0); // ahead of the beat: the first beat less 900 lies before the start
    decks.transport.jumpToCue (0, 1);
    EXPECT_DOUBLE_EQ (deck.head.position, 22'050.0 - 900.0);

    decks.transport.seekFrames (0, 300'000.0);
    EXPECT_DOUBLE_EQ (deck.head.position, 308'700.0 - 900.0);

    deck.marks.fixedGrid = 0; // no grid: a jump is not possible
    const double before = deck.head.position;
    decks.transport.seekFrames (0, 1000.0);
    decks.transport.jumpToCue (0, 0);
    EXPECT_EQ (deck.head.position, before);

    decks.settings.deckSetup[0].sync = 0;
    decks.transport.seekFrames (0, 1000.0);
    EXPECT_EQ (deck.head.position, 1000.0);
}

TEST (Transport, SeeksStayWithinTheTrackAndEmptyTheRingsOfAStoppedDeck)
{
    LoadedDeck decks;
    auto& deck = decks.deck();
    for (const auto& [value, expected] : { std::pair { -1.0, 0.0 }, { 0.5, 220'500.0 }, { 7.0, 441'000.0 } })
    {
        decks.transport.seekNormalised (0, value);
        EXPECT_EQ (deck.head.position, expected);
    }
    EXPECT_EQ (Signals::peak (decks.render (256).left), 0.0);
    decks.settings.deckSetup[0].timecodeAbsolute = 1;
    decks.transport.seekFrames (0, 10.0);
    EXPECT_EQ (decks.settings.deckSetup[0].timecodeAbsolute, 0);
    decks.transport.seekFrames (0, std::nan (""));
    decks.transport.seekNormalised (0, std::numeric_limits<double>::infinity());
    EXPECT_EQ (deck.head.position, 10.0);
    for (const int none : { -1, 4, 99 })
    {
        decks.transport.seekFrames (none, 5.0);
        decks.transport.playPause (none);
        decks.transport.cue (none, true);
        decks.transport.cuePlay (none, true);
    }
}

TEST (Transport, CuePlayStoresOnPressAndPlaysFromRelease)
{
    LoadedDeck decks;
    auto& deck = decks.deck();
    deck.place (33'000.0);
    decks.transport.cuePlay (0, false); // a release without its press
    EXPECT_EQ (deck.play.on, 0);
    decks.transport.cuePlay (0, true);
    EXPECT_EQ (deck.marks.cues[0], 33'000.0);
    EXPECT_EQ (deck.play.on, 0);
    decks.transport.cuePlay (0, false);
    EXPECT_EQ (deck.play.on, 1);

    // Round after round it goes back to the cue, which stays, also beside the grid of a synced deck.
    decks.settings.deckSetup[0].sync = 1;
    for (int round = 0; round < 4; ++round)
    {
        decks.render (10'007);
        decks.transport.cuePlay (0, true);
        EXPECT_EQ (deck.play.on, 0);
        EXPECT_EQ (deck.head.position, 33'000.0);
        decks.transport.cuePlay (0, false); // does nothing after a press that stopped
        EXPECT_EQ (deck.play.on, 0);
        decks.transport.cuePlay (0, true);
        decks.transport.cuePlay (0, false);
        EXPECT_EQ (deck.play.on, 1);
        EXPECT_EQ (deck.marks.cues[0], 33'000.0);
    }
}

TEST (Transport, AutomixLocksPlayAndCueAndLeavesTheRestFree)
{
    LoadedDeck decks;
    Heard heard (decks.listeners);
    decks.settings.automixOn = 1;
    decks.transport.playPause (0);
    decks.transport.cue (1, true);
    decks.transport.playSynchronized (2);
    decks.transport.cuePlay (3, true);
    decks.listeners.deliver();
    for (int d = 0; d < deckCount; ++d)
        EXPECT_EQ (decks.deck (d).play.on, 0);
    EXPECT_EQ (decks.world.requests.take (EngineRequest::askToStopAutomix), 1u);
    EXPECT_EQ (heard.messages.size(), 3);
    EXPECT_EQ (heard.messages[0], "*** Play Locked ***|Turn off Automix|for direct use");

    decks.deck().place (4000.0);
    decks.transport.jumpToCue (0, 1);
    EXPECT_EQ (decks.deck().marks.cues[1], 4000.0);
}

TEST (Transport, TheMasterIsTheFirstDeckThatRuns)
{
    struct Step
    {
        int toggled, expectedMaster;
    };
    // C starts alone, A joins and changes nothing, C stops and A leads, B joins, A stops and B leads, B stops: stays.
    const Step steps[] { { 2, 2 }, { 0, 2 }, { 2, 0 }, { 1, 0 }, { 0, 1 }, { 1, 1 } };
    LoadedDeck decks;
    decks.settings.masterDeck = 3;
    for (const auto& step : steps)
    {
        decks.transport.playPause (step.toggled);
        EXPECT_EQ (decks.settings.masterDeck, step.expectedMaster) << "deck " << step.toggled;
    }

    decks.world.isStandalone = 0; // inside a host the host leads
    decks.transport.playPause (3);
    EXPECT_EQ (decks.settings.masterDeck, 1);
}

TEST (Transport, SyncMatchesTempoOnceAndSyncLockHoldsIt)
{
    LoadedDeck decks;
    decks.playAt (0.0, 0);
    decks.playAt (0.0, 1);
    decks.deck (0).marks.bpm = 120.0;
    decks.deck (1).marks.bpm = 126.0;
    decks.deck (0).tempo.pitch = 0.75; // 4 % up: 124.8

    decks.transport.toggleSync (1, true);
    EXPECT_EQ (decks.settings.deckSetup[1].sync, 1);
    decks.render (64, 1);
    EXPECT_EQ (decks.settings.deckSetup[1].sync, 0);
    const auto ratio = 120.0 * 1.04 / 126.0;
    EXPECT_NEAR (decks.deck (1).tempo.factor, ratio, 1e-9);
    EXPECT_NEAR (decks.deck (1).tempo.pitch, (ratio - 1.0) / 0.16 + 0.5, 1e-9);

    decks.deck (0).tempo.pitch = 0.5;
    decks.render (64, 1);
    EXPECT_NEAR (decks.deck (1).tempo.factor, ratio, 1e-9);

    decks.transport.toggleSync (1, false);
    decks.render (64, 1);
    EXPECT_EQ (decks.settings.deckSetup[1].sync, 1);
    EXPECT_NEAR (decks.deck (1).tempo.factor, 120.0 / 126.0, 1e-9);

    decks.settings.deckSetup[0].sync = 1; // the deck became master while Sync was lit
    decks.transport.toggleSync (0, true);
    EXPECT_EQ (decks.settings.deckSetup[0].sync, 0) << "it can always be switched off";
    decks.transport.toggleSync (0, true); // the master follows nobody
    EXPECT_EQ (decks.settings.deckSetup[0].sync, 0);

    decks.world.isStandalone = 0;
    decks.world.hostBpm = 130.0;
    decks.render (64, 1);
    EXPECT_NEAR (decks.deck (1).tempo.factor, 130.0 / 126.0, 1e-9);
}

TEST (Transport, ADeckUnderAHandIsNotJumpedByItsSync)
{
    LoadedDeck decks;
    for (const int index : { 0, 1 })
    {
        decks.giveGrid (index, 120.0);
        decks.playAt (30'000.0 + 5000.0 * index, index);
    }
    decks.transport.toggleSync (1, false);
    decks.transport.setScratch (1, true, false);
    decks.transport.bendJog (1, 5.0, -0.01, 0.1);
    decks.render (128, 1);

    // Neither by the master's jump nor when it is touched a second time before the jog has come to rest.
    const auto& held = decks.deck (1);
    const auto expectStays = [&]
    {
        const auto before = held.heardPosition();
        PhaseAlignment::run (decks.world, {});
        EXPECT_EQ (held.heardPosition(), before);
        decks.render (128, 1);
    };
    decks.deck (0).marks.cues[0] = 200'000.0;
    decks.transport.jumpToCue (0, 0);
    EXPECT_EQ (decks.deck (0).sync.resync, 1);
    expectStays();
    decks.transport.setScratch (1, false, false);
    expectStays();
    decks.transport.setScratch (1, true, false);
    for (int block = 0; block < 700; ++block)
        expectStays();
    EXPECT_EQ (held.head.jog, 0.0);
}

TEST (Transport, PlaySynchronizedStartsAStoppedDeckOnly)
{
    LoadedDeck decks;
    decks.transport.playSynchronized (1);
    EXPECT_EQ (decks.deck (1).play.on, 1);
    EXPECT_EQ (decks.settings.deckSetup[1].sync, 1);
    EXPECT_EQ (decks.deck (1).sync.oneShot, 1);
    decks.render (64, 1);
    EXPECT_EQ (decks.settings.deckSetup[1].sync, 0);
    decks.transport.playSynchronized (1);
    EXPECT_EQ (decks.deck (1).play.on, 1);
}

TEST (Transport, TapsSetTheTempoFromTheSecondOn)
{
    LoadedDeck decks;
    auto& deck = decks.deck();
    const double before = deck.marks.bpm;
    decks.grids.tapTempo (0);
    EXPECT_EQ (deck.marks.bpm, before);
    for (int tap = 0; tap < 8; ++tap)
    {
        decks.now += tap % 2 == 0 ? 490 : 510; // unsteady, 500 ms on the whole
        decks.grids.tapTempo (0);
    }
    EXPECT_DOUBLE_EQ (deck.marks.bpm, 120.0);
    EXPECT_DOUBLE_EQ (deck.marks.bpmAverage, 120.0);

    decks.now += 3001; // a new count
    decks.grids.tapTempo (0);
    decks.now += 100;
    decks.grids.tapTempo (0);
    EXPECT_EQ (deck.marks.bpm, 250.0);

    decks.grids.tapTempo (0); // within the same millisecond
    EXPECT_LE (deck.marks.bpm, 250.0);
}

TEST (Transport, PitchAndKeyKeepTheirRangesAndRefuseNaN)
{
    LoadedDeck decks;
    auto& deck = decks.deck();
    decks.transport.setPitch (0, 1.7);
    EXPECT_EQ (deck.tempo.pitch, 1.0);
    decks.transport.setPitch (0, std::nan (""));
    EXPECT_EQ (deck.tempo.pitch, 1.0);
    decks.transport.setKeyTuning (0, -40.0);
    EXPECT_EQ (deck.tempo.keyTuning, -12.0);
    decks.transport.setKeyTuning (0, std::nan (""));
    EXPECT_EQ (deck.tempo.keyTuning, -12.0);
    decks.transport.bendJog (0, std::nan (""), 1.0, 1.0);
    EXPECT_EQ (deck.head.jog, 0.0);
    EXPECT_EQ (pitchRangeOf (-1), 0.16);
    EXPECT_EQ (pitchRangeOf (13), 0.16);
    EXPECT_EQ (pitchRangeOf (12), 1.0);
}
