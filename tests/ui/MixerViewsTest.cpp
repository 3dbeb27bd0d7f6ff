#include "UiBench.h"

#include "engine/CommandTable.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
template <typename View>
std::vector<View*> all (UiBench& bench)
{
    std::vector<View*> found;
    for (auto* component : descendants (*bench.editor))
        if (auto* view = dynamic_cast<View*> (component))
            found.push_back (view);
    return found;
}
}

TEST (MixerViews, EveryKnobAndFaderDrivesItsOwnCommandAndFollowsIt)
{
    UiBench bench;
    const auto sliders = all<CommandSlider> (bench);
    EXPECT_EQ (sliders.size(), 4u * 5u + 4u);
    std::map<int, float> written;
    for (size_t i = 0; i < sliders.size(); ++i)
    {
        const auto value = 0.1f + 0.03f * static_cast<float> (i);
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
