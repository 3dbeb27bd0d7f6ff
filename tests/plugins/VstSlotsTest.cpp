#include "SlotsBench.h"

#include "shared/Signals.h"
#include "shared/TemporaryFolder.h"

#include <gtest/gtest.h>

TEST (VstSlots, LetInOnlyPluginsThatPassTheirTrial)
{
    struct Case
    {
        const char *behaviour, *fault;
    };
    SlotsBench bench;
    bench.fixture.render (512);
    for (const auto& [behaviour, fault] :
         { Case { "gain", "" }, Case { "crash_process", "It crashed when it was tried." },
           Case { "no_output", "is not known" }, Case { "many", "It has more than 32 channels." },
           Case { "mono", "" }, Case { "no_input", "" }, Case { "one_in_six_out", "" },
           Case { "huge_state", "" }, Case { "nothing", "is not known" },
           Case { "crash_scan", "is not known" }, Case { "nan", "" } })
    {
        const auto said = bench.slots->loadNow (0, pluginPath (behaviour));
        EXPECT_TRUE (said.contains (fault) && said.isEmpty() == (*fault == 0)) << behaviour << ": " << said;
        EXPECT_EQ (bench.slots->name (0), said.isEmpty() ? behaviour : "Empty");
        bench.fixture.render (4096);
        bench.slots->serve();
    }
    // The last one passes and fails later, in the engine.
    EXPECT_EQ (bench.slots->name (0), "nan");
    bench.fixture.render (64 * 512);
    bench.fixture.engine->deliverMessages();
    EXPECT_TRUE (bench.messages.all.joinIntoString ("\n").contains (
        "*** Plug-in bypassed ***|It returned no numbers."));
    EXPECT_EQ (bench.fixture.get ("VST_ON_SLOT_A"), 0.0f);
}

TEST (VstSlots, PlayWithCommandsAndParameters)
{
    SlotsBench bench;
    auto& fixture = bench.fixture;
    fixture.loadNoise (0);
    ASSERT_EQ (bench.slots->loadNow (0, pluginPath ("gain")), "");
    bench.slots->setParamIndex (0, 0, 0);
    fixture.set ("VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_A");
    fixture.set ("VST_DRY_WET_SLOT_A", 1.0f);
    fixture.set ("PLAY_PAUSE_A");
    fixture.render (8192);
    const auto level = [&] { return Signals::rms (EngineFixture::channel (fixture.render (16384), 4)); };
    const auto unity = level();
    ASSERT_GT (unity, 0.001);
    fixture.set ("VST_PARAM_1_SLOT_A", 0.0f);
    fixture.render (4096);
    EXPECT_LT (level(), 1e-6);
    EXPECT_EQ (bench.slots->plugin (0)->getParameters()[0]->getValue(), 0.0f);

    // The plug-in's own hand moves the control.
    bench.slots->serve();
    bench.slots->plugin (0)->getParameters()[0]->setValue (0.5f);
    bench.slots->serve();
    EXPECT_EQ (fixture.get ("VST_PARAM_1_SLOT_A"), 0.5f);
    fixture.render (4096);
    EXPECT_GT (level(), unity / 2.0);

    // On the master it stands behind the deck's own output.
    fixture.engine->settings.deckSetup[0].vstOnMaster = 1;
    fixture.set ("VST_PARAM_1_SLOT_A", 0.0f);
    fixture.render (8192);
    const auto out = fixture.render (8192);
    EXPECT_GT (Signals::rms (EngineFixture::channel (out, 4)), unity / 4.0);
    EXPECT_LT (Signals::rms (EngineFixture::channel (out, 0)), 1e-6);
    fixture.set ("VST_ON_SLOT_A");
    fixture.render (8192);
    EXPECT_GT (Signals::rms (EngineFixture::channel (fixture.render (8192), 0)), 0.001);
}

