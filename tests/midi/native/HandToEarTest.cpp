#include "../../engine/ClickDecks.h"
#include "NativeFixture.h"

#include <gtest/gtest.h>

namespace
{
using Messages = std::vector<std::array<int, 3>>;

constexpr int bcd2000 = 4, cmdXx1 = 47, djForAll = 33;
constexpr double rate = EngineFixture::rate;

/** Model 47's messages for deck A; deck B has the next channel. */
constexpr int notes = 0x90, controllers = 0xb0, scratchMode = 27, touch = 31, wheel = 31;

/** A message that comes while a block is rendered waits for the next one. */
constexpr int blockFrames = 256;
constexpr double longestWaitMs = blockFrames * 1000.0 / rate;

struct HandCase
{
    const char* name;
    int model;
    bool plays;
    Messages before, act;
};

/** The sound of deck A from a hand's messages on, or from where they would have been. */
juce::AudioBuffer<float> soundOf (const HandCase& c, bool acts, bool keyLock)
{
    NativeFixture fixture (c.model);
    fixture.loadNoise (0, 3);
    fixture.deck().tempo.keyLock = keyLock;
    fixture.deck().head.position = 30000.0;
    if (c.plays)
        fixture.set ("PLAY_PAUSE_A");
    fixture.render (22016, blockFrames);
    for (const auto& [status, data, value] : c.before)
        fixture.handle (status, data, value);
    fixture.render (8192, blockFrames);
    if (acts)
        for (const auto& [status, data, value] : c.act)
            fixture.handle (status, data, value);
    return fixture.render (8192, blockFrames);
}

/** The first sample that plainly differs, in ms; more than all if none does. */
double firstDifferenceMs (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b)
{
    const auto x = EngineFixture::channel (a, 0), y = EngineFixture::channel (b, 0);
    size_t i = 0;
    while (i < x.size() && std::abs (x[i] - y[i]) < 0.01f)
        ++i;
    return static_cast<double> (i) * 1000.0 / rate;
}

float peakOf (const juce::AudioBuffer<float>& sound)
{
    return sound.getMagnitude (0, 0, sound.getNumSamples());
}

/** Decks of clicks under the wheels of a model 47. */
struct WheelDecks : ClickDecks
{
    WheelDecks()
    {
        MidiSystem::Options options;
        options.backends.clear();
        options.hasThreads = false;
        midi = std::make_unique<MidiSystem> (host->engine(), std::move (options));
        midi->control.selectController (cmdXx1);
    }
    ~WheelDecks() { midi.reset(); }

    void handle (int status, int data, int value) { midi->control.handle (status, data, value); }

    std::unique_ptr<MidiSystem> midi;
};
}

TEST (HandToEar, AHandOnTheWheelIsHeardWithin10Ms)
{
    const HandCase cases[] {
        { "a bend", cmdXx1, true, {}, { { controllers, wheel, 84 } } },
        { "a touch", cmdXx1, true, { { notes, scratchMode, 127 } }, { { notes, touch, 127 } } },
        { "a turn under the hand",
          cmdXx1,
          true,
          { { notes, scratchMode, 127 }, { notes, touch, 127 } },
          { { controllers, wheel, 94 } } },
        { "letting go",
          cmdXx1,
          true,
          { { notes, scratchMode, 127 }, { notes, touch, 127 } },
          { { notes, touch, 0 } } },
        { "a wheel without touch, deck stopped", bcd2000, false, {}, { { 0xb0, 19, 90 }, { 0xb0, 19, 90 } } },
    };
    for (const auto& c : cases)
        for (const auto keyLock : { false, true })
        {
            const auto ms = firstDifferenceMs (soundOf (c, true, keyLock), soundOf (c, false, keyLock));
            EXPECT_LE (ms + longestWaitMs, 10.0) << c.name << (keyLock ? ", key lock" : "");
            std::printf ("%-38s %-9s heard after %.1f ms\n", c.name, keyLock ? "key lock" : "", ms);
        }
}

