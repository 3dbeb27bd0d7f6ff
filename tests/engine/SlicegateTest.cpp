#include "ClickDecks.h"

#include "engine/CommandTable.h"
#include "instruments/slicegate/FactoryPresets.h"

#include <random>

namespace
{
constexpr double rate = 44100.0, beat = 22050.0;
constexpr int mute = 613, repeatHalf = 105, reverse = 120, repeatTwo = 101, gate = 703, back = 122;

/** Decks that play a tone of 441 Hz at 120 BPM, the first beat at 0, and what deck A sounds like. */
struct PadDecks
{
    explicit PadDecks (int blockFrames = 128, double hz = 441.0)
    {
        OfflineHost::Options options;
        options.root = folder;
        options.blockFrames = blockFrames;
        host = std::make_unique<OfflineHost> (options);
        host->sink = [this] (const float* const* channels, int frames)
        {
            heard.insert (heard.end(), channels[4], channels[4] + frames);
            return true;
        };
        std::vector<int16_t> samples (static_cast<size_t> (80 * beat));
        for (size_t i = 0; i < samples.size(); ++i)
            samples[i] =
                static_cast<int16_t> (16000.0 * std::sin (2.0 * M_PI * hz * static_cast<double> (i) / rate));
        for (int index : { 0, 1 })
        {
            auto& player = deck (index);
            player.resetTrack();
            TrackIngest (player.trackTarget())
                .append (samples.data(), samples.data(), static_cast<int> (samples.size()));
            player.marks.bpm = player.marks.bpmAverage = 120.0;
            player.marks.fixedGrid = 1;
            host->engine().transport.seekFrames (index, 10.0 * beat);
            host->engine().transport.playPause (index);
        }
    }

    DeckPlayer& deck (int index = 0) { return *host->engine().decks.deck (index); }
    SlicegateDeckState& pads() { return host->engine().slicegates[0]; }
    void render (double beats) { host->render (std::llround (beats * beat)); }
    void press (int pad) { host->engine().setParameter (377 + pad, 1.0f); }

    void put (int pad, int id, PlayMode mode = PlayMode::oneShot, bool marches = true)
    {
        pads().loadFactoryPreset (id, pad);
        pads().setPlayMode (pad, mode);
        pads().setAdvanceMode (pad, marches);
    }

    /** Beats by which deck A is away from deck B, which has no pads. */
    double away() { return (deck (0).heardPosition() - deck (1).heardPosition()) / beat; }

    /** Level of deck A from a frame of the run on, over one cycle. */
    double levelAt (size_t frame) const
    {
        double sum = 0.0;
        for (size_t i = frame; i < frame + 100; ++i)
            sum += heard[i] * heard[i];
        return std::sqrt (sum / 50.0) / 0.488;
    }

    TemporaryFolder folder;
    std::vector<float> heard;
    std::unique_ptr<OfflineHost> host;
};
}

TEST (Slicegate, LeavesTheDeckWhereItsModesSay)
{
    struct Case
    {
        const char* name;
        int preset;
        PlayMode mode;
        bool marches;
        double pressAgain; ///< beats after the press, 0 for none
        double away;       ///< beats, after 6 beats
        bool runs = false; ///< then
        bool reversed = false;
    };
    const Case cases[] {
        { "one shot, to its end", repeatHalf, PlayMode::oneShot, true, 0.0, 0.0 },
        { "one shot, pressed twice", repeatHalf, PlayMode::oneShot, true, 1.7, 0.0 },
        { "the same without march", repeatHalf, PlayMode::oneShot, false, 1.7, -1.5 },
        { "to its end without march", repeatTwo, PlayMode::oneShot, false, 0.0, -2.0 },
        { "a reverse without march", reverse, PlayMode::oneShot, false, 1.25, -2.5 },
        { "a loop marches on", repeatTwo, PlayMode::loop, true, 0.0, 0.0, true },
        { "a loop without march", repeatTwo, PlayMode::loop, false, 0.0, -4.0, true },
        { "the same in reverse", repeatTwo, PlayMode::loop, false, 0.0, 4.0, true, true },
        { "re-trigger begins the beat anew", repeatTwo, PlayMode::reTrigger, true, 2.3, 0.0 },
        { "re-trigger without march plays its beats again", repeatTwo, PlayMode::reTrigger, false, 2.3,
          -4.0 },
    };
    for (const auto& c : cases)
        for (const auto keyLock : { 0, 1 })
        {
            SCOPED_TRACE (std::string (c.name) + (keyLock != 0 ? ", key lock" : ""));
            PadDecks decks;
            for (int index : { 0, 1 })
            {
                decks.deck (index).tempo.keyLock = static_cast<int8_t> (keyLock);
                decks.host->engine().transport.setReverse (index, c.reversed);
            }
            decks.put (0, c.preset, c.mode, c.marches);
            decks.render (1.0);
            decks.press (0);
            decks.render (c.pressAgain > 0.0 ? c.pressAgain : 3.0);
            if (c.pressAgain > 0.0)
                decks.press (0);
            if (c.pressAgain > 0.0 && c.mode == PlayMode::reTrigger)
            {
                decks.render (0.1);
                EXPECT_NEAR (decks.pads().padProgress (0), 0.1, 0.003); // 0.3 + 0.1 of four beats
            }
            decks.render (
                6.0
                - (c.pressAgain > 0.0 ? c.pressAgain + (c.mode == PlayMode::reTrigger ? 0.1 : 0.0) : 3.0));
            EXPECT_NEAR (decks.away(), c.away, 0.003);
            EXPECT_EQ (decks.pads().padState (0) == PadState::running, c.runs);
        }
}

