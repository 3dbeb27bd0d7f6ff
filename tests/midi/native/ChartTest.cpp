#include "Chart.h"
#include "NativeFixture.h"
#include "engine/BrowserRequests.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace
{
/** Counts what controllers ask of the browser. */
struct BrowserLog : BrowserRequests::Receiver
{
    void carryOut (BrowserRequest request, int deck) override
    {
        ++counts[static_cast<size_t> (request) * 4 + static_cast<size_t> (deck)];
    }

    std::array<double, 18 * 4> counts {};
};

/** A controller with four tracks, in a state in which every function has something to change. */
struct ChartFixture : NativeFixture
{
    explicit ChartFixture (int model) : NativeFixture (model)
    {
        BrowserRequests::ofProcess().add (*engine, browser);
        for (int d = 0; d < 4; ++d)
            loadNoise (d, 3);
        for (int pad = 0; pad < Sampler::padCount; ++pad)
            engine->sampler.loadSample (pad, noiseFile (1));
    }
    ~ChartFixture() { BrowserRequests::ofProcess().remove (browser); }

    void prepare (const ChartRow& row)
    {
        control().selectController (engine->settings.controllerPreset);
        for (auto& record : engine->timecodes)
            record.setMode (TimecodeDeck::Mode::internal); // which centres the pitch
        for (int number = 1; number <= CommandTable::commandCount; ++number)
            if (CommandTable::find (number)->kind == CommandKind::value
                && CommandTable::find (number)->shape != MappingShape::jog)
                engine->setParameter (number, 0.4f);
        for (int d = 0; d < 4; ++d)
        {
            auto& player = deck (d);
            player.play = {};
            player.jog = {};
            player.loops = {};
            player.loops.in = 10000.0;
            player.loops.out = 20000.0;
            player.loops.inSet = player.loops.outSet = 1;
            player.head = {};
            player.head.position = 50000.0;
            player.publishHeard();
            player.marks.fixedGrid = 1;
            player.marks.downbeatPosition = 0;
            for (size_t cue = 0; cue < 8; ++cue)
                player.marks.cues[cue] =
                    row.control.contains ("delete") ? 60000.0 + 1000.0 * static_cast<double> (cue) : emptyCue;
            engine->settings.deckSetup[static_cast<size_t> (d)].sync = 0;
        }
        engine->setParameter (
            CommandTable::numberOf ("MASTER_", row.deckIndex() < 0 ? 3 : (row.deckIndex() + 1) % 4), 1.0f);
        if (row.function() == "brake" || row.function().contains ("stop") || row.function() == "pause")
            for (int d = 0; d < 4; ++d)
                engine->transport.playPause (d);
        const auto towardsRight = row.function().endsWith ("button 1") || row.control.contains ("unit 3");
        for (int d = 0; d < 4; ++d)
            engine->setParameter (
                CommandTable::numberOf (towardsRight ? "CROSSFADER_ASSIGN_RIGHT_" : "CROSSFADER_ASSIGN_LEFT_",
                                        d),
                1.0f);
    }

    /** All that a control can change. */
    std::vector<double> world()
    {
        const auto loopsToRecord = engine->decks.requests.take (EngineRequest::recordLoop);
        engine->deliverMessages();
        BrowserRequests::ofProcess().deliver();
        std::vector<double> all (browser.counts.begin(), browser.counts.end());
        for (int number = 1; number <= CommandTable::commandCount; ++number)
            all.push_back (static_cast<double> (engine->getParameter (number)));
        for (int d = 0; d < 4; ++d)
        {
            const auto& p = deck (d);
            all.insert (
                all.end(),
                { p.head.position, p.head.jog, p.head.bend, p.loops.in.get(), p.loops.out.get(),
                  static_cast<double> (p.loops.mode.get()), static_cast<double> (p.play.reverse.get()),
                  static_cast<double> (p.marks.downbeatPosition.get()), static_cast<double> (p.tap.taps),
                  static_cast<double> (p.jog.scratchOn.get()), static_cast<double> (p.play.cuePlayArmed) });
            for (const auto& cue : p.marks.cues)
                all.push_back (cue);
            const auto i = static_cast<size_t> (d);
            for (int pad = 0; pad < 8; ++pad)
                all.push_back (static_cast<double> (engine->slicegates[i].padState (pad)));
            all.insert (all.end(), { static_cast<double> (state().mode[i].get()),
                                     static_cast<double> (state().shift[i].get()),
                                     static_cast<double> (state().scratchMode[i].get()),
                                     static_cast<double> (state().searchMode[i].get()) });
        }
        all.push_back (loopsToRecord);
        for (const auto& side : state().deckOfSide)
            all.push_back (side.get());
        all.push_back (state().mode[SurfaceState::wholeSurface].get());
        all.push_back (state().shift[SurfaceState::wholeSurface].get());
        all.push_back (engine->settings.editor[EditorPreference::fourDeckMode].get());
        return all;
    }

    /** Plays a row's control as a hand would. */
    void play (const ChartRow& row)
    {
        const auto send = [&] (int data, int value) { handle (row.status, data, value); };
        static const std::map<juce::String, int> clicks { { "twosComplement", 1 },
                                                          { "twosComplementInverted", 127 },
                                                          { "centred", 66 },
                                                          { "sign", 127 },
                                                          { "eitherCentre", 66 } };
        if (row.form == "bend" || row.form == "bendInverted")
            send (0, 100);
        else if (row.form == "fine16" || row.form == "fine32")
        {
            send (row.data, 100);
            send (row.data + (row.form == "fine16" ? 16 : 32), 5);
        }
        else if (row.form.startsWith ("cyclic"))
            for (int turn = 0; turn < 3; ++turn)
            {
                send (row.data, 20 + turn);
                if (row.form != "cyclic7")
                    send (row.data + (row.form == "cyclicLow32" ? 32 : -1), 5);
            }
        else if (const auto found = clicks.find (row.form); found != clicks.end())
            for (int turn = 0; turn < 2; ++turn)
                send (row.data, found->second);
        else
            send (row.data, 127);
    }

    BrowserLog browser;
};

/** A second message of a control whose first half is another row. */
bool isLowHalf (const ChartRow& row)
{
    return row.control.contains (" lsb");
}

/** The readings that functions of these names must change on their own deck, and on no other. */
const std::map<juce::String, juce::String> readings {
    { "play", "PLAY_PAUSE_" },
    { "key lock", "KEY_LOCK_" },
    { "pfl", "PFL_" },
    { "sync", "SYNC_LOCK_" },
    { "eq high", "EQ_HIGH_" },
    { "eq mid", "EQ_MID_" },
    { "eq low", "EQ_LOW_" },
    { "gain", "GAIN_" },
    { "eq high kill", "EQ_HIGH_KILL_" },
    { "eq mid kill", "EQ_MID_KILL_" },
    { "eq low kill", "EQ_LOW_KILL_" },
    { "volume", "VOLUME_" },
    { "pitch fader", "PITCH_" },
    { "filter", "FILTER_" },
    { "pitch bend minus", "PITCH_BEND_NUDGE_MINUS_" },
    { "pitch bend plus", "PITCH_BEND_NUDGE_PLUS_" },
    { "crossfader", "CROSSFADER" },
    { "master volume", "MASTER_VOLUME" },
    { "headphone mix", "MONITOR_MIX" },
    { "headphone volume", "MONITOR_VOLUME" },
    { "loop half", "LOOP_SIZE_" },
    { "loop double", "LOOP_SIZE_" },
    { "auto loop", "LOOP_" },
    { "automix", "AUTOMIX_ON_OFF" },
};

void expectNamedReading (ChartFixture& fixture, const ChartRow& row, const std::vector<float>& before)
{
    const auto found = readings.find (row.function());
    if (found == readings.end())
        return;
    for (int d = 0; d < 4; ++d)
    {
        const auto number = CommandTable::numberOf (found->second.toStdString(), d);
        const auto isOurs = !found->second.endsWith ("_") || row.deckIndex() < 0 || row.deckIndex() == d;
        if (row.deckIndex() >= 0 || d == 0)
        {
            EXPECT_EQ (fixture.engine->getParameter (number) != before[static_cast<size_t> (number)], isOurs)
                << row.title() << ", deck " << d;
        }
    }
}

std::vector<float> allReadings (CPlatterdex& engine)
{
    std::vector<float> all (1, 0.0f);
    for (int number = 1; number <= CommandTable::commandCount; ++number)
        all.push_back (engine.getParameter (number));
    return all;
}

using LampValues = std::map<std::pair<int, int>, int>;

void takeLamps (ChartFixture& fixture, LampValues& values)
{
    for (const auto& message : fixture.tick())
        if (message.size() == 3)
            values[{ message[0], message[1] }] = message[2];
}

/** Buttons after which other controls, or the same, are for something else. */
bool changesLayers (const ChartRow& row)
{
    static const std::array words { "mode",          "files",       "folders", "crates",
                                    "centre button", "deck select", "play",    "source" };
    return row.isInput && row.kind == "button"
           && std::ranges::any_of (words, [&row] (const auto* word) { return row.control.contains (word); });
}

/** Lamps that show something else than the press of the button of their name. */
bool showsSomethingElse (const ChartRow& lamp)
{
    static const std::set<juce::String> others {
        "load",       "cue",          "loop in",          "loop out",      "reloop",
        "set cue",    "scratch mode", "pad mode hot cue", "files",         "left centre button",
        "mode vinyl", "pad bank 1",   "soft button 3",    "deck select a", "deck select b"
    };
    const auto isSlicegatePad =
        lamp.function().startsWith ("pad ") && lamp.function().getTrailingIntValue() > 8;
    return isSlicegatePad || others.contains (lamp.function()) || lamp.control.contains ("blink");
}

class ChartOf : public testing::TestWithParam<int>
{
};

std::vector<int> modelsWithTables()
{
    std::vector<int> all;
    for (int model = 0; model < ModelList::count; ++model)
        if (ModelList::entry (model).table != nullptr)
            all.push_back (model);
    return all;
}
}

