#include "../UiBench.h"
#include "shared/ScriptedPrompts.h"
#include "ui/slicegate/SlicegateComponent.h"
#include "ui/slicegate/SlicegateEditorComponent.h"
#include "ui/smartknob/DeckSmartKnobPanel.h"
#include "ui/smartknob/SmartKnobEditorComponent.h"
#include "ui/widgets/PXSlider.h"

#include <gtest/gtest.h>

#include <set>
#include <sys/stat.h>

namespace
{
/** All that can be chosen in a menu, below it too. */
std::map<int, juce::String> choices (const juce::PopupMenu& menu)
{
    std::map<int, juce::String> found;
    for (juce::PopupMenu::MenuItemIterator item (menu, true); item.next();)
        if (item.getItem().itemID > 0 && item.getItem().subMenu == nullptr)
        {
            EXPECT_FALSE (found.contains (item.getItem().itemID)) << item.getItem().itemID;
            found[item.getItem().itemID] = item.getItem().text;
        }
    return found;
}

juce::StringArray submenus (const juce::PopupMenu& menu)
{
    juce::StringArray names;
    for (juce::PopupMenu::MenuItemIterator item (menu); item.next();)
        if (item.getItem().subMenu != nullptr)
            names.add (item.getItem().text);
    return names;
}

template <class Menu>
juce::PopupMenu filled (Menu& menu)
{
    juce::PopupMenu made;
    menu.fill (made);
    return made;
}

/** An engine whose questions the test answers, and menus of its first pad and knob. */
struct Asked
{
    static EngineWorld worldIn (const juce::File& root, const std::shared_ptr<Prompts>& prompts)
    {
        EngineWorld world;
        world.folders.root = root;
        world.prompts = prompts;
        return world;
    }

    const TemporaryFolder folder;
    const std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    CPlatterdex engine { worldIn (folder, prompts) };
    juce::Component opener;
    PadMenu pad { engine, 0, 0 };
    SmartKnobMenu knob { engine, 0, 0 };
};

void runMessages()
{
    juce::MessageManager::getInstance()->runDispatchLoopUntil (20);
}
}

TEST (SlicegatePads, ThePopupHasAllPresetsUnderTheirIds)
{
    UiBench bench;
    SlicegateComponent view (bench.engine, 2);
    auto& menu = view.pad (3).menu();
    EXPECT_EQ (
        submenus (filled (menu)).joinIntoString ("|"),
        "Turntablist|Momentary|Stutter|Patterns|Gates|Dj Patterns|Dj Gates|Dj Scratch|Factory|User files");
    const auto all = choices (filled (menu));
    EXPECT_EQ (all.at (101), "2 Beat Rpt");
    EXPECT_EQ (all.at (1028), "Stutter Stall 3");
    EXPECT_FALSE (all.contains (300));

    auto& state = bench.engine.slicegates[2];
    menu.choose (101, view);
    EXPECT_EQ (state.padName (3), "2 Beat Rpt");
    menu.choose (PadMenu::firstMode + 2, view);
    EXPECT_EQ (state.playMode (3), PlayMode::loop);
    menu.choose (PadMenu::rolling, view);
    EXPECT_FALSE (state.advanceMode (3));
    menu.choose (PadMenu::clear, view);
    EXPECT_EQ (state.padName (3), "Empty");
}

TEST (SlicegatePads, APressPlaysAndThePictureFollows)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    bench.engine.setParameter (CommandTable::numberOf ("PLAY_PAUSE_A"), 1.0f);
    SlicegateComponent view (bench.engine, 0);
    view.setSize (216, 123);
    auto& pad = view.pad (0);
    const auto image = [&]
    {
        pad.poll();
        const auto picture = UiBench::picture (pad, "pad");
        juce::MemoryOutputStream bytes;
        juce::PNGImageFormat().writeImageToStream (picture, bytes);
        return bytes.getMemoryBlock();
    };
    const auto idle = image();
    press (pad);
    release (pad);
    bench.render (20000);
    const auto running = image();
    EXPECT_EQ (bench.engine.slicegates[0].padState (0), PadState::running);
    EXPECT_FALSE (idle == running);
    bench.render (20000);
    EXPECT_FALSE (running == image()) << "the bar grows";
    press (pad);
    release (pad);
    bench.render();
    EXPECT_TRUE (idle == image());
}