TEST (Slicegate, AQueuedPadBeginsWhenThePassEnds)
{
    for (const auto mode : { PlayMode::oneShot, PlayMode::loop })
    {
        PadDecks decks;
        decks.put (0, repeatHalf, mode);
        decks.put (1, mute);
        decks.press (0);
        decks.render (1.0);
        decks.press (1);
        EXPECT_EQ (decks.pads().padState (1), PadState::queued);
        decks.render (2.98);
        EXPECT_EQ (decks.pads().padState (0), PadState::running);
        decks.render (0.04);
        EXPECT_EQ (decks.pads().padState (0), PadState::idle);
        EXPECT_EQ (decks.pads().padState (1), PadState::running);
        decks.render (4.1);
        EXPECT_EQ (decks.pads().padState (1), PadState::idle);
        EXPECT_NEAR (decks.away(), 0.0, 0.001);
    }
}

TEST (Slicegate, BeginsOnTheEvenBeatThatIsHeard)
{
    for (const auto& [keyLock, reversed] : { std::pair (0, false), { 1, false }, { 0, true }, { 1, true } })
    {
        PadDecks decks;
        decks.host->engine().settings.deckSetup[0].quantise = 1;
        decks.deck().tempo.keyLock = static_cast<int8_t> (keyLock);
        decks.host->engine().transport.setReverse (0, reversed);
        decks.host->engine().transport.setPitch (0, 0.9);
        decks.put (0, mute);
        decks.render (0.8);
        decks.press (0);
        EXPECT_EQ (decks.pads().padState (0), PadState::queued);
        const auto before = decks.heard.size();
        const auto beats = decks.deck().heardPosition() / beat;
        const auto step = decks.deck().tempo.factor.get();
        decks.render (1.5);
        const auto until = reversed ? beats - std::floor (beats) : std::ceil (beats) - beats;
        const auto due = before + static_cast<size_t> (until * beat / step);
        // A mute's ramp of 64 frames begins half its length early.
        EXPECT_GT (decks.levelAt (due - 132), 0.9) << keyLock;
        EXPECT_LT (decks.levelAt (due + 76), 0.05) << keyLock;
    }
}

TEST (Slicegate, AQuantisedPadNeverWaitsForABeatThatDoesNotCome)
{
    struct Case
    {
        const char* name;
        std::function<void (PadDecks&)> prepare, afterPress;
        double begins; ///< beats after the press
        bool reversed = false;
    };
    const auto nothing = [] (PadDecks&) {};
    const auto loop = [] (double from, double to)
    {
        return [from, to] (PadDecks& decks)
        {
            auto& loops = decks.deck().loops;
            loops.in = from * beat;
            loops.out = to * beat;
            loops.mode = manualLoop;
        };
    };
    const Case cases[] {
        { "no grid", [] (PadDecks& d) { d.deck().marks.fixedGrid = 0; }, nothing, 0.0 },
        { "behind the last beat",
          [] (PadDecks& d) { d.host->engine().transport.seekFrames (0, 79.7 * beat); }, nothing, 0.0 },
        { "quantise is switched off", nothing,
          [] (PadDecks& d) { d.host->engine().settings.deckSetup[0].quantise = 0; }, 0.0 },
        { "a loop of a beat", loop (11.0, 12.0), nothing, 0.7 },
        { "a loop that ends before its next beat", loop (11.0, 11.5), nothing, 0.2 },
        { "the same in reverse", loop (11.2, 11.7), nothing, 0.1, true },
        { "a loop that turns to before a beat", loop (10.9, 11.6), nothing, 0.4 },
        { "a loop between two beats", loop (11.1, 11.5), nothing, 0.2 },
    };
    for (const auto& c : cases)
        for (const auto keyLock : { 0, 1 })
        {
            SCOPED_TRACE (std::string (c.name) + (keyLock != 0 ? ", key lock" : ""));
            PadDecks decks;
            decks.host->engine().settings.deckSetup[0].quantise = 1;
            decks.host->engine().transport.setReverse (0, c.reversed);
            decks.deck().tempo.keyLock = static_cast<int8_t> (keyLock);
            decks.host->engine().transport.seekFrames (0, c.reversed ? 13.3 * beat : 9.3 * beat);
            decks.put (0, mute);
            decks.render (1.98);
            c.prepare (decks);
            decks.render (0.02);
            decks.press (0);
            c.afterPress (decks);
            const auto pressed = decks.heard.size();
            decks.render (1.2);
            auto mutes = pressed;
            while (mutes + 100 < decks.heard.size() && decks.levelAt (mutes) > 0.05)
                mutes += 10;
            EXPECT_NEAR (static_cast<double> (mutes - pressed) / beat, c.begins, 0.02);
        }
}

