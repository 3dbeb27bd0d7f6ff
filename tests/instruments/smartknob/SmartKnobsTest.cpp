#include "KnobDesk.h"

#include "instruments/presets/SmartKnobLibrary.h"
#include "shared/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
using Id = ChannelParameter;

/** A preset whose named rows go straight from one level to another. */
struct Way
{
    SmartKnobRow row;
    float from, to;
};

SmartKnobPreset presetOf (std::initializer_list<Way> ways)
{
    auto preset = SmartKnobPreset::empty();
    for (const auto& way : ways)
    {
        auto& row = preset.rows[static_cast<size_t> (way.row)];
        std::array<EnvelopePoint, 2> points;
        points[0].delta = 0.0;
        points[0].value = way.from;
        points[1].delta = 4.0;
        points[1].value = way.to;
        points[0].tension = points[1].tension = 0.0f;
        row.envelope.setPoints (points);
        row.enabled = true;
    }
    return preset;
}

std::vector<double> valuesOf (KnobDesk& desk)
{
    std::vector<double> values;
    for (int id = 0; id < static_cast<int> (Id::count); ++id)
        values.push_back (desk.get (static_cast<Id> (id)));
    for (int slot = 0; slot < EffectRack::slotCount; ++slot)
        for (int effect = 0; effect < FxType::count; ++effect)
            values.push_back (desk.channels[0].effects.slot (slot).step (effect));
    return values;
}

void turnTo (KnobDesk& desk, int knob, double value)
{
    desk.knobs.setSmartKnobValue (0, knob, value);
    desk.runBlock();
}
}

TEST (SmartKnobs, RowsReachTheirParametersAndTheEndReadsTheCurvesEnd)
{
    struct Case
    {
        SmartKnobRow row;
        Id parameter;
        double atNothing, inside, atEnd; ///< of a curve from 0.2 to 0.9, at 0, 0.3 and 1
    };
    using Row = SmartKnobRow;
    constexpr auto level = 0.2 + 0.3 * 0.7;
    const Case cases[] {
        { Row::eqLow, Id::eqLow, 0.2, level, 0.9 },
        { Row::eqMid, Id::eqMid, 0.2, level, 0.9 },
        { Row::eqHigh, Id::eqHigh, 0.2, level, 0.9 },
        { Row::filter, Id::filter, 0.2, level, 0.9 },
        { Row::fx1Select, Id::fxSelect1, 0.2, level, 0.9 },
        { Row::fx3Select, Id::fxSelect3, 0.2, level, 0.9 },
        { Row::dryWet, Id::fxDryWet, 0.2, level, 0.9 },
        { Row::fx1On, Id::fxOn1, 0.0, 0.0, 1.0 },
        { Row::fx3On, Id::fxOn3, 0.0, 0.0, 1.0 },
        { Row::fxFrequency, Id::fxFrequency, 0.2, level, 0.9 },
        { Row::fx1Param, Id::fxStep1, 0.2, level, 0.9 },
        { Row::fx3Param, Id::fxStep3, 0.2, level, 0.9 },
        { Row::volume, Id::volumeFactor, 0.2, level, 0.9 },
    };
    for (const auto& each : cases)
    {
        KnobDesk desk;
        desk.knobs.loadSmartKnobPreset (0, 0, presetOf ({ { each.row, 0.2f, 0.9f } }));
        desk.knobs.setSmartKnobOn (0, 0, true);
        for (const auto& [place, value] : { std::pair { 0.0, each.atNothing },
                                            { 0.3, each.inside },
                                            { 1.0, each.atEnd },
                                            { 7.0, each.atEnd },
                                            { -1.0, each.atNothing },
                                            { NAN, each.atNothing } })
        {
            turnTo (desk, 0, place);
            EXPECT_NEAR (desk.get (each.parameter), value, 1e-6)
                << SmartKnobRows::row (static_cast<int> (each.row)).name << " at " << place;
        }
        EXPECT_TRUE (desk.knobs.holds (0, each.parameter));
    }
}

