#include "ClickDecks.h"
#include "engine/CommandTable.h"

#include <gmock/gmock.h>

#include <functional>

namespace
{
using namespace testing;

enum Holding
{
    empty,
    loaded,
    playing
};

/** Has no track to give, and counts how often it is asked for one. */
struct EmptyList : AutomixSource
{
    std::optional<juce::File> nextTrack() override { return ++asked, juce::File(); }
    int asked = 0;
};

struct AutomixDecks : ClickDecks
{
    explicit AutomixDecks (std::shared_ptr<EmptyList> emptyList = std::make_shared<EmptyList>())
        : ClickDecks (false, 512, 44100.0, emptyList),
          list (std::move (emptyList)),
          engine (host->engine()),
          settings (engine.settings)
    {
        settings.crossfader = 0.0;
        settings.automixFadeSeconds = 2;
    }

    void hold (int index, Holding what, double seconds = 10.0, double at = 3.0)
    {
        if (what == empty)
            return;
        put (index, { 120.0, 44100.0, 0.0, seconds });
        deck (index).place (at * 44100.0);
        if (what == playing)
            playPause (index);
    }

    void start()
    {
        engine.setParameter (CommandTable::numberOf ("AUTOMIX_ON_OFF"), 1.0f);
        engine.deliverMessages();
    }

    void render (double seconds)
    {
        ClickDecks::render (seconds);
        host->waitForLoads(); // a track is taken off in real time
    }

    void unload (int index)
    {
        engine.loaders.unload (index);
        engine.loaders.waitUntilIdle (index);
    }

    int onAir() { return engine.automix.automixDeck; }
    bool plays (int index) { return deck (index).play.on != 0; }

    std::shared_ptr<EmptyList> list;
    CPlatterdex& engine;
    EngineSettings& settings;
};

struct Heard : EngineListener
{
    explicit Heard (CPlatterdex& e) : engine (e) { engine.listeners.add (*this); }
    ~Heard() override { engine.listeners.remove (*this); }
    void engineEvent (EngineEvent, int) override {}
    void engineMessage (const juce::String& text, int) override { messages.add (text); }

    CPlatterdex& engine;
    juce::StringArray messages;
};
}

TEST (Automix, BeginsWithWhatTheDecksHold)
{
    struct Case
    {
        Holding a, b;
        bool playsA, playsB;
        double atA, atB; ///< seconds, at the start
        bool asksA, asksB;
        int onAir, fade;
    };
    const Case cases[] {
        { playing, playing, true, false, 3.0, 0.0, false, false, 0, 0 },
        { playing, loaded, true, false, 3.0, 0.0, false, false, 0, 0 },
        { playing, empty, true, false, 3.0, 0.0, false, true, 0, 0 },
        { empty, loaded, false, true, 0.0, 0.0, true, false, 1, 1 },
        { empty, empty, true, false, 0.0, 0.0, true, true, 0, 2 },
        { loaded, loaded, true, false, 0.0, 0.0, false, false, 0, 0 },
        { loaded, empty, true, false, 0.0, 0.0, false, true, 0, 0 },
        { loaded, playing, false, true, 0.0, 3.0, false, false, 1, 1 },
        { empty, playing, false, true, 0.0, 3.0, true, false, 1, 1 },
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE (static_cast<int> (&c - cases));
        AutomixDecks decks;
        decks.settings.crossfader = 0.7;
        decks.hold (0, c.a);
        decks.hold (1, c.b);
        decks.start();
        EXPECT_EQ (decks.settings.automixOn, 1);
        EXPECT_EQ (decks.plays (0), c.playsA);
        EXPECT_EQ (decks.plays (1), c.playsB);
        EXPECT_EQ (decks.deck (0).head.position, c.atA * 44100.0);
        EXPECT_EQ (decks.deck (1).head.position, c.atB * 44100.0);
        EXPECT_EQ (decks.deck (0).play.loadNext != 0, c.asksA);
        EXPECT_EQ (decks.deck (1).play.loadNext != 0, c.asksB);
        EXPECT_EQ (decks.onAir(), c.onAir);
        EXPECT_EQ (decks.settings.autoFadeState, c.fade);
        EXPECT_EQ (decks.settings.crossfader, c.fade == 2 ? 0.0 : 0.7);

        decks.render (0.2);
        EXPECT_EQ (decks.list->asked, c.asksA + c.asksB);
    }
}

