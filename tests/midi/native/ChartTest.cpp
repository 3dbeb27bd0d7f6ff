#include "ChartTruth.h"

#include <gtest/gtest.h>

namespace
{
/** A second message of a control whose first half is another row. */
bool isLowHalf (const ChartRow& row)
{
    return row.control.contains (" lsb");
}

using LampValues = std::map<std::pair<int, int>, int>;

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

/** The reason why a lamp that is served never changes; null if there is none. */
const char* reasonForSteadiness (const ChartRow& lamp)
{
    const auto name = lamp.function();
    return lamp.form == "ownBlink" && !name.startsWith ("play") && !name.startsWith ("sync")
               ? "kept dark: the light that blinks by itself, of a function that is steady here"
               : nullptr;
}

/** The readings of a name that differ between two worlds, by their decks; -1 of those without one. */
std::set<int> decksThatChanged (const std::vector<ChartReading>& before,
                                const std::vector<ChartReading>& after,
                                const std::vector<juce::String>& names)
{
    std::set<int> decks;
    for (size_t i = 0; i < after.size(); ++i)
        for (const auto& name : names)
            if (before[i] != after[i]
                && (after[i].deck < 0 || !name.endsWith ("_") ? after[i].name == name
                                                              : after[i].name.dropLastCharacters (1) == name))
                decks.insert (after[i].deck);
    return decks;
}

/** The rows of all charts, and how they fared. */
struct Totals
{
    int inputs = 0, unusedInputs = 0, inputsByName = 0;
    int outputs = 0, unusedOutputs = 0, outputsByName = 0, outputsByControl = 0, outputsLitAndDark = 0,
        steadyOutputs = 0;
    std::map<juce::String, int> reasons;

    Totals& operator+= (const Totals& other)
    {
        inputs += other.inputs;
        unusedInputs += other.unusedInputs;
        inputsByName += other.inputsByName;
        outputs += other.outputs;
        unusedOutputs += other.unusedOutputs;
        outputsByName += other.outputsByName;
        outputsByControl += other.outputsByControl;
        outputsLitAndDark += other.outputsLitAndDark;
        steadyOutputs += other.steadyOutputs;
        for (const auto& [reason, rows] : other.reasons)
            reasons[reason] += rows;
        return *this;
    }

    void print (const juce::String& title) const
    {
        std::printf (
            "%-29s inputs %4d acted, %4d as their names say, %3d not served; outputs %4d seen, %4d true by "
            "their names, %4d by their controls, %3d lit and dark, %2d steady, %3d not served\n",
            title.toRawUTF8(), inputs, inputsByName, unusedInputs, outputs, outputsByName, outputsByControl,
            outputsLitAndDark, steadyOutputs, unusedOutputs);
    }
};

/** A run through a chart. */
class ChartRun
{
public:
    explicit ChartRun (int model) : fixture (model), chart (readChart (model))
    {
        for (const auto& row : chart)
            if (!row.isInput && row.unused.isEmpty())
                ++rowsAt[{ row.status, row.data }];
    }

    Totals run()
    {
        EXPECT_FALSE (chart.empty());
        stateLamps ({}); // of empty decks
        fixture.loadTracks();
        for (const auto& row : chart)
        {
            if (row.isInput && !isLowHalf (row))
                playRow (row);
            if (row.unused.isNotEmpty())
                ++totals.reasons[row.unused];
            ++(row.isInput            ? row.unused.isEmpty() ? totals.inputs : totals.unusedInputs
               : row.unused.isEmpty() ? totals.outputs
                                      : totals.unusedOutputs);
        }
        showStates();
        for (const auto& row : chart)
            if (changesLayers (row) && row.unused.isEmpty())
                sweep (&row);
        sweep (nullptr);
        for (const auto& row : chart)
            if (!row.isInput && row.unused.isEmpty())
                judge (row);
        return totals;
    }

private:
    /** Brings states that no control of the surface may reach. */
    void showStates()
    {
        fixture.prepare ({});
        const auto show = [this] (auto bring)
        {
            bring();
            stateLamps ({});
        };
        show ([this] { fixture.stopAtCues(); });
        show ([this] { fixture.loopByMarks(); });
        for (int pad = 0; pad < 8; ++pad)
            show ([this, pad] { fixture.slice (pad); });
        fixture.soundAll();
        constexpr int blocks = 60, frames = 64; // a meter shows the last sample of a block
        for (int block = 0; block < blocks; ++block)
            show ([this] { fixture.render (frames); });
    }

    /** Moves all that has a place from end to end. @param layer   the control that selects the layer to do it in; may be null */
    void sweep (const ChartRow* layer)
    {
        constexpr int steps = 24;
        fixture.prepare ({});
        if (layer != nullptr)
            fixture.play (*layer);
        fixture.soundAll();
        for (int step = 0; step <= steps; ++step)
        {
            fixture.sweep (static_cast<float> (step) / steps);
            stateLamps (layer != nullptr ? *layer : ChartRow {});
        }
        if (layer != nullptr)
            fixture.release (*layer);
    }

