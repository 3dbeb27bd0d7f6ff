#include "ChartFixture.h"
#include "midi/mapping/MidiMappingFile.h"
#include "midi/native/ModelMapping.h"
#include "midi/native/ModelScript.h"
#include "midi/script/MidiScript.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{
/** The script of a model, which plays the engine of a fixture and keeps its lamps. */
class PlayedScript
{
public:
    PlayedScript (const Model& model, CPlatterdex& engine)
        : script (ScriptWorld { .owner = &engine,
                                .send = [this] (std::span<const uint8_t> bytes) { receive (bytes); },
                                .journal = journal,
                                .scriptFolder = folder.file ("script_files"),
                                .isStepped = true })
    {
        const auto file = folder.file ("model.c");
        EXPECT_TRUE (writeModelScript (model, file));
        EXPECT_TRUE (script.loadScript (file));
        expectNoFault();
    }

    void handle (int status, int data, int value) { script.post ({ status, data, value, "Surface" }); }
    void tick() { script.tick(); }

    void expectNoFault() const
    {
        for (const auto& entry : journal.after (0))
            ADD_FAILURE() << textOf (entry);
    }

    std::map<std::pair<int, int>, int> lamps; ///< the last value by status and data

private:
    void receive (std::span<const uint8_t> bytes)
    {
        if (bytes.size() == 3)
            lamps[{ bytes[0], bytes[1] }] = bytes[2];
    }

    const TemporaryFolder folder;
    ScriptJournal journal;
    MidiScript script;
};

/** Controls that change what others do. */
bool isOfLayers (const Control& control)
{
    switch (rowOf (control.function.id).act)
    {
    case Act::shift:
    case Act::deckMode:
    case Act::deckModeFlip:
    case Act::surfaceMode:
    case Act::surfaceModeFlip:
    case Act::selectDeck:
    case Act::nextDeck:
    case Act::scratchMode:
    case Act::searchMode:
        return true;
    default:
        return false;
    }
}

/** The rows of a table that a message of a chart's row can reach. */
std::vector<const Control*> controlsAt (const Model& model, const ChartRow& row)
{
    std::vector<const Control*> found;
    for (const auto& control : model.controls)
        for (const auto& address : control.at)
            if (address.matches (row.status, row.data))
            {
                found.push_back (&control);
                break;
            }
    return found;
}

/** Readings that tell of the native surface alone. */
bool isOfTheSurface (const juce::String& name)
{
    static const std::set<juce::String> names { "layer", "shift", "scratch mode", "search mode", "side" };
    return names.contains (name);
}

/** The first reading that differs between two engines; empty if none does. */
juce::String differenceOf (const std::vector<ChartReading>& driver, const std::vector<ChartReading>& other,
                           double tolerance = 1e-5)
{
    for (size_t i = 0; i < driver.size(); ++i)
        if (!isOfTheSurface (driver[i].name)
            && std::abs (driver[i].value - other[i].value)
                   > tolerance * std::max (1.0, std::abs (driver[i].value)))
            return driver[i].name + " " + juce::String (driver[i].deck) + ": "
                   + juce::String (driver[i].value) + ", not " + juce::String (other[i].value);
    return {};
}

/** A model's driver beside its table that was written out and loaded, two engines in the same state. */
class RoundTrip
{
public:
    explicit RoundTrip (int number)
        : model (*ModelList::entry (number).table),
          chart (readChart (number)),
          native (number),
          scripted (0),
          script (model, *scripted.engine)
    {
        both ([] (ChartFixture& fixture) { fixture.loadTracks(); });
    }

    /** Plays all rows in the layers of the start, then once for each control that changes these. */
    void play()
    {
        compareLamps();
        pass (nullptr);
        for (const auto& row : chart)
            if (row.isInput
                && std::ranges::any_of (controlsAt (model, row),
                                        [] (const auto* c) { return isOfLayers (*c); }))
                pass (&row);
        show (&ChartFixture::stopAtCues);
        show (&ChartFixture::soundAll);
        judge();
        script.expectNoFault();
    }

    int inputs = 0, outputs = 0;
    std::map<std::string, int> reasons;

private:
    template <typename Function>
    void both (Function&& function)
    {
        function (native);
        function (scripted);
    }

