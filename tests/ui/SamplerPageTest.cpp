#include "UiBench.h"

#include "../engine/EngineFixture.h"
#include "shared/ScriptedPrompts.h"
#include "ui/drag/FileDragSource.h"
#include "ui/sampler/OfferLoops.h"
#include "ui/sampler/SamplerDrag.h"
#include "ui/sampler/SamplerPad.h"

#include <gtest/gtest.h>

namespace
{
/** The page of the sampler with a sample on its first pad. */
struct PageBench : UiBench
{
    PageBench()
        : hit (EncodedFiles::writeWav (EncodedFiles::makeNoise (2, 48000, 48000.0), 48000.0,
                                       folder.file ("Hit.wav")))
    {
        editor->globalBlock().setCurrentTabIndex (GlobalComponent::sampler);
        engine.sampler.loadSample (0, hit);
        refresh();
    }

    SamplerPad& pad (int number) { return find<SamplerPad> (*editor, "_samplerPad" + juce::String (number)); }
    bool plays (int number)
    {
        return engine.sampler.desk.slots[static_cast<size_t> (number - 1)].playing != 0;
    }

    const juce::File hit;
};

/** A list from which one file is dragged. */
struct FileList : juce::Component, FileDragSource
{
    juce::StringArray draggedFiles() const override { return files; }
    juce::StringArray files;
};
}

TEST (SamplerPage, APadTellsItsSampleAndItsFault)
{
    PageBench bench;
    EXPECT_EQ (bench.pad (1).face().name, "Hit");
    EXPECT_EQ (bench.pad (1).face().length, "2 beats");
    EXPECT_EQ (bench.pad (2).face().name, "");
    bench.engine.sampler.setPlayMode (0, loopMode);
    bench.engine.sampler.loadSample (1, bench.folder.file ("none.wav"));
    bench.refresh();
    EXPECT_EQ (bench.pad (1).face().mode, "LOOP");
    EXPECT_EQ (bench.pad (2).face().length, "FAILED");
    EXPECT_EQ (bench.pad (2).getTooltip(), "The file does not exist.");
    bench.engine.sampler.clearSlot (1);
    bench.refresh();
    EXPECT_EQ (bench.pad (2).getTooltip(), bench.pad (1).getTooltip());
    for (const auto& [beats, text] : { std::pair { 0.0, "" },
                                       { 1.0, "1 beat" },
                                       { 0.125, "1/8 beats" },
                                       { 16.0, "16 beats" },
                                       { 2.5, "2.5 beats" } })
        EXPECT_EQ (SamplerPad::lengthText (beats), text);
}

TEST (SamplerPage, TheLeftButtonHoldsAPadAndTheRightOneDoesNotPlayIt)
{
    PageBench bench;
    bench.engine.sampler.setPlayMode (0, triggerMode);
    press (bench.pad (1));
    EXPECT_TRUE (bench.plays (1));
    bench.render();
    bench.refresh();
    EXPECT_TRUE (bench.pad (1).face().isPlaying);
    release (bench.pad (1));
    EXPECT_FALSE (bench.plays (1));
    release (bench.pad (1)); // one that no press went before, as after a menu
    EXPECT_FALSE (bench.plays (1));
}