    void playRow (const ChartRow& row)
    {
        fixture.prepare (row);
        stateLamps (row);
        const auto lampsBefore = fixture.lamps;
        auto before = fixture.world();
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
        if (const auto names = ChartTruth::effectsOf (row); row.unused.isEmpty() && !names.empty())
        {
            const auto decks = decksThatChanged (before, after, names);
            EXPECT_FALSE (decks.empty()) << row.title();
            if (ChartTruth::isOfItsDeckAlone (row))
            {
                EXPECT_EQ (decks, std::set<int> { row.deckIndex() }) << row.title();
            }
            ++totals.inputsByName;
        }
        stateLamps (row);
        if (row.kind == "button")
            compareOwnLamps (row, lampsBefore);
        compareMeters (row, lampsBefore);
        fixture.release (row);
        stateLamps (row);
    }

    /** Lamps whose names say nothing have to follow the button of their name. */
    void compareOwnLamps (const ChartRow& row, const LampValues& before)
    {
        for (const auto& lamp : chart)
            if (!lamp.isInput && lamp.kind == "led" && lamp.unused.isEmpty()
                && lamp.function() == row.function() && lamp.deck == row.deck && !showsSomethingElse (lamp)
                && !ChartTruth::shownBy (fixture, lamp))
            {
                const std::pair at { lamp.status, lamp.data };
                const auto was = before.at (at), is = fixture.lamps.at (at);
                EXPECT_NE (is, was) << lamp.title();
                EXPECT_TRUE ((was == lamp.off && is == lamp.on) || (was == lamp.on && is == lamp.off))
                    << lamp.title() << ": " << was << ", then " << is;
                pressed.insert (lamp.title());
            }
    }

    /** The ring of a knob and the lights along a slider follow it; of lights in a row one is lit, or all up to it. */
    void compareMeters (const ChartRow& row, const LampValues& before)
    {
        int inRow = 0, lit = 0;
        for (const auto& lamp : chart)
        {
            if (lamp.isInput || lamp.unused.isNotEmpty() || lamp.deck != row.deck
                || lamp.part() != row.part())
                continue;
            const std::pair at { lamp.status, lamp.data };
            if (fixture.lamps.at (at) != before.at (at))
                followed.insert (lamp.title());
            if (lamp.form.startsWith ("pointer"))
            {
                ++inRow;
                lit += fixture.lamps.at (at) == lamp.on ? 1 : 0;
            }
        }
        if (inRow > 0)
        {
            EXPECT_GE (lit, 1) << row.title();
        }
    }

    /** States the lamps, and holds all whose names tell what they show against the engine. */
    void stateLamps (const ChartRow& row)
    {
        fixture.stateLamps();
        for (const auto& lamp : chart)
        {
            const auto found = fixture.lamps.find ({ lamp.status, lamp.data });
            if (lamp.isInput || lamp.unused.isNotEmpty() || found == fixture.lamps.end())
                continue;
            values[lamp.title()].insert (found->second);
            const auto shown = ChartTruth::shownBy (fixture, lamp);
            if (!shown || rowsAt[{ lamp.status, lamp.data }] > 1 || lies.contains (lamp.title()))
                continue;
            const auto isTrue = ChartTruth::shows (lamp, found->second, *shown);
            EXPECT_TRUE (isTrue) << lamp.title() << " is " << found->second << " for " << shown->share
                                 << (shown->blinks ? " blinking" : "") << ", after " << row.title();
            if (!isTrue)
                lies.insert (lamp.title());
            seen[lamp.title()].insert (found->second);
        }
    }

    void judge (const ChartRow& lamp)
    {
        EXPECT_TRUE (fixture.lamps.contains ({ lamp.status, lamp.data })) << lamp.title();
        if (seen[lamp.title()].size() > 1)
            ++totals.outputsByName;
        else if (pressed.contains (lamp.title()) || followed.contains (lamp.title()))
            ++totals.outputsByControl;
        else if (values[lamp.title()].size() > 1)
            ++totals.outputsLitAndDark;
        else if (const auto* reason = reasonForSteadiness (lamp))
        {
            ++totals.steadyOutputs;
            ++totals.reasons[reason];
        }
        else
            ADD_FAILURE() << "always the same: " << lamp.title();
    }

    ChartFixture fixture;
    const std::vector<ChartRow> chart;
    std::map<std::pair<int, int>, int> rowsAt; ///< of lamps, by address: some serve several layers
    std::map<juce::String, std::set<int>> values,
        seen; ///< of lamps; the second those that were known to be true
    std::set<juce::String> pressed, followed, lies;
    Totals totals;
};

class ChartOf : public testing::TestWithParam<int>
{
protected:
    static void TearDownTestSuite()
    {
        all.print ("all models");
        for (const auto& [reason, rows] : all.reasons)
            std::printf ("%5d rows: %s\n", rows, reason.toRawUTF8());
    }

    static inline Totals all;
};
}

TEST_P (ChartOf, EveryInputActsAndEveryLampTellsTheTruth)
{
    const auto totals = ChartRun (GetParam()).run();
    totals.print (juce::String (GetParam()).paddedLeft (' ', 2) + " " + ModelList::entry (GetParam()).name);
    all += totals;
}

INSTANTIATE_TEST_SUITE_P (Models, ChartOf, testing::ValuesIn (modelsWithTables()));
