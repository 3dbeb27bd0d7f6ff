#include "instruments/slicegate/FactoryPresets.h"

#include <gtest/gtest.h>

#include <set>

TEST (SlicegatePreset, ComesBackFromItsFile)
{
    auto preset = FactoryPresets::preset (609);
    preset.name = "Crab & <claws>";
    preset.time.visible = false;
    preset.volume.enabled = false;
    preset.playMode = PlayMode::loop;
    preset.rolling = false;
    const auto read = readSlicegatePreset (writeSlicegatePreset (preset));
    ASSERT_TRUE (std::holds_alternative<SlicegatePreset> (read)) << std::get<std::string> (read);
    const auto& back = std::get<SlicegatePreset> (read);
    EXPECT_EQ (back.name, preset.name);
    EXPECT_TRUE (back.time.envelope.isSameCurve (preset.time.envelope));
    EXPECT_TRUE (back.volume.envelope.isSameCurve (preset.volume.envelope));
    EXPECT_TRUE (!back.time.visible && back.time.enabled && back.volume.visible && !back.volume.enabled);
    EXPECT_TRUE (back.playMode == PlayMode::loop && back.rolling == false);
}

TEST (SlicegatePreset, TellsWhyAFileIsNone)
{
    const auto whole = writeSlicegatePreset (FactoryPresets::preset (105));
    const auto with = [&whole] (const std::string& text, const std::string& other)
    {
        auto changed = whole;
        return changed.replace (changed.find (text), text.size(), other);
    };
    const std::string faulty[] { "",
                                 "no preset",
                                 whole.substr (0, whole.size() / 2),
                                 with ("<sliceGatePreset", "<smartKnobPreset"),
                                 with ("data=\"03 00", "data=\"07 00"),
                                 with ("data=\"03", "data=\"zz"),
                                 with ("</envelopes>", "") };
    for (const auto& text : faulty)
    {
        const auto read = readSlicegatePreset (text);
        ASSERT_TRUE (std::holds_alternative<std::string> (read)) << text.substr (0, 60);
        EXPECT_FALSE (std::get<std::string> (read).empty());
    }
}

TEST (SlicegatePreset, LimitsItsOptionsAndKeepsThoseThatItDoesNotSay)
{
    const auto whole = writeSlicegatePreset (FactoryPresets::preset (105));
    const auto options = whole.find ("  <options>"), end = whole.find ("</options>") + 10;
    const auto read = [&] (const std::string& text)
    {
        auto changed = whole;
        return std::get<SlicegatePreset> (
            readSlicegatePreset (changed.replace (options, end - options, text)));
    };
    EXPECT_FALSE (read ("").playMode.has_value());
    EXPECT_FALSE (read ("").rolling.has_value());
    const auto odd = read ("<options><value advance_mode=\"-9\" play_mode=\"77\"/></options>");
    EXPECT_TRUE (odd.playMode == PlayMode::loop && odd.rolling == false);
    const auto none = read ("<options/>");
    EXPECT_TRUE (none.playMode == PlayMode::oneShot && none.rolling == true);
}

TEST (FactoryPresets, HoldACurveOfFourBeatsForEachName)
{
    const std::pair<int, size_t> counts[] { { 100, 36 }, { 200, 36 },  { 300, 8 },  { 400, 35 },
                                            { 501, 29 }, { 600, 36 },  { 700, 36 }, { 800, 36 },
                                            { 900, 36 }, { 1000, 29 }, { 1100, 33 } };
    ASSERT_EQ (FactoryPresets::groups().size(), std::size (counts));
    for (size_t g = 0; g < std::size (counts); ++g)
    {
        const auto& group = FactoryPresets::groups()[g];
        EXPECT_EQ (group.presets.front().id, counts[g].first);
        EXPECT_EQ (group.presets.size(), counts[g].second) << group.name;
        for (size_t i = 0; i < group.presets.size(); ++i)
        {
            const auto id = group.presets[i].id;
            EXPECT_EQ (id, counts[g].first + static_cast<int> (i));
            EXPECT_FALSE (group.presets[i].name.empty());
            const auto preset = FactoryPresets::preset (id);
            EXPECT_EQ (preset.name, group.presets[i].name);
            for (const auto* curve : { &preset.time.envelope, &preset.volume.envelope })
                for (double t = 0.0; t <= 4.0; t += 1.0 / 96.0)
                    EXPECT_NEAR (curve->evaluate (t), 0.5, 0.5 + 1e-9) << id << " at " << t;
            EXPECT_GE (preset.time.envelope.absoluteTime (511), 4.0) << id;
            EXPECT_GE (preset.volume.envelope.absoluteTime (511), 4.0) << id;
        }
    }
    for (const int id : { -1, 0, 99, 150, 435, 1133 })
        EXPECT_EQ (FactoryPresets::nameOf (id), "Empty") << id;
    EXPECT_EQ (FactoryPresets::menu().size(), 9u);
    EXPECT_EQ (FactoryPresets::menu().front()->name, "Turntablist");
}