TEST (SamplerPage, PadsTakeDragsOfFilesSongsLoopsAndPads)
{
    PageBench bench;
    const auto pathOf = [&] (int number)
    { return bench.engine.sampler.desk.slots[static_cast<size_t> (number - 1)].texts().filePath; };
    FileList list;
    const auto drag = [&] (const char* name, juce::Component& from, int number)
    {
        const juce::DragAndDropTarget::SourceDetails details (name, &from, {});
        auto& pad = bench.pad (number);
        const auto isTaken = pad.isInterestedInDragSource (details);
        if (isTaken)
            pad.itemDropped (details);
        return isTaken;
    };
    EXPECT_FALSE (drag (DragSourceName::table, list, 2)); // of nothing
    list.files = { bench.folder.file ("text.txt").getFullPathName(), bench.hit.getFullPathName() };
    EXPECT_TRUE (drag (DragSourceName::table, list, 2));
    EXPECT_TRUE (drag (DragSourceName::files, list, 3));
    EXPECT_FALSE (drag ("something else", list, 4));
    EXPECT_EQ (pathOf (2), bench.hit.getFullPathName());
    EXPECT_EQ (pathOf (3), bench.hit.getFullPathName());

    auto& pad = bench.pad (5);
    EXPECT_FALSE (pad.isInterestedInFileDrag ({ "/a/text.txt" }));
    EXPECT_TRUE (pad.isInterestedInFileDrag (list.files));
    pad.filesDropped (list.files, 1, 1);
    EXPECT_EQ (pathOf (5), bench.hit.getFullPathName());

    bench.load (bench.halfLoudTrack(), 0);
    bench.engine.decks.deck (0)->marks.bpm = 120.0;
    bench.engine.sampler.ghostRecordPreview (0, 5);
    for (const auto& [name, slot, source] :
         { std::tuple { SamplerDrag::ofWaveform, Sampler::preview,
                        &bench.find<juce::Component> (*bench.editor, "_samplerWaveform") },
           { SamplerDrag::ofPad, 0, static_cast<juce::Component*> (&bench.pad (1)) } })
    {
        SamplerDrag::start (*source, name, slot);
        EXPECT_TRUE (drag (name, *source, 7)) << name;
        EXPECT_EQ (bench.engine.sampler.desk.slots[6].lengthFrames,
                   bench.engine.sampler.desk.slots[static_cast<size_t> (slot)].lengthFrames)
            << name;
    }
    EXPECT_FALSE (drag (SamplerDrag::ofPad, bench.pad (1), 1)); // onto itself
}

TEST (SamplerPage, BoxesFollowTheEngineAndLeadIt)
{
    PageBench bench;
    auto& sampler = bench.engine.sampler;
    std::vector<juce::ComboBox*> boxes;
    for (auto* component : descendants (*bench.editor))
        if (auto* box = dynamic_cast<juce::ComboBox*> (component);
            box != nullptr && box->getName() == "_ghostComboBox")
            boxes.push_back (box);
    ASSERT_EQ (boxes.size(), 2u);
    EXPECT_EQ (boxes[0]->getNumItems(), 2); // the decks that are shown
    boxes[0]->setSelectedItemIndex (1, juce::sendNotificationSync);
    EXPECT_EQ (sampler.ghostDeck, 1);
    for (const auto& [index, text] : { std::pair { 0, "1/32" }, { 4, "1/2" }, { 5, "1" }, { 9, "16" } })
    {
        sampler.ghostLength = static_cast<int8_t> (index);
        bench.refresh();
        EXPECT_EQ (boxes[1]->getText(), text);
    }
    sampler.ghostDeck = 3; // as four decks have left it
    bench.reopen();
    EXPECT_EQ (sampler.ghostDeck, 0);
}

TEST (SamplerPage, LoopsThatNoFileHoldsAreOfferedOnce)
{
    EngineFixture fixture;
    const auto prompts = std::make_shared<ScriptedPrompts>();
    fixture.prompts = prompts;
    fixture.makeEngine();
    auto& engine = *fixture.engine;
    auto goneOn = 0;
    const auto offer = [&] { offerRecordedLoops (engine, [&] { ++goneOn; }); };
    offer();
    EXPECT_TRUE (prompts->asked.isEmpty());

    fixture.loadNoise (0);
    fixture.deck().marks.bpm = 120.0;
    engine.sampler.ghostRecordToPad (0, 3, 5);
    offer(); // no
    EXPECT_EQ (engine.sampler.unsavedLoops(), 1);
    prompts->yes = true;
    offer();
    EXPECT_EQ (engine.sampler.unsavedLoops(), 0);
    offer();
    EXPECT_EQ (goneOn, 4);
    EXPECT_EQ (prompts->asked.size(), 2);
    EXPECT_TRUE (prompts->asked[0].contains ("1 recorded loop is in no file of yours."));
}