TEST (Automix, GoesOffWhereThereIsNothingToBeginWith)
{
    for (const auto held : { empty, loaded })
    {
        AutomixDecks decks;
        decks.hold (1, held);
        decks.start();
        decks.render (0.2);
        decks.engine.deliverMessages();
        EXPECT_EQ (decks.settings.automixOn, held != empty);
        EXPECT_EQ (decks.engine.automix.timesWithoutTrack, held == empty);
        EXPECT_FALSE (decks.plays (0)) << "would play what is loaded next";
    }
}

TEST (Automix, HandsOnNearTheEndAndAsksForTheNext)
{
    AutomixDecks decks;
    decks.settings.automixBassSwap = 1;
    decks.settings.automixSync = 1;
    decks.hold (0, loaded);
    decks.put (1, { 125.0, 48000.0, 0.0, 10.0, 1.7 });
    decks.start();
    decks.render (6.9);
    EXPECT_TRUE (decks.plays (0) && !decks.plays (1));
    decks.render (0.2); // fewer than three seconds are left
    EXPECT_TRUE (decks.plays (0) && decks.plays (1));
    EXPECT_EQ (decks.onAir(), 1);
    EXPECT_EQ (decks.settings.autoFadeState, 1);
    decks.render (1.0);
    EXPECT_NEAR (decks.settings.crossfader, 0.53, 0.05);
    EXPECT_NEAR (decks.engine.channels[0].knobs.eqLow, 0.5 - decks.settings.crossfader * 0.5, 1e-9);
    EXPECT_NEAR (decks.engine.channels[1].knobs.eqLow, decks.settings.crossfader * 0.5, 1e-9);
    EXPECT_EQ (decks.list->asked, 0);
    decks.render (1.0);
    EXPECT_FALSE (decks.plays (0));
    EXPECT_EQ (decks.settings.masterDeck, 1);
    EXPECT_EQ (decks.settings.autoFadeState, 2);
    EXPECT_EQ (decks.list->asked, 1);
    EXPECT_LT (decks.deck (0).track.loadedFrames, 1) << "without a next track the deck is empty";

    // In phase from its first sample, though its first beat lies far from its start.
    EXPECT_LT (ClickDecks::largest (decks.distances (1, 0)), 1.0);

    decks.render (12.0);
    EXPECT_FALSE (decks.plays (1)) << "the last track ends";
    EXPECT_EQ (decks.settings.automixOn, 1);
    EXPECT_EQ (decks.settings.crossfader, 1.0);
}

TEST (Automix, TheBassSwapLeavesALowBandToTheKnobThatHoldsIt)
{
    AutomixDecks decks;
    decks.hold (0, loaded);
    auto& knobs = decks.engine.smartKnobs;
    const auto low = [&] (int deck)
    { return decks.engine.channels[static_cast<size_t> (deck)].knobs.eqLow.get(); };
    knobs.bank (0, 0).setEnabled (static_cast<int> (SmartKnobRow::eqLow), true);
    knobs.setSmartKnobOn (0, 0, true);
    knobs.setSmartKnobValue (0, 0, 1.0);
    decks.settings.automixBassSwap = 1;
    decks.settings.crossfader = 0.4;
    decks.render (0.1);
    EXPECT_NEAR (low (0), 1.0, 1e-6) << "of the knob";
    EXPECT_NEAR (low (1), 0.2, 1e-9) << "no knob holds it";

    // Beside a row that is not held the swap's value stays when the knob goes off; so does it when it held the band.
    for (const auto held : { true, false })
    {
        knobs.bank (0, 0).setEnabled (static_cast<int> (SmartKnobRow::eqLow), held);
        decks.render (0.1);
        knobs.setSmartKnobOn (0, 0, false);
        if (held)
            decks.render (0.1);
        EXPECT_NEAR (low (0), 0.3, 1e-9) << held;
        knobs.setSmartKnobOn (0, 0, true);
    }
}