TEST_P (ChartOf, EveryInputActsAndEveryLampTellsTheTruth)
{
    const auto chart = readChart (GetParam());
    ASSERT_FALSE (chart.empty());
    ChartFixture fixture (GetParam());
    LampValues lamps;
    takeLamps (fixture, lamps);
    int inputs = 0, outputs = 0, unusedInputs = 0, unusedOutputs = 0;
    for (const auto& row : chart)
    {
        if (!row.isInput)
        {
            ++(row.unused.isEmpty() ? outputs : unusedOutputs);
            if (row.unused.isEmpty())
            {
                EXPECT_TRUE (lamps.contains ({ row.status, row.data })) << row.title();
            }
            continue;
        }
        ++(row.unused.isEmpty() ? inputs : unusedInputs);
        if (isLowHalf (row))
            continue;
        fixture.prepare (row);
        takeLamps (fixture, lamps);
        const auto lampsBefore = lamps;
        auto before = fixture.world();
        const auto readingsBefore = allReadings (*fixture.engine);
        fixture.play (row);
        auto after = fixture.world();
        for (const auto& mode : chart)
            if (before == after && row.unused.isEmpty() && changesLayers (mode)
                && mode.title() != row.title())
            {
                fixture.play (mode);
                for (int d = 0; d < 4; ++d)
                    fixture.deck (d).play.on = 1; // what needs a deck that plays has one now
                before = fixture.world();
                fixture.play (row);
                after = fixture.world();
            }
        EXPECT_EQ (before == after, row.unused.isNotEmpty()) << row.title();
        expectNamedReading (fixture, row, readingsBefore);
        takeLamps (fixture, lamps);
        for (const auto& lamp : chart)
            if (!lamp.isInput && lamp.kind == "led" && lamp.unused.isEmpty() && row.kind == "button"
                && lamp.function() == row.function() && lamp.deck == row.deck && !showsSomethingElse (lamp))
            {
                EXPECT_NE (lamps.at ({ lamp.status, lamp.data }), lampsBefore.at ({ lamp.status, lamp.data }))
                    << lamp.title();
            }
        fixture.handle (row.status, row.data, 0);
    }
    std::printf ("%2d %-26s inputs %3d covered %2d not, outputs %3d covered %2d not\n", GetParam(),
                 ModelList::entry (GetParam()).name, inputs, unusedInputs, outputs, unusedOutputs);
}

INSTANTIATE_TEST_SUITE_P (Models, ChartOf, testing::ValuesIn (modelsWithTables()));