/** A file that is no preset is told in one sentence, and changes nothing. */
TEST (PresetFiles, ABrokenFileIsToldInOneSentence)
{
    Asked asked;
    auto& [folder, prompts, engine, opener, pad, knob] = asked;
    SmartKnobEditorComponent knobEditor (engine, 0, 0);
    SlicegateEditorComponent padEditor (engine, 0, 0);
    for (const auto* text :
         { "", "rubbish", "<other/>", "<sliceGatePreset version=\"2000\"><envelopes><Env data=\"03 00\"/>",
           "<smartKnobPreset version=\"2000\"><envelopes><Env data=\"zz\"/></envelopes></smartKnobPreset>" })
    {
        prompts->file = folder.file ("broken.xml");
        prompts->file.replaceWithText (text);
        const auto padBefore = engine.slicegates[0].revision (0);
        const auto knobBefore = engine.smartKnobs.revision (0, 0);
        for (const auto& act :
             std::vector<std::function<void()>> {
                 [&] { pad.choose (PadMenu::load, opener); },
                 [&] { knob.choose (SmartKnobMenu::load, opener); },
                 [&]
                 { dynamic_cast<juce::Button*> (padEditor.findChildWithID ("_importButton"))->onClick(); },
                 [&]
                 { dynamic_cast<juce::Button*> (knobEditor.findChildWithID ("_importButton"))->onClick(); } })
        {
            prompts->asked.clear();
            act();
            ASSERT_EQ (prompts->asked.size(), 2) << text; // the dialog, the sentence
            const auto sentence = prompts->asked[1].fromFirstOccurrenceOf ("|", false, false);
            EXPECT_TRUE (sentence.contains ("broken.xml") && sentence.endsWithChar ('.')) << sentence;
        }
        EXPECT_EQ (engine.slicegates[0].revision (0), padBefore) << text;
        EXPECT_EQ (engine.smartKnobs.revision (0, 0), knobBefore) << text;
    }
}

TEST (PresetFiles, ExportAddsTheEndingAndTheUsersFilesAreInTheMenu)
{
    Asked asked;
    auto& [folder, prompts, engine, opener, pad, knob] = asked;
    pad.choose (101, opener);
    knob.choose (101, opener);
    prompts->file = engine.environment.folders.slicegateFiles().getChildFile ("mine");
    pad.choose (PadMenu::save, opener);
    prompts->file = engine.environment.folders.smartknobFiles().getChildFile ("mine too");
    knob.choose (SmartKnobMenu::save, opener);
    ASSERT_EQ (mkfifo (prompts->file.getSiblingFile ("a pipe.xml").getFullPathName().toRawUTF8(), 0600), 0);
    EXPECT_EQ (prompts->asked.size(), 2) << prompts->asked.joinIntoString ("; ");

    const auto padCurve = engine.slicegates[0].timeCurves().copy (0);
    const auto knobCurve = engine.smartKnobs.bank (0, 0).copy (3);
    pad.choose (PadMenu::clear, opener);
    knob.choose (SmartKnobMenu::clear, opener);
    EXPECT_EQ (choices (filled (pad)).at (PresetFiles::firstId), "mine");
    EXPECT_EQ (choices (filled (knob)).at (PresetFiles::firstId), "mine too");
    pad.choose (PresetFiles::firstId, opener);
    knob.choose (PresetFiles::firstId, opener);
    EXPECT_TRUE (engine.slicegates[0].timeCurves().copy (0).isSameCurve (padCurve));
    EXPECT_TRUE (engine.smartKnobs.bank (0, 0).copy (3).isSameCurve (knobCurve));
}

TEST (PresetFiles, ABankGoesThroughTheMenuOfItsDeckWholeOrNotAtAll)
{
    Asked asked;
    auto& [folder, prompts, engine, opener, pad, knob] = asked;
    SlicegateComponent view (engine, 2);
    const auto& button = dynamic_cast<MenuButton&> (*view.findChildWithID ("_slicegateBankButton"));
    const auto choose = [&] (const char* text)
    {
        juce::PopupMenu menu;
        button.onFillMenu (menu);
        for (const auto& [id, each] : choices (menu))
            if (each == text)
                return button.onMenuChoice (id);
        ADD_FAILURE() << text;
    };
    const auto names = [&]
    {
        juce::StringArray all;
        for (int i = 0; i < padCount; ++i)
            all.add (PadMenu::nameOf (engine, 2, i));
        return all.joinIntoString ("|");
    };

    engine.slicegates[2].loadFactoryPreset (101, 7);
    const auto before = names();
    prompts->file = engine.environment.folders.slicegateFiles().getChildFile ("banks/mine");
    choose ("Save all pads...");
    choose ("Clear all pads");
    EXPECT_EQ (names(), "Empty|Empty|Empty|Empty|Empty|Empty|Empty|Empty");
    prompts->file = prompts->file.withFileExtension ("xml");
    choose ("Load all pads...");
    EXPECT_EQ (names(), before);
    EXPECT_EQ (prompts->asked.joinIntoString (", "), "Save the bank of pads..., Select a bank of pads...");

    prompts->file = folder.file ("one pad.xml");
    ASSERT_EQ (engine.slicegates[0].exportPreset (prompts->file, 0), "");
    choose ("Load all pads...");
    EXPECT_EQ (names(), before);
    EXPECT_TRUE (prompts->asked[prompts->asked.size() - 1].contains ("one pad.xml")) << prompts->asked[2];
}