TEST (SmartKnobs, ADisabledRowLeavesItsTargetAndAPluginRowOnlyTellsItsValue)
{
    KnobDesk desk;
    auto preset =
        presetOf ({ { SmartKnobRow::filter, 0.0f, 1.0f }, { SmartKnobRow::pluginParam2, 0.0f, 1.0f } });
    preset.rows[static_cast<size_t> (SmartKnobRow::filter)].enabled = false;
    desk.knobs.loadSmartKnobPreset (0, 0, preset);
    desk.knobs.setSmartKnobOn (0, 0, true);
    turnTo (desk, 0, 0.75);
    EXPECT_EQ (desk.get (Id::filter), 0.5);
    EXPECT_FALSE (desk.knobs.holds (0, Id::filter));
    EXPECT_NEAR (desk.knobs.drivenValue (0, static_cast<int> (SmartKnobRow::pluginParam2)).value(), 0.75,
                 1e-6);
    EXPECT_FALSE (desk.knobs.drivenValue (0, static_cast<int> (SmartKnobRow::filter)));
}

TEST (SmartKnobs, TheSecondKnobWinsAndOnlyTheLastToGoOffRestores)
{
    KnobDesk desk;
    desk.knobs.loadSmartKnobPreset (
        0, 0, presetOf ({ { SmartKnobRow::eqLow, 0.1f, 0.1f }, { SmartKnobRow::eqMid, 0.2f, 0.2f } }));
    desk.knobs.loadSmartKnobPreset (0, 1, presetOf ({ { SmartKnobRow::eqLow, 0.9f, 0.9f } }));
    desk.knobs.setSmartKnobOn (0, 0, true);
    desk.runBlock();
    desk.knobs.setSmartKnobOn (0, 1, true);
    desk.runBlock();
    EXPECT_NEAR (desk.get (Id::eqLow), 0.9, 1e-6);
    desk.knobs.setSmartKnobOn (0, 0, false);
    desk.runBlock();
    EXPECT_NEAR (desk.get (Id::eqMid), 0.2, 1e-6);
    EXPECT_NEAR (desk.get (Id::eqLow), 0.9, 1e-6);
    desk.knobs.setSmartKnobOn (0, 1, false);
    EXPECT_EQ (desk.get (Id::eqMid), 0.5);
    EXPECT_EQ (desk.get (Id::eqLow), 0.5);
}

TEST (SmartKnobs, AHandTakesAHeldControlOverUntilAKnobComesOnAgain)
{
    KnobDesk desk;
    desk.knobs.loadSmartKnobPreset (
        0, 0, presetOf ({ { SmartKnobRow::filter, 0.0f, 1.0f }, { SmartKnobRow::eqLow, 0.0f, 1.0f } }));
    desk.knobs.setSmartKnobOn (0, 0, true);
    turnTo (desk, 0, 0.2);
    desk.moveByHand (Id::filter, 0.6);
    desk.moveByHand (Id::eqHigh, 0.1); // beside the knobs
    turnTo (desk, 0, 0.9);
    EXPECT_EQ (desk.get (Id::filter), 0.6);
    EXPECT_FALSE (desk.knobs.holds (0, Id::filter));
    EXPECT_NEAR (desk.get (Id::eqLow), 0.9, 1e-6);

    desk.knobs.setSmartKnobOn (0, 0, false);
    EXPECT_EQ (desk.get (Id::filter), 0.6);
    EXPECT_EQ (desk.get (Id::eqHigh), 0.1);
    EXPECT_EQ (desk.get (Id::eqLow), 0.5);

    desk.knobs.setSmartKnobOn (0, 0, true);
    desk.runBlock();
    EXPECT_TRUE (desk.knobs.holds (0, Id::filter));
    EXPECT_NEAR (desk.get (Id::filter), 0.9, 1e-6);
}

TEST (SmartKnobs, EveryPresetPutsBackAllThatItHasMoved)
{
    KnobDesk desk;
    desk.moveByHand (Id::eqMid, 0.37);
    desk.moveByHand (Id::fxSelect2, 0.93);
    desk.moveByHand (Id::fxStep2, 0.21);
    desk.moveByHand (Id::fxOn3, 1.0);
    const auto before = valuesOf (desk);
    for (const auto& group : SmartKnobLibrary::groups())
        for (const auto& entry : group.entries)
        {
            ASSERT_EQ (SmartKnobLibrary::loadFactory (desk.knobs, 0, 1, entry.id), "");
            desk.knobs.setSmartKnobOn (0, 1, true);
            for (int i = 0; i <= 100; ++i)
                turnTo (desk, 1, i / 100.0);
            desk.knobs.setSmartKnobOn (0, 1, false);
            desk.runBlock();
            EXPECT_EQ (valuesOf (desk), before) << entry.name;
        }
}