TEST (Automix, ShortTracksAndFadeZero)
{
    struct Case
    {
        const char* name;
        int8_t fade;
        double seconds;
        double handsOnAt; ///< s
    };
    for (const auto& c :
         { Case { "fade 0", 0, 5.0, 4.0 }, { "both are shorter than the fade", 20, 5.0, 0.0 } })
    {
        SCOPED_TRACE (c.name);
        AutomixDecks decks;
        decks.settings.automixFadeSeconds = c.fade;
        decks.hold (0, loaded, c.seconds);
        decks.hold (1, loaded, c.seconds);
        decks.start();
        for (int i = 0; i < 1000 && decks.onAir() == 0; ++i)
            decks.render (0.01);
        EXPECT_NEAR (static_cast<double> (decks.host->position()) / decks.rate, c.handsOnAt, 0.06);
        EXPECT_LT (decks.deck (1).head.position, 0.2 * 44100.0);
        decks.render (c.seconds + 1.5);
        EXPECT_FALSE (decks.plays (0) || decks.plays (1));
        EXPECT_LT (decks.deck (0).track.loadedFrames, 1);
    }
}

TEST (Automix, OutlivesWhatAUserDoesMeanwhile)
{
    // Whatever is done while A is on air, within the fade or before it: a track that comes afterwards gets on air.
    const std::pair<const char*, std::function<void (AutomixDecks&)>> actions[] {
        { "seek to the end", [] (auto& d) { d.engine.transport.seekNormalised (0, 1.0); } },
        { "seek back", [] (auto& d) { d.engine.transport.seekNormalised (0, 0.0); } },
        { "track taken off", [] (auto& d) { d.unload (0); } },
        { "both taken off",
          [] (auto& d)
          {
              d.unload (0);
              d.unload (1);
          } },
        { "deck stopped", [] (auto& d) { d.deck (0).play.on = 0; } },
        { "crossfader taken by hand",
          [] (auto& d) { d.engine.setParameter (CommandTable::numberOf ("CROSSFADER"), 0.3f); } },
        { "faded by hand",
          [] (auto& d) { d.engine.setParameter (CommandTable::numberOf ("AUTO_CROSSFADER_RIGHT"), 1.0f); } },
        { "faded back",
          [] (auto& d) { d.engine.setParameter (CommandTable::numberOf ("AUTO_CROSSFADER_LEFT"), 1.0f); } },
        { "off and on",
          [] (auto& d)
          {
              d.start();
              d.start();
          } },
    };
    for (const auto& [name, action] : actions)
        for (const auto time : { 3.0, 8.0 })
        {
            SCOPED_TRACE (std::string (name) + " at " + std::to_string (time));
            AutomixDecks decks;
            decks.hold (0, loaded);
            decks.hold (1, loaded);
            decks.start();
            decks.render (time);
            action (decks);
            decks.render (25.0); // all has ended
            EXPECT_EQ (decks.settings.automixOn, 1);
            EXPECT_FALSE (decks.plays (0) || decks.plays (1));

            const auto late = decks.deck (0).track.loadedFrames < 1 ? 0 : 1;
            ASSERT_LT (decks.deck (late).track.loadedFrames, 1);
            decks.hold (late, loaded, 10.0, 0.0);
            decks.render (1.0);
            EXPECT_EQ (decks.onAir(), late);
            EXPECT_TRUE (decks.plays (late));
            EXPECT_EQ (decks.settings.crossfader, late);
        }
}

TEST (Automix, PlayLocksSayWhatHoldsThem)
{
    AutomixDecks decks;
    decks.hold (0, loaded);
    decks.start();
    const Heard heard (decks.engine);
    for (const char* command : { "CUE_A", "PLAY_SYNCHRONIZED_A", "PLAY_PAUSE_A" })
        decks.engine.setParameter (CommandTable::numberOf (command), 1.0f);
    decks.engine.deliverMessages();
    EXPECT_TRUE (decks.plays (0));
    const juce::String locked ("*** Play Locked ***|Turn off Automix|for direct use");
    EXPECT_EQ (heard.messages.joinIntoString ("+"), locked + "+" + locked);
}