TEST (Slicegate, APadThatWaitsIsCalledOffByASecondPressAndWithTheDeck)
{
    for (const auto& callOff :
         std::vector<std::function<void (PadDecks&)>> { [] (PadDecks& decks) { decks.press (0); },
                                                        [] (PadDecks& decks)
                                                        {
                                                            decks.host->engine().transport.playPause (0);
                                                            decks.render (0.1);
                                                            decks.host->engine().transport.playPause (0);
                                                        } })
    {
        PadDecks decks;
        decks.host->engine().settings.deckSetup[0].quantise = 1;
        decks.put (0, mute, PlayMode::loop);
        decks.render (0.3);
        decks.press (0);
        decks.render (0.1);
        EXPECT_EQ (decks.pads().padState (0), PadState::queued);
        callOff (decks);
        decks.render (1.5);
        EXPECT_EQ (decks.pads().padState (0), PadState::idle);
    }
}

TEST (Slicegate, IsHeardWithinTenMillisecondsAndAsSteepThroughKeyLock)
{
    for (const auto keyLock : { 0, 1 })
    {
        PadDecks decks;
        decks.deck().tempo.keyLock = static_cast<int8_t> (keyLock);
        decks.host->engine().transport.setPitch (0, 0.8);
        decks.put (0, gate);
        decks.render (1.0);
        decks.press (0);
        const auto begin = decks.heard.size();
        decks.render (2.0);
        const auto quarter = beat / 4.0 / decks.deck().tempo.factor;
        for (int edge = 1; edge < 7; ++edge)
        {
            const auto at = begin + static_cast<size_t> (std::lround (edge * quarter));
            const auto opens = edge % 2 == 0;
            EXPECT_EQ (decks.levelAt (at - 144) > 0.5, !opens) << edge;
            EXPECT_NEAR (decks.levelAt (at + 44), opens ? 1.0 : 0.0, 0.06) << edge;
        }
        // Stopped in a closed stretch: the deck is heard at once.
        decks.press (0);
        decks.render (0.5);
        decks.put (1, mute);
        decks.press (1);
        const auto muted = decks.heard.size();
        decks.render (0.5);
        EXPECT_LT (decks.levelAt (muted + 441), 0.01);
        decks.press (1);
        const auto stopped = decks.heard.size();
        decks.render (0.5);
        EXPECT_GT (decks.levelAt (stopped + 441), 0.9);
    }
}

TEST (Slicegate, AReverseThroughKeyLockIsTheTrackBackwards)
{
    // The phase of a tone tells the place that is read.
    PadDecks decks (128, 20.0);
    decks.put (0, back, PlayMode::oneShot);
    decks.pads().loadFactoryPreset (reverse, 0);
    decks.render (1.0);
    decks.press (0);
    const auto begin = decks.heard.size();
    const auto from = decks.deck().heardPosition();
    decks.render (3.0);
    for (size_t i = 600; i < 3.0 * beat; i += 441)
        EXPECT_NEAR (decks.heard[begin + i],
                     0.488 * std::sin (2.0 * M_PI * 20.0 * (from - static_cast<double> (i)) / rate), 0.03);
}

TEST (Slicegate, TheKeyMovesWithTheTempoOnlyWhileATimeCurveRuns)
{
    PadDecks decks;
    decks.deck().tempo.keyLock = 1;
    decks.host->engine().transport.setPitch (0, 0.75);
    decks.put (0, repeatTwo);
    decks.put (1, gate);
    const auto hertz = [&] (size_t from)
    {
        const auto rises = [&] (size_t i) { return decks.heard[i - 1] < 0.0f && decks.heard[i] >= 0.0f; };
        std::vector<size_t> at;
        for (auto i = from + 441; i + 1 < from + 5000; ++i) // 10 ms later
            if (rises (i))
                at.push_back (i);
        return rate * static_cast<double> (at.size() - 1) / static_cast<double> (at.back() - at.front());
    };
    decks.render (1.0);
    for (const auto& [pad, expected] :
         { std::pair { 0, 441.0 * decks.deck().tempo.factor }, { 0, 441.0 }, { 1, 441.0 } })
    {
        const auto from = decks.heard.size();
        decks.press (pad);
        decks.render (0.4);
        EXPECT_NEAR (hertz (from), expected, 1.5) << pad;
    }
}