    using Stage = void (ChartFixture::*)();

    void show (Stage bring)
    {
        constexpr int blinkTicks = 17; // a whole turn
        for (int i = 0; i < blinkTicks; ++i)
            compareLamps (bring);
    }

    void prepare (const ChartRow& row)
    {
        both ([&row] (ChartFixture& fixture) { fixture.prepareEngine (row); });
    }

    void send (int status, int data, int value)
    {
        native.handle (status, data, value);
        script.handle (status, data, value);
    }

    void hold (const ChartRow& row)
    {
        for (const auto& [status, data, value] : ChartFixture::messagesOf (row))
            send (status, data, value);
    }

    void pass (const ChartRow* layer)
    {
        during = layer != nullptr ? layer->title() : juce::String();
        if (layer != nullptr)
            hold (*layer);
        for (const auto& row : chart)
        {
            const auto controls = controlsAt (model, row);
            const auto changesLayers =
                std::ranges::any_of (controls, [] (const auto* control) { return isOfLayers (*control); });
            if (!row.isInput || (layer != nullptr && changesLayers))
                continue;
            prepare (row);
            hold (row);
            compare (row);
            if (row.kind == "button" || row.kind == "touch")
                send (row.status, row.data, 0);
            compare (row);
            align();
        }
        show (&ChartFixture::loopByMarks);
        if (layer != nullptr)
            send (layer->status, layer->data, 0);
    }

    /** Brings what no command changes into the same state again, so that a row does not answer for one before it. */
    void align()
    {
        for (int d = 0; d < 4; ++d)
            scripted.deck (d).tap = native.deck (d).tap;
        scripted.engine->settings.editor[EditorPreference::fourDeckMode] =
            native.engine->settings.editor[EditorPreference::fourDeckMode].get();
    }

    void compare (const ChartRow& row)
    {
        compareWorlds (row);
        tick();
        compareWorlds (row);
        const auto lacks = reasonOf (row) != nullptr;
        compareLamps (nullptr, lacks);
    }

    void compareWorlds (const ChartRow& row)
    {
        auto& found = inputDifferences[row.title()];
        if (const auto difference = differenceOf (native.world(), scripted.world());
            found.isEmpty() && difference.isNotEmpty())
            found = difference + (during.isEmpty() ? juce::String() : " during " + during);
    }

    void tick()
    {
        constexpr int tickFrames = MidiControl::tickMs * 441 / 10, rendered = 64;
        native.stateLamps();
        script.tick();
        both (
            [] (ChartFixture& fixture)
            {
                fixture.renderedFrames += tickFrames - rendered;
                fixture.render (rendered);
            });
    }

    /** @param bring      a state that every tick begins with; may be null
        @param rowLacks   true after a row that the script has not: what it would have lit may differ */
    void compareLamps (Stage bring = nullptr, bool rowLacks = false)
    {
        constexpr int slowest = 8; // ticks in which a device that wants pauses hears of all its lamps
        for (int i = 0; i < (ModelList::entry (model.number).pauseMs > 0 ? slowest : 1); ++i)
        {
            if (bring != nullptr)
                both ([bring] (ChartFixture& fixture) { (fixture.*bring)(); });
            tick();
        }
        for (const auto& [at, value] : native.lamps)
        {
            const auto found = script.lamps.find (at);
            const auto said =
                found != script.lamps.end() ? juce::String (found->second) : juce::String ("anything");
            if (said != juce::String (value) && !(rowLacks && lampReasonAt (at) == nullptr))
                lampDifferences.insert ({ at, juce::String (value) + ", not " + said + " during " + during });
        }
    }

    /** The reason why the script does not do the same for a row; null if it has to. */
    const char* reasonOf (const ChartRow& row) const
    {
        if (!row.isInput)
            return lampReasonAt ({ row.status, row.data });
        for (const auto* control : controlsAt (model, row))
            if (const auto lack = scriptLackOf (model, *control); lack.reason != nullptr)
                return lack.reason;
        return nullptr;
    }