TEST (SmartKnobPanel, ThePopupHasAllPresetsUnderTheirIds)
{
    UiBench bench;
    DeckSmartKnobPanel panel (bench.engine, 1);
    EXPECT_EQ (submenus (filled (panel.menu (1))).joinIntoString ("|"), "Fx & Mix|Basic|Macro|User files");
    const auto all = choices (filled (panel.menu (1)));
    EXPECT_EQ (all.at (300), "Empty");
    EXPECT_EQ (std::count_if (all.begin(), all.end(), [] (const auto& item) { return item.first >= 100; }),
               54);
    panel.menu (1).choose (301, panel);
    EXPECT_EQ (bench.engine.smartKnobs.name (1, 1), "2 Delay Overload MO");
}

TEST (SmartKnobPanel, AHeldControlMovesAndIsMarked)
{
    UiBench bench;
    bench.load (bench.halfLoudTrack(), 0);
    auto& knobs = bench.engine.smartKnobs;
    auto& bank = knobs.bank (0, 0);
    bank.setEnabled (static_cast<int> (SmartKnobRow::filter), true);
    bench.refresh();
    auto& channel = bench.find<PXSlider> (*bench.editor, "_filterSlider");
    auto& panel = *channel.getParentComponent();
    const auto mark = [&]
    { return UiBench::picture (panel, "channel").getPixelAt (channel.getRight() - 3, channel.getY() + 3); };
    const auto rest = channel.getValue();
    const auto before = mark();
    knobs.setSmartKnobOn (0, 0, true);
    knobs.setSmartKnobValue (0, 0, 0.8);
    bench.render();
    bench.refresh();
    EXPECT_NEAR (channel.getValue(), bank.copy (3).evaluate (3.2), 1e-3);
    EXPECT_NE (mark(), before);
    knobs.setSmartKnobOn (0, 0, false);
    bench.render();
    bench.refresh();
    EXPECT_NEAR (channel.getValue(), rest, 1e-6);
    EXPECT_EQ (mark(), before);
}

TEST (InstrumentEditors, OpenOnceUnderTheirTitlesAndClose)
{
    UiBench bench;
    auto& windows = bench.editor->toolWindows();
    for (int turn = 0; turn < 2; ++turn)
    {
        SlicegateEditorComponent::open (bench.engine, 1, 7, bench.editor->globalBlock());
        SmartKnobEditorComponent::open (bench.engine, 0, 1, bench.editor->globalBlock());
    }
    auto* pad = windows.find ("Slicegate Editor for pad B.8");
    ASSERT_NE (pad, nullptr);
    ASSERT_NE (windows.find ("Deck A SmartKnob #2 Editor"), nullptr);
    pad->keyPressed (juce::KeyPress (juce::KeyPress::escapeKey));
    runMessages();
    EXPECT_EQ (windows.find ("Slicegate Editor for pad B.8"), nullptr);
}

TEST (InstrumentEditors, TheTableTicksAndChoosesCurves)
{
    UiBench bench;
    SmartKnobEditorComponent editor (bench.engine, 0, 0);
    editor.setVisible (true);
    UiBench::picture (editor, "knob-editor");
    auto& bank = bench.engine.smartKnobs.bank (0, 0);
    auto& tick = bench.find<juce::ToggleButton> (editor);
    EXPECT_EQ (tick.getTooltip(), "Indicates envelope visibility.");
    tick.setToggleState (true, juce::sendNotificationSync);
    EXPECT_TRUE (bank.isVisible (0));
    bench.find<juce::TableListBox> (editor).selectRow (5);
    EXPECT_EQ (editor.curves().selectedLane(), 5);
    EXPECT_EQ (editor.curves().envelope().pointCount(), 2);
}