/** Both decks are heard within 1 ms of each other from now on. */
static void expectHeardTogether (ClickDecks& decks)
{
    decks.render (0.5);
    const auto from = decks.host->position();
    decks.render (8.0);
    const auto distances = decks.distances (1, 0, from);
    EXPECT_GT (distances.size(), 12u);
    EXPECT_LT (ClickDecks::largest (distances), 1.0);
}

TEST (Slicegate, MarchingPadsKeepTheLeadersPhaseForTenMinutes)
{
    for (const auto& [preset, keyLock] :
         { std::pair { repeatHalf, true }, { 601, true }, { 708, true }, { 119, false } })
    {
        SCOPED_TRACE (preset);
        ClickDecks decks (false, 2048, 16000.0);
        decks.put (0, { 121.37, 12000.0, 0.0, 640.0 });
        decks.put (1, { 126.91, 11025.0, 0.0, 640.0 });
        decks.deck (1).tempo.keyLock = keyLock ? 1 : 0;
        decks.playPause (0);
        decks.render (1.0);
        decks.syncLock (1);
        decks.playPause (1);
        decks.render (2.0);
        auto& pads = decks.host->engine().slicegates[1];
        pads.loadFactoryPreset (preset, 0);
        pads.setPlayMode (0, PlayMode::loop);
        pads.trigger (0);
        decks.render (600.0);
        pads.trigger (0);
        expectHeardTogether (decks);
    }
}

TEST (Slicegate, PressesLeaveADeckThatNobodySyncsWhereItWouldBe)
{
    for (const auto& [pitch, key, mode] : { std::tuple { 0.5, 0.75, PlayMode::oneShot },
                                            { 1.0, 0.5, PlayMode::oneShot },
                                            { 0.8, 0.5, PlayMode::oneShot },
                                            { 0.8, 0.5, PlayMode::loop } })
    {
        SCOPED_TRACE (::testing::Message() << pitch << " " << key);
        ClickDecks decks;
        for (int index : { 0, 1 })
        {
            decks.put (index, { .seconds = 120.0 });
            decks.deck (index).tempo.keyLock = 1;
            auto& transport = decks.host->engine().transport;
            transport.setPitch (index, pitch);
            decks.host->engine().setParameter (CommandTable::numberOf ("KEY_TUNING_A") + index,
                                               static_cast<float> (key));
            decks.playPause (index);
        }
        auto& pads = decks.host->engine().slicegates[1];
        pads.loadFactoryPreset (reverse, 0);
        pads.setPlayMode (0, mode);
        decks.render (4.0);
        for (int press = 0; press < (mode == PlayMode::loop ? 1 : 80); ++press)
        {
            pads.trigger (0);
            decks.render (0.37);
        }
        decks.render (mode == PlayMode::loop ? 30.0 : 3.0);
        if (mode == PlayMode::loop)
            pads.trigger (0);
        expectHeardTogether (decks);
        EXPECT_NEAR (decks.deck (1).heardPosition(), decks.deck (0).heardPosition(), 44.0);
    }
}

TEST (Slicegate, NoPressMakesAStep)
{
    // The sine moves by 0.003 a frame; backspins read it up to twelve times as fast, and jumps fade over 3 ms.
    PadDecks decks (32, 44.1);
    std::mt19937 random (11);
    auto& engine = decks.host->engine();
    std::vector<int> ids;
    for (const auto& group : FactoryPresets::groups())
        for (const auto& entry : group.presets)
            ids.push_back (entry.id);
    for (int i = 0; i < 10'000; ++i)
    {
        const auto pad = static_cast<int> (random() % 8);
        if (random() % 4 == 0)
            decks.put (pad, ids[random() % ids.size()], static_cast<PlayMode> (random() % 3),
                       random() % 2 == 0);
        if (random() % 50 == 0)
            engine.transport.setKeyLock (0, random() % 2 == 0);
        if (random() % 50 == 0)
            engine.transport.setPitch (0, 0.3 + 0.04 * (random() % 10));
        const auto place = decks.deck().heardPosition() / beat;
        if (place > 60.0 || place < 9.0)
            engine.transport.seekFrames (0, 30.0 * beat);
        decks.press (pad);
        decks.host->render (64 + static_cast<int> (random() % 700));
    }
    auto largest = 0.0f;
    for (size_t i = 1; i < decks.heard.size(); ++i)
        largest = std::max (largest, std::abs (decks.heard[i] - decks.heard[i - 1]));
    EXPECT_LT (largest, 0.06f);
}