    const char* lampReasonAt (std::pair<int, int> at) const
    {
        for (const auto& lamp : model.lamps)
            for (const auto& address : lamp.at)
                if (const auto lack = scriptLackOf (lamp);
                    lack.reason != nullptr && address.matches (at.first, at.second))
                    return lack.reason;
        return nullptr;
    }

    void judge()
    {
        for (const auto& row : chart)
        {
            const auto* reason = reasonOf (row);
            const auto difference =
                row.isInput ? inputDifferences[row.title()] : lampDifferences[{ row.status, row.data }];
            EXPECT_EQ (difference.isNotEmpty(), reason != nullptr)
                << row.title() << ": " << (reason != nullptr ? reason : difference.toRawUTF8());
            if (reason != nullptr)
                ++reasons[reason];
            else
                ++(row.isInput ? inputs : outputs);
        }
    }

    const Model& model;
    const std::vector<ChartRow> chart;
    ChartFixture native, scripted;
    PlayedScript script;
    juce::String during; ///< the control of layers that is held
    std::map<juce::String, juce::String> inputDifferences;
    std::map<std::pair<int, int>, juce::String> lampDifferences;
};

class RoundTripOf : public testing::TestWithParam<int>
{
protected:
    static void TearDownTestSuite()
    {
        std::printf ("all models, as scripts: %d inputs and %d outputs the same\n", inputs, outputs);
        for (const auto& [reason, rows] : reasons)
            std::printf ("%5d rows: %s\n", rows, reason.c_str());
    }

    static inline int inputs = 0, outputs = 0;
    static inline std::map<std::string, int> reasons;
};
}

TEST_P (RoundTripOf, AScriptOfTheTableActsAndShowsAsTheDriver)
{
    RoundTrip trip (GetParam());
    trip.play();
    inputs += trip.inputs;
    outputs += trip.outputs;
    for (const auto& [reason, rows] : trip.reasons)
        reasons[reason] += rows;
}

TEST_P (RoundTripOf, AMappingOfTheTableActsAsTheDriver)
{
    constexpr double of14Bits = 2e-4; // the ends of 14 bits are 16383 there
    const auto& model = *ModelList::entry (GetParam()).table;
    const TemporaryFolder folder;
    const auto file = folder.file ("model.xml");
    MidiMapping mapping;
    fillMapping (model, mapping);
    ASSERT_TRUE (saveMidiMapping (mapping, file));
    ChartFixture native (GetParam()), mapped (0);
    ASSERT_TRUE (loadMidiMapping (file, mapped.control().mapping));
    for (auto* fixture : { &native, &mapped })
        fixture->loadTracks();
    native.stateLamps(); // starts the surface
    int same = 0;
    std::map<std::string, int> lacks;
    for (const auto& row : readChart (GetParam()))
        for (const auto& control : model.controls)
            for (size_t place = 0; row.isInput && place < control.at.size(); ++place)
            {
                if (!control.at[place].matches (row.status, row.data))
                    continue;
                if (const auto* lack = mappingLackOf (model, control, place, mapping))
                {
                    ++lacks[lack];
                    continue;
                }
                for (auto* fixture : { &native, &mapped })
                    fixture->prepare (row);
                for (auto messages = ChartFixture::messagesOf (row);
                     const auto& [status, data, value] : messages)
                    for (auto* fixture : { &native, &mapped })
                        fixture->handle (status, data, value);
                EXPECT_EQ (differenceOf (native.world(), mapped.world(), of14Bits), "") << row.title();
                if (row.kind == "button" || row.kind == "touch")
                    for (auto* fixture : { &native, &mapped })
                        fixture->handle (row.status, row.data, 0);
                EXPECT_EQ (differenceOf (native.world(), mapped.world(), of14Bits), "")
                    << row.title() << " let go";
                ++same;
            }
    EXPECT_GT (same, 0);
    std::printf ("%2d as a mapping: %d inputs the same", GetParam(), same);
    for (const auto& [lack, rows] : lacks)
        std::printf ("; %d: %s", rows, lack.c_str());
    std::printf ("\n");
}

INSTANTIATE_TEST_SUITE_P (Models, RoundTripOf, testing::ValuesIn (modelsWithTables()));
