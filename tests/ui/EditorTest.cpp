#include "UiBench.h"

#include "engine/CommandTable.h"
#include "ui/ParameterRow.h"

#include <gtest/gtest.h>

namespace
{
/** No visible child lies outside its parent or over one of its siblings. */
void expectTidy (juce::Component& parent)
{
    const auto name = [] (juce::Component& c)
    { return juce::String (typeid (c).name()) + " " + c.getName(); };
    for (auto* child : parent.getChildren())
    {
        if (!child->isVisible() || dynamic_cast<juce::TooltipWindow*> (child) != nullptr)
            continue;
        EXPECT_TRUE (parent.getLocalBounds().contains (child->getBounds())) << name (*child);
        const auto smallest =
            dynamic_cast<LevelMeter*> (child) != nullptr ? 8 : 22; // a hand must hit the others
        EXPECT_GE (juce::jmin (child->getWidth(), child->getHeight()), smallest) << name (*child);
        for (auto* other : parent.getChildren())
        {
            const auto overlaps =
                other != child && other->isVisible() && child->getBounds().intersects (other->getBounds());
            EXPECT_FALSE (overlaps) << name (*child) << " over " << name (*other);
        }
    }
}

std::vector<juce::Rectangle<int>> parts (const DeckRowLayout& layout)
{
    std::vector all { layout.stripe,    layout.letter,   layout.load,       layout.title,     layout.state,
                      layout.tempo,     layout.position, layout.length,     layout.waveform,  layout.play,
                      layout.cue,       layout.sync,     layout.nudgeMinus, layout.nudgePlus, layout.pitch,
                      layout.pitchText, layout.channel,  layout.effects,    layout.keyLock,   layout.keyLabel,
                      layout.keyTuning };
    all.insert (all.end(), layout.hotCues.begin(), layout.hotCues.end());
    return all;
}
}

TEST (Editor, NothingOverlapsOrLeavesTheWindowAtAnySize)
{
    UiBench bench;
    for (const auto& [width, height] :
         { std::pair { CPlatterdexVstEditor::minimumWidth, CPlatterdexVstEditor::minimumHeight },
           { 1280, 800 },
           { 2560, 1440 } })
    {
        SCOPED_TRACE (width);
        bench.editor->setSize (width, height);
        EXPECT_EQ (bench.editor->getWidth(), width);
        expectTidy (*bench.editor);
        for (auto* component : descendants (*bench.editor))
            if (dynamic_cast<PollingView*> (component) != nullptr)
                expectTidy (*component);
    }
}

TEST (Editor, PartsOfARowStandApart)
{
    for (const auto& row : { juce::Rectangle<int> (DeckRowLayout::minimumWidth, DeckRowLayout::minimumHeight),
                             juce::Rectangle<int> (1084, 143), juce::Rectangle<int> (3000, 500) })
    {
        const auto all = parts (DeckRowLayout (row));
        for (size_t i = 0; i < all.size(); ++i)
        {
            EXPECT_TRUE (row.contains (all[i]) && !all[i].isEmpty()) << i;
            for (size_t j = i + 1; j < all.size(); ++j)
                EXPECT_FALSE (all[i].intersects (all[j])) << i << " and " << j;
        }
    }
}

TEST (Editor, CanBePaintedInEveryState)
{
    UiBench bench;
    UiBench::picture (*bench.editor, "empty");
    bench.load (bench.halfLoudTrack(), 0);
    bench.load (bench.halfLoudTrack(), 1);
    bench.engine.transport.playPause (1);
    for (int i = 0; i < 100; ++i)
        bench.render();
    bench.engine.transport.setCue (1, 1);
    bench.engine.transport.setCue (1, 7);
    bench.engine.toggleRecorder();
    bench.render (48000);
    bench.editor->setStatus ("Writing the demo tracks...");
    bench.refresh();
    bench.editor->setSize (CPlatterdexVstEditor::minimumWidth, CPlatterdexVstEditor::minimumHeight);
    const auto image = UiBench::picture (*bench.editor, "playing");
    EXPECT_EQ (image.getPixelAt (20, HeaderBar::height + 200), Look::deckHue (1))
        << "the playing deck's letter";
    bench.editor->showParameters (true);
    UiBench::picture (*bench.editor, "parameters");
    bench.engine.toggleRecorder();
}

TEST (Editor, ShowsTheTimeOfARecordingOnlyWhileItRuns)
{
    UiBench bench;
    HeaderBar* header = nullptr;
    for (auto* child : bench.editor->getChildren())
        if (auto* found = dynamic_cast<HeaderBar*> (child))
            header = found;
    ASSERT_NE (header, nullptr);
    bench.refresh();
    EXPECT_EQ (header->recordedTime(), "--:--.-");
    bench.render(); // the recorder takes the engine's rate
    bench.engine.toggleRecorder();
    bench.render (96000);
    bench.refresh();
    EXPECT_EQ (header->recordedTime(), "00:02.0");
    bench.engine.toggleRecorder();
    bench.refresh();
    EXPECT_EQ (header->recordedTime(), "--:--.-");
}

TEST (Editor, ListsEveryCommandAndHasControlsForTheBuiltOnes)
{
    UiBench bench;
    ParameterList list (bench.engine);
    list.setSize (1024, 600);
    EXPECT_EQ (list.getNumRows(), CommandTable::commandCount);
    list.search ("hot CUE b");
    EXPECT_EQ (list.getNumRows(), 16);
    list.search ("no such thing");
    EXPECT_EQ (list.getNumRows(), 0);

    ParameterRow row (bench.engine);
    row.setSize (900, 28);
    for (int number = 1; number <= CommandTable::commandCount; ++number)
    {
        row.show (number);
        EXPECT_EQ (row.getNumChildComponents() == 0, CommandTable::isUnbuilt (number)) << number;
        for (auto* control : row.getChildren())
            EXPECT_TRUE (row.getLocalBounds().contains (control->getBounds()) && control->getWidth() > 0);
    }
}

TEST (Editor, ListedSlidersWriteAndReadTheSameWay)
{
    UiBench bench;
    for (const auto* constant : { "PITCH_A", "BALANCE_B", "KEY_TUNING_C" })
    {
        ParameterRow row (bench.engine);
        row.setSize (900, 28);
        row.show (CommandTable::numberOf (constant));
        auto* slider = dynamic_cast<juce::Slider*> (row.getChildComponent (0));
        ASSERT_NE (slider, nullptr) << constant;
        slider->setValue (0.3, juce::sendNotificationSync);
        row.refresh();
        EXPECT_NEAR (slider->getValue(), 0.3, 1e-6) << constant;
    }
}