TEST (HandToEar, ALampFollowsTheSoundWithin60Ms)
{
    constexpr int tickFrames = MidiControl::tickMs * 441 / 10, step = 315;
    for (const int model : { cmdXx1, djForAll }) // the second waits 10 ms after each message
        for (int pressed = 0; pressed < tickFrames; pressed += step)
        {
            NativeFixture fixture (model);
            fixture.loadNoise (0, 2);
            fixture.tick();
            const auto& table = *ModelList::entry (model).table;
            const auto row = std::ranges::find_if (table.controls, [] (const auto& each)
                                                   { return each.function == FunctionId::play; });
            const auto lamp = std::ranges::find_if (table.lamps, [] (const auto& each)
                                                    { return each.function == FunctionId::play; });
            fixture.render (pressed, 63);
            fixture.handle (row->at[0].status, row->at[0].data, 127);
            const auto sound = fixture.render (tickFrames - pressed, 63);
            const auto heard = EngineFixture::channel (sound, 0);
            const auto first = std::ranges::find_if (heard, [] (float x) { return std::abs (x) > 0.001f; });
            int messages = 0;
            auto isLit = false;
            for (const auto& message : fixture.tick())
                if (!isLit)
                {
                    ++messages;
                    isLit = message[0] == lamp->at[0].status && message[1] == lamp->at[0].data
                            && message[2] == lamp->form.on;
                }
            EXPECT_TRUE (isLit) << model;
            const auto soundMs = static_cast<double> (heard.end() - first) * 1000.0 / rate;
            EXPECT_LE (soundMs + (messages - 1) * ModelList::entry (model).pauseMs, 60.0) << model;
        }
}

TEST (HandToEar, AStoppedWheelStopsTheSound)
{
    // A wheel that is held still sends nothing: the record runs down by the jog's constant of a tenth of a second, and stands at a
    // hundredth of its speed, after half a second. The sound falls with the speed.
    constexpr double constantMs = 100.0, stepMs = blockFrames * 1000.0 / rate;
    NativeFixture fixture (cmdXx1);
    fixture.loadNoise (0, 3);
    fixture.deck().head.position = 30000.0;
    fixture.set ("PLAY_PAUSE_A");
    fixture.render (8192);
    fixture.handle (notes, scratchMode, 127);
    fixture.handle (notes, touch, 127);
    for (int turn = 0; turn < 20; ++turn)
    {
        fixture.handle (controllers, wheel, 67); // about the speed of playing
        EXPECT_GT (peakOf (fixture.render (512)), 0.01f);
    }
    const auto fastest = fixture.deck().head.rate;
    const auto loudest = peakOf (fixture.render (blockFrames));
    double ms = stepMs, halfMs = 0.0, tenthMs = 0.0, quietMs = 0.0, silentMs = 0.0;
    const auto notesFirst = [&ms] (double& first, bool holds)
    {
        if (holds && first <= 0.0)
            first = ms;
    };
    while (silentMs <= 0.0 && ms < 1000.0)
    {
        const auto peak = peakOf (fixture.render (blockFrames));
        ms += stepMs;
        const auto speed = fixture.deck().head.rate / fastest;
        notesFirst (halfMs, speed < 0.5);
        notesFirst (tenthMs, speed < 0.1);
        notesFirst (quietMs, peak < 0.1f * loudest);
        notesFirst (silentMs, peak < 1e-4f);
    }
    std::printf ("a wheel held still: half the speed after %.0f ms, a tenth after %.0f, 20 dB down after "
                 "%.0f, silent after %.0f\n",
                 halfMs, tenthMs, quietMs, silentMs);
    EXPECT_NEAR (halfMs, constantMs * std::log (2.0), 15.0);
    EXPECT_NEAR (tenthMs, constantMs * std::log (10.0), 20.0);
    EXPECT_LT (silentMs, 5.0 * constantMs);
    EXPECT_LT (peakOf (fixture.render (8192)), 1e-4f) << "and stays so";
    EXPECT_EQ (fixture.get ("JOG_SCRATCH_ON_A"), 1.0f) << "the hand is still on";
}

TEST (HandToEar, ASyncedDeckFallsBackIntoPhaseWhenTheHandLetsGo)
{
    WheelDecks decks;
    decks.put (0, { 120.0 });
    decks.put (1, { 124.0, 48000.0 });
    decks.playPause (0);
    decks.render (2.4);
    decks.syncLock (1);
    decks.playPause (1);
    decks.render (3.0);
    decks.handle (notes + 1, scratchMode, 127);
    decks.handle (notes + 1, touch, 127);
    for (int turn = 0; turn < 50; ++turn)
    {
        decks.handle (controllers + 1, wheel, turn < 25 ? 74 : 50);
        decks.render (0.01);
    }
    decks.render (0.4);
    decks.handle (notes + 1, touch, 0);
    decks.render (2.0);
    const auto settled = decks.host->position();
    decks.render (4.0);
    const auto distances = decks.distances (1, 0, settled);
    EXPECT_GE (distances.size(), 7u);
    EXPECT_LT (ClickDecks::largest (distances), 0.5);
}