TEST (SmartKnobs, APresetLoadedIntoAKnobThatIsOnStartsFromTheChannelAsItWas)
{
    KnobDesk desk;
    desk.knobs.loadSmartKnobPreset (0, 0, presetOf ({ { SmartKnobRow::filter, 0.1f, 0.1f } }));
    desk.knobs.setSmartKnobOn (0, 0, true);
    desk.runBlock();
    auto next = presetOf ({ { SmartKnobRow::eqHigh, 0.1f, 0.1f }, { SmartKnobRow::pluginOn, 0.0f, 1.0f } });
    desk.knobs.loadSmartKnobPreset (0, 0, next, SmartKnobLibrary::rowsOfChannel);
    desk.runBlock();
    EXPECT_EQ (desk.get (Id::filter), 0.5);
    EXPECT_NEAR (desk.get (Id::eqHigh), 0.1, 1e-6);
    EXPECT_FALSE (desk.knobs.bank (0, 0).isEnabled (static_cast<int> (SmartKnobRow::pluginOn)));
}

TEST (SmartKnobs, NothingHappensWithoutATrackOrBeyondTheKnobsButAKnobCanAlwaysGoOff)
{
    KnobDesk desk;
    desk.knobs.loadSmartKnobPreset (0, 0, presetOf ({ { SmartKnobRow::filter, 0.1f, 0.1f } }));
    desk.knobs.setSmartKnobOn (0, 2, true);
    desk.knobs.setSmartKnobOn (4, 0, true);
    desk.knobs.setSmartKnobOn (0, 0, true);
    desk.runBlock();
    desk.world.decks[0]->track.loadedFrames = 0;
    desk.knobs.setSmartKnobOn (0, 0, false);
    EXPECT_EQ (desk.get (Id::filter), 0.5);
    desk.knobs.setSmartKnobOn (0, 0, true);
    EXPECT_FALSE (desk.knobs.isOn (0, 0));
}

TEST (SmartKnobs, NoRowClicksWhenItsKnobTurnsOrSwitches)
{
    struct Case
    {
        std::initializer_list<Way> ways;
        const char* name;
    };
    using Row = SmartKnobRow;
    const Case cases[] {
        { { { Row::eqLow, 0.5f, 0.0f }, { Row::eqMid, 0.5f, 1.0f }, { Row::eqHigh, 0.5f, 0.0f } }, "EQ" },
        { { { Row::filter, 0.5f, 1.0f } }, "high-pass" },
        { { { Row::filter, 0.5f, 0.0f } }, "low-pass" },
        { { { Row::volume, 1.0f, 0.0f } }, "volume" },
        { { { Row::fx2On, 0.0f, 1.0f }, { Row::dryWet, 0.0f, 1.0f }, { Row::fx2Param, 0.0f, 1.0f } },
          "phaser" },
        { { { Row::fx1Select, 0.95f, 0.95f }, { Row::fx1On, 0.0f, 1.0f }, { Row::dryWet, 0.2f, 0.8f } },
          "reverb" },
        { { { Row::fx1Select, 0.35f, 0.45f }, { Row::fx1On, 1.0f, 1.0f }, { Row::dryWet, 1.0f, 1.0f } },
          "filters" },
    };
    const auto tone = Signals::sine (90.0, KnobDesk::rate, static_cast<int> (2.5 * KnobDesk::rate));
    for (const auto& each : cases)
    {
        KnobDesk desk;
        desk.knobs.loadSmartKnobPreset (0, 0, presetOf (each.ways));
        const auto hand = [&] (int frame)
        {
            const auto seconds = frame / KnobDesk::rate;
            desk.knobs.setSmartKnobOn (0, 0, seconds > 0.3 && seconds < 2.0);
            // A sweep, then jumps from end to end.
            desk.knobs.setSmartKnobValue (0, 0,
                                          seconds < 1.3 ? seconds - 0.3 : std::fmod (seconds, 0.2) > 0.1);
        };
        const auto out = desk.play ({ tone, tone }, hand);
        // The second difference: 90 Hz have next to none, a step has all of its height.
        auto worst = 0.0;
        for (size_t i = 2000; i < out.left.size(); ++i)
            worst = std::max (worst, std::abs (static_cast<double> (out.left[i] - 2.0f * out.left[i - 1]
                                                                    + out.left[i - 2])));
        EXPECT_LT (worst, 0.01) << each.name;
    }
}