TEST (VstSlots, KeepPluginsStatesAndChoices)
{
    SlotsBench bench;
    ASSERT_EQ (bench.slots->loadNow (1, pluginPath ("gain")), "");
    ASSERT_EQ (bench.slots->loadNow (2, pluginPath ("huge_state")), "");
    bench.slots->plugin (1)->getParameters()[1]->setValue (0.125f);
    bench.slots->setParamIndex (1, 1, 1);
    bench.fixture.set ("VST_DRY_WET_SLOT_B", 0.75f);
    bench.fixture.set ("VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_C");
    bench.fixture.set ("VST_ON_SLOT_C");
    bench.fixture.render (1024);
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (0), "Empty");
    EXPECT_EQ (bench.slots->name (1), "gain");
    EXPECT_EQ (bench.slots->name (2), "huge_state");
    EXPECT_EQ (bench.slots->plugin (1)->getParameters()[1]->getValue(), 0.125f);
    EXPECT_EQ (bench.slots->paramIndex (1, 0), -1);
    EXPECT_EQ (bench.slots->paramIndex (1, 1), 1);
    EXPECT_EQ (bench.fixture.get ("VST_PARAM_2_SLOT_B"), 0.125f);
    EXPECT_EQ (bench.fixture.get ("VST_DRY_WET_SLOT_B"), 0.75f);
    EXPECT_EQ (bench.fixture.get ("VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_C"), 1.0f);
    EXPECT_EQ (bench.fixture.get ("VST_ON_SLOT_C"), 0.0f);

    // One that is gone leaves its slot empty, says so, and is there again once it has come back.
    const auto known = bench.slots->known;
    const auto gain = known->find ("gain");
    known->clear();
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (1), "Empty");
    EXPECT_TRUE (
        bench.messages.all.joinIntoString ("\n").contains ("1 *** Error loading the VST plugin ***|gain|"));
    known->put (gain->file, { *gain });
    bench.makeSlots();
    ASSERT_EQ (bench.slots->name (1), "gain");
    EXPECT_EQ (bench.slots->plugin (1)->getParameters()[1]->getValue(), 0.125f);
    bench.slots->unload (1); // by a hand: for good
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (1), "Empty");

    // A damaged file is kept beside.
    bench.slots.reset();
    const auto file = bench.fixture.engine->environment.folders.setup().getChildFile ("vst_slots.xml");
    ASSERT_TRUE (file.replaceWithText ("<vstSlots><slot deck=\"C\""));
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (2), "Empty");
    EXPECT_TRUE (
        bench.messages.all.joinIntoString ("\n").contains ("|vst_slots.xml is damaged and begins anew"));
    EXPECT_EQ (file.getSiblingFile ("vst_slots.xml.bad").loadFileAsString(), "<vstSlots><slot deck=\"C\"");
}

/** A plug-in that has no state of its own but programs: they can only be read by going through all of them, aloud. */
TEST (VstSlots, KeepAPresetWithoutGoingThroughTheOthers)
{
    SlotsBench bench;
    auto& fixture = bench.fixture;
    fixture.loadNoise (0);
    ASSERT_EQ (bench.slots->loadNow (0, pluginPath ("programs")), "");
    fixture.set ("VST_INSERT_SEND_SIGNAL_ROUTING_SLOT_A");
    fixture.set ("VST_DRY_WET_SLOT_A", 1.0f);
    fixture.render (8192);
    bench.slots->choosePreset (0, 2);
    fixture.render (8192);
    for (int second = 0; second < 3; ++second)
    {
        bench.slots->plugin (0)->getParameters()[1]->setValue (0.5f + 0.1f * static_cast<float> (second));
        bench.slots->save();
        EXPECT_EQ (fixture.render (512).getMagnitude (4, 0, 512), 0.0f) << "it is heard being kept";
    }
    bench.makeSlots();
    ASSERT_EQ (bench.slots->name (0), "programs");
    EXPECT_EQ (bench.slots->plugin (0)->getCurrentProgram(), 2);
    EXPECT_EQ (bench.slots->plugin (0)->getParameters()[0]->getValue(), 0.75f);
    EXPECT_EQ (bench.slots->plugin (0)->getParameters()[1]->getValue(), 0.7f);

    // A preset is kept though the plug-in says nothing of it.
    bench.slots->choosePreset (0, 1);
    for (int look = 0; look < 30; ++look)
        bench.slots->serve();
    const auto file = fixture.engine->environment.folders.setup().getChildFile ("vst_slots.xml");
    const auto isKept = [&file] { return file.loadFileAsString().contains ("program=\"1\""); };
    for (int ms = 0; ms < 10000 && !isKept(); ms += 5)
        juce::Thread::sleep (5);
    EXPECT_TRUE (isKept());
}

