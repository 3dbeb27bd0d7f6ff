#include "UiBench.h"

#include "engine/CommandTable.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
template <typename View>
std::vector<View*> all (juce::Component& parent)
{
    std::vector<View*> found;
    for (auto* component : descendants (parent))
        if (auto* view = dynamic_cast<View*> (component))
            found.push_back (view);
    return found;
}

template <typename View>
std::vector<View*> all (UiBench& bench)
{
    return all<View> (*bench.editor);
}
}

TEST (MixerViews, EveryKnobAndFaderDrivesItsOwnCommandAndFollowsIt)
{
    UiBench bench;
    const auto sliders = all<CommandSlider> (bench);
    EXPECT_EQ (sliders.size(), 4u * (5u + 5u + 1u) + 4u);
    std::map<int, float> written;
    for (size_t i = 0; i < sliders.size(); ++i)
    {
        const auto value = 0.1f + 0.015f * static_cast<float> (i);
        sliders[i]->setValue (value, juce::sendNotificationSync);
        EXPECT_TRUE (written.emplace (sliders[i]->commandNumber(), value).second);
    }
    for (const auto& [number, value] : written)
        EXPECT_NEAR (bench.engine.getParameter (number), value, 1e-6) << CommandTable::name (number);

    for (auto* slider : sliders)
        bench.engine.setParameter (slider->commandNumber(), 0.75f);
    bench.refresh();
    for (auto* slider : sliders)
    {
        EXPECT_EQ (slider->getValue(), 0.75);
        slider->mouseDoubleClick (
            mouseAt (*slider, { 4.0f, 4.0f }, juce::ModifierKeys::leftButtonModifier, 2));
        EXPECT_EQ (bench.engine.getParameter (slider->commandNumber()),
                   static_cast<float> (slider->getDoubleClickReturnValue()));
    }
    EXPECT_EQ (bench.engine.decks.deck (3)->volume, 1.0);
    EXPECT_EQ (bench.engine.settings.crossfader, 0.5);
    EXPECT_EQ (bench.engine.settings.monitorMix, 0.0);
}

TEST (MixerViews, ButtonsOfAStripPlayTheirDeck)
{
    UiBench bench;
    auto& row = bench.button (2, "PFL");
    row.mouseDown (mouseAt (row, { 4.0f, 4.0f }));
    row.mouseUp (mouseAt (row, { 4.0f, 4.0f }));
    EXPECT_EQ (bench.engine.settings.deckSetup[2].pfl, 1);
    bench.refresh();
    EXPECT_TRUE (row.getToggleState());
    EXPECT_TRUE (bench.button (1, "X R").getToggleState());
    EXPECT_FALSE (bench.button (1, "X L").getToggleState());
}

TEST (EffectViews, EachSlotChoosesSwitchesAndNamesItsOwnEffect)
{
    UiBench bench;
    auto rows = all<EffectRow> (bench);
    ASSERT_EQ (rows.size(), 4u);
    int kind = 0;
    for (size_t deck = 0; deck < rows.size(); ++deck)
        for (size_t slot = 0; slot < EffectRow::slotCount; ++slot, kind = (kind + 3) % FxType::count)
        {
            const auto& state = bench.engine.effectRacks[deck].slot (static_cast<int> (slot));
            rows[deck]->choose (slot, kind);
            EXPECT_EQ (state.selected(), kind);
            auto& on = *all<CommandButton> (*rows[deck])[slot];
            EXPECT_EQ (on.getButtonText(), FxType::name (kind));
            for (const auto expected : { true, false })
            {
                on.mouseDown (mouseAt (on, { 4.0f, 4.0f }));
                on.mouseUp (mouseAt (on, { 4.0f, 4.0f }));
                bench.refresh();
                EXPECT_EQ (state.isOn(), expected);
                EXPECT_EQ (on.getToggleState(), expected);
            }
        }

    bench.editor->setSize (CPlatterdexVstEditor::minimumWidth, CPlatterdexVstEditor::minimumHeight);
    bench.load (bench.folder.file ("missing.wav"), 3);
    UiBench::picture (*bench.editor, "effects");

    rows[1]->choose (0, FxType::delay);
    bench.engine.setParameter (CommandTable::numberOf ("EFFECT_PARAM_1_GROUP_B"), 0.0f);
    bench.refresh();
    const auto before = rows[1]->parameterText (0);
    bench.engine.setParameter (CommandTable::numberOf ("EFFECT_PARAM_1_GROUP_B"), 1.0f);
    bench.refresh();
    EXPECT_NE (rows[1]->parameterText (0), before);
    EXPECT_TRUE (before.isNotEmpty() && rows[1]->parameterText (0).isNotEmpty());
}

TEST (MixerViews, MetersShowTheLevelsOfWhatPlays)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 1);
    bench.engine.decks.deck (1)->autogain = 1.0;
    bench.engine.transport.playPause (1);
    for (int i = 0; i < 40; ++i)
        bench.render();
    bench.refresh();
    const auto meters = all<LevelMeter> (bench);
    ASSERT_EQ (meters.size(), 5u);
    for (auto* meter : meters)
    {
        const auto master = meter->lengths().size() == 2;
        const auto full = std::max (meter->getWidth(), meter->getHeight());
        const auto isDeckB = meter->getParentComponent()->getParentComponent() == &bench.editor->deckRow (1);
        for (const auto length : meter->lengths())
        {
            EXPECT_EQ (length > 0, master || isDeckB);
            EXPECT_LE (length, full);
            EXPECT_NEAR (length, master ? full * (1.0 - 1.94 / 60.0) : length, 3.0); // 0.8 of full scale
        }
    }
}