TEST (VstSlots, BlameThePluginOfWhichTheProgramDied)
{
    SlotsBench bench;
    ASSERT_EQ (bench.slots->loadNow (3, pluginPath ("gain")), "");
    bench.slots->plugin (3)->getParameters()[1]->setValue (0.125f);
    const auto setup = bench.fixture.engine->environment.folders.setup();
    const auto marker = setup.getChildFile ("vst_loading.txt");
    ASSERT_TRUE (marker.existsAsFile());
    const auto left = marker.loadFileAsString(); // as a program leaves it that is killed now
    bench.slots.reset();
    EXPECT_FALSE (marker.existsAsFile());
    marker.replaceWithText (left);
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (3), "Empty");
    EXPECT_TRUE (bench.messages.all.joinIntoString ("\n").contains (
        "3 *** Plug-in left out ***|The program ended while gain"));
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (3), "Empty") << "nobody has chosen it since";
    EXPECT_EQ (bench.messages.all.size(), 1) << "it is said once";

    // It may have been the power: a hand brings it back as it was.
    ASSERT_EQ (bench.slots->loadNow (3, "gain"), "");
    EXPECT_EQ (bench.slots->plugin (3)->getParameters()[1]->getValue(), 0.125f);
    bench.makeSlots();
    EXPECT_EQ (bench.slots->name (3), "gain");
}

TEST (VstSlots, SayOnceThatTheyCantBeKept)
{
    SlotsBench bench;
    const auto file = bench.fixture.engine->environment.folders.setup().getChildFile ("vst_slots.xml");
    ASSERT_TRUE (file.getChildFile ("in").createDirectory().wasOk()); // which no file can replace
    ASSERT_EQ (bench.slots->loadNow (0, pluginPath ("gain")), "");
    const auto isSaid = [&bench]
    {
        bench.slots->serve();
        bench.fixture.engine->deliverMessages();
        return bench.messages.all.joinIntoString ("\n").contains ("vst_slots.xml can't be written.");
    };
    for (int ms = 0; ms < 10000 && !isSaid(); ms += 5)
        juce::Thread::sleep (5);
    for (int look = 0; look < 100; ++look)
        bench.slots->serve();
    EXPECT_TRUE (isSaid());
    EXPECT_EQ (bench.messages.all.size(), 1);
}

/** A program that was killed may take seconds to die, and has its folder meanwhile. */
TEST (LoadingMarker, BlamesWhileTheProgramThatDiedIsDying)
{
    const TemporaryFolder folder;
    const auto file = folder.file ("marker.txt");
    LoadingMarker died (file, [] { return true; });
    died.set (1, "delay");
    auto isDying = true;
    LoadingMarker marker (file, [&isDying] { return !isDying; });
    EXPECT_EQ (marker.takeBlamed()[1], "delay");
    marker.set (2, "gain");
    EXPECT_EQ (file.loadFileAsString(), "B delay\n") << "another may be at work";
    isDying = false;
    marker.set (1, {});
    EXPECT_FALSE (file.existsAsFile());
}

TEST (SlotsFile, TakesAnyBytes)
{
    SavedSlots slots;
    slots[2].plugin = "VST-\"<&-1";
    slots[2].state.bytes.append ("\0\x01\xff", 3);
    const auto bytes = SlotsFile::write (slots);
    const auto read = SlotsFile::read (bytes);
    EXPECT_FALSE (read.isDamaged);
    EXPECT_EQ (read.slots[2].plugin, slots[2].plugin);
    EXPECT_EQ (read.slots[2].state.bytes, slots[2].state.bytes);
    for (size_t length = 0; length < bytes.size() - 1; length += 7)
    {
        const auto cut = SlotsFile::read (bytes.substr (0, length));
        EXPECT_TRUE (cut.isDamaged) << length;
        EXPECT_EQ (cut.slots[0].dryWet, 0.5);
    }
    const auto odd = SlotsFile::read (
        "<vstSlots><slot deck='AB'/><slot deck='A' dryWet='nan' param1='-9'>!!</slot></vstSlots>");
    EXPECT_FALSE (odd.isDamaged);
    EXPECT_EQ (odd.slots[0].dryWet, 0.5);
    EXPECT_EQ (odd.slots[0].paramIndices[0], -1);
}
